#include "apps/xov/live/SeedLinkOptions.h"

#include "apps/xov/inputs/Validators.h"

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/base/InputFile.h>

namespace xov::cli {

namespace {

constexpr qint64 kLargestLogin = 4096;
constexpr double kLongestWait = 86400;
constexpr char kToday[] = "today";

std::string sinceProblem(const std::string& text) {
  if (text == kToday || parsedUtcTime(text).isValid()) return {};
  return "found '" + text + "', expected a time as 2011-03-11T05:46:23, or today";
}

} // namespace

Option SeedLinkOptions::addOptions(const Options& options) {
  // Stations stand between commas: the two values cannot.
  const Option server =
      options.add("--seedlink", server_, "Show what arrives from a SeedLink server: 'GE_WLF:BHZ,GR_*:HHZ'")
          .typeName("SERVER STATIONS")
          .takesWords(2);
  options.add("--since", since_, "Begin with what the server has since then (UTC), or since midnight: today")
      .typeName("TIME")
      .check(Check{sinceProblem, {}})
      .needs(server);
  options.add("--state", state_, "Keep the place in the server's packets here, and go on from it")
      .typeName("FILE")
      .needs(server);
  options.add("--login", login_, "User and password for the server, a line each (or in the environment)")
      .typeName("FILE")
      .needs(server);
  options.add("--wait", waitSeconds_, "Seconds to receive before a file is written with -o (default 10)")
      .typeName("S")
      .check(numberFromTo(0, kLongestWait));
  return server;
}

QString SeedLinkOptions::serverText() const { return QString::fromStdString(server_.at(0)); }

void SeedLinkOptions::check(bool hasFiles) const {
  if (!isGiven() && !hasFiles) throw UsageError("FILES", "expected seismogram files, or --seedlink");
  if (!isGiven()) return;
  if (hasFiles) throw UsageError("--seedlink", "found files, too; expected either");
  QString problem = parseSeedLinkAddress(serverText()).error();
  if (problem.isEmpty()) problem = parseSeedLinkStations(QString::fromStdString(server_.at(1))).error();
  if (!problem.isEmpty()) throw UsageError("--seedlink", problem.toStdString());
}

Result<SeedLinkSettings> SeedLinkOptions::settings() const {
  SeedLinkSettings settings;
  settings.server = parseSeedLinkAddress(serverText()).value();
  settings.stations = parseSeedLinkStations(QString::fromStdString(server_.at(1))).value();
  if (!state_.empty()) settings.stateFile = fileNameFromBytes(state_);
  if (since_ == kToday)
    settings.since = QDateTime(QDateTime::currentDateTimeUtc().date(), QTime(0, 0), Qt::UTC);
  else if (!since_.empty())
    settings.since = parsedUtcTime(since_);
  settings.user = qEnvironmentVariable("XOV_SEEDLINK_USER");
  settings.password = qEnvironmentVariable("XOV_SEEDLINK_PASSWORD");
  if (login_.empty()) return settings;
  const Result<QByteArray> login = readWholeFile(fileNameFromBytes(login_), kLargestLogin);
  if (!login) return Error{login.error()};
  const QList<QByteArray> lines = login->split('\n');
  settings.user = QString::fromUtf8(lines[0].trimmed());
  settings.password = QString::fromUtf8(lines.value(1).trimmed());
  if (settings.user.isEmpty())
    return Error{fileNameFromBytes(login_) + QStringLiteral(": expected a user and a password, a line each")};
  return settings;
}

} // namespace xov::cli
