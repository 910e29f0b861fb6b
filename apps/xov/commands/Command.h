#pragma once

#include "apps/xov/options/Options.h"
#include "apps/xov/terminal/Messages.h"

namespace xov::cli {

/// One subcommand, such as `xov section`.
class Command {
public:
  Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  virtual ~Command() = default;

  /// Declares options and arguments, which parsing then stores in this object. Whatever can be found wrong without
  /// opening a file is refused here by a validator, as a usage error.
  virtual void addOptions(const Options& options) = 0;

  /// Does the work, once the command line has been parsed.
  virtual ExitCode run() = 0;
};

} // namespace xov::cli
