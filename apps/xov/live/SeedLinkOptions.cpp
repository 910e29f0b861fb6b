#include "apps/xov/live/SeedLinkOptions.h"

#include "apps/xov/inputs/Validators.h"

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/base/InputFile.h>

namespace xov::cli {

namespace {

constexpr qint64 kLargestLogin = 4096;

} // namespace

void SeedLinkOptions::addOptions(const Options& options) {
  // Stations stand between commas: the two values cannot.
  const Option server =
      options.add("--seedlink", server_, "Show what arrives from a SeedLink server: 'GE_WLF:BHZ,GR_*:HHZ'")
          .typeName("SERVER STATIONS")
          .takesWords(2);
  options.add("--state", state_, "Keep the place in the server's packets here, and go on from it")
      .typeName("FILE")
      .needs(server);
  options.add("--login", login_, "User and password for the server, a line each (or in the environment)")
      .typeName("FILE")
      .needs(server);
}

QString SeedLinkOptions::serverText() const { return QString::fromStdString(server_.at(0)); }

void SeedLinkOptions::check() const {
  if (!isGiven()) return;
  QString problem = parseSeedLinkAddress(serverText()).error();
  if (problem.isEmpty()) problem = parseSeedLinkStations(QString::fromStdString(server_.at(1))).error();
  if (!problem.isEmpty()) throw UsageError("--seedlink", problem.toStdString());
}

Result<SeedLinkSettings> SeedLinkOptions::settings() const {
  SeedLinkSettings settings;
  settings.server = parseSeedLinkAddress(serverText()).value();
  settings.stations = parseSeedLinkStations(QString::fromStdString(server_.at(1))).value();
  if (!state_.empty()) settings.stateFile = fileNameFromBytes(state_);
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
