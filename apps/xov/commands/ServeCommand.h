#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/options/Options.h"

#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h>
#include <string>
#include <vector>

namespace xov::cli {

/// `xov serve`: a SeedLink server that plays miniSEED files.
class ServeCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  std::vector<std::string> files_;
  int port_ = 18000;
  double speed_ = 1;
  bool allAtOnce_ = false;
  bool isPublic_ = false;
  int protocol_ = 4;
  std::vector<std::string> faults_; // a kind and a number, of each
};

} // namespace xov::cli
