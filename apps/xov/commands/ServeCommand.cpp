#include "apps/xov/commands/ServeCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/live/Interrupt.h"
#include "apps/xov/live/SpeedOption.h"
#include "apps/xov/terminal/ProgramName.h"

#include <QCoreApplication>

#include <XOV_Graphics/base/FileName.h>
#include <algorithm>
#include <cstdio>
#include <optional>

namespace xov::cli {

namespace {

constexpr int kLastPort = 65535;
constexpr int kMostPackets = 1000000;

struct FaultName {
  const char* name;
  int SeedLinkFaults::*every;
};
constexpr FaultName kFaults[] = {
    {"drop", &SeedLinkFaults::dropEvery},
    {"stall", &SeedLinkFaults::stallEvery},
    {"duplicate", &SeedLinkFaults::duplicateEvery},
    {"reorder", &SeedLinkFaults::reorderEvery},
    {"cut", &SeedLinkFaults::cutEvery},
    {"garbage", &SeedLinkFaults::garbageEvery},
    {"drip", &SeedLinkFaults::bytesAtOnce},
};

// "drop=100" is the fault and how often, or by how many bytes.
std::optional<std::pair<int SeedLinkFaults::*, int>> faultOf(const std::string& text) {
  const std::size_t equals = text.find('=');
  const auto* const row =
      std::ranges::find_if(kFaults, [&](const FaultName& fault) { return text.substr(0, equals) == fault.name; });
  bool isNumber = false;
  const int number =
      equals == std::string::npos ? 0 : QString::fromStdString(text.substr(equals + 1)).toInt(&isNumber);
  if (row == std::end(kFaults) || !isNumber || number < 1 || number > kMostPackets) return {};
  return std::pair(row->every, number);
}

} // namespace

void ServeCommand::addOptions(const Options& options) {
  options.add("FILES", files_, "miniSEED files to play").required().typeName("");
  options.add("--port", port_, "Port to listen on, 0 for any that is free (default 18000)")
      .typeName("N")
      .check(wholeNumberFromTo(0, kLastPort));
  addSpeedOption(options, speed_);
  options.addFlag("--all-at-once", allAtOnce_,
                  "Have everything from the start on, as if it had been recorded long ago");
  options.addFlag("--public", isPublic_, "Let other machines connect, too");
  options.add("--protocol", protocol_, "3 speaks SeedLink 3.1 only, 4 both 3.1 and 4.0 (default 4)")
      .typeName("N")
      .check(wholeNumberFromTo(3, 4));
  const auto check = [](const std::string& text) -> std::string {
    if (faultOf(text)) return {};
    return "found '" + text +
           "', expected drop, stall, duplicate, reorder, cut, garbage or drip and a number, as drop=100";
  };
  options
      .add("--fault", faults_,
           "Try clients: once in N packets of a connection drop, stall, duplicate, reorder, cut or garbage; or "
           "drip=N bytes at once")
      .typeName("KIND=N[,...]")
      .listBetweenCommas()
      .check(Check{check, {}});
}

ExitCode ServeCommand::run() {
  SeedLinkServerSettings settings;
  settings.port = quint16(port_);
  settings.isLocal = !isPublic_;
  settings.speed = allAtOnce_ ? 0 : speed_;
  settings.protocol = protocol_;
  for (const std::string& text : faults_) {
    if (const auto fault = faultOf(text)) settings.faults.*(fault->first) = fault->second;
  }
  ProgramName program;
  const QCoreApplication application(program.count, program.words);
  SeedLinkServer server(settings);
  for (const std::string& file : files_) {
    if (const Status status = server.addFile(fileNameFromBytes(file)); !status) {
      complain(status.error());
      return ExitCode::Failed;
    }
  }
  if (const Status status = server.listen(); !status) {
    complain(status.error());
    return ExitCode::Failed;
  }
  const Interrupt interrupt([] { QCoreApplication::quit(); });
  print(QStringLiteral("serving on port %1\n").arg(server.port()));
  // Whoever waits for the port reads it from a pipe.
  if (const ExitCode printed = finishStandardOutput(); printed != ExitCode::Ok) {
    std::clearerr(stdout); // it has been told
    return printed;
  }
  QCoreApplication::exec();
  return ExitCode::Ok;
}

} // namespace xov::cli
