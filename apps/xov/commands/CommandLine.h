#pragma once

#include "apps/xov/commands/Command.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace xov::cli {

/// All that the program takes: the options of its own, and each command with its own.
class CommandLine {
public:
  CommandLine();
  ~CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  /// The declarations, for those who write them down elsewhere.
  CLI::App& app() { return *app_; }

  /// Parses the words behind the program's name and runs the command that they name; once.
  ExitCode run(const std::vector<std::string>& words);

private:
  struct Subcommand {
    CLI::App* options;
    std::unique_ptr<Command> command;
  };
  ExitCode runParsed() const;

  std::unique_ptr<CLI::App> app_;
  std::vector<Subcommand> subcommands_;
  int threads_ = 0; // 0 when nothing is said of them
};

/// Parses the command line, runs the subcommand and returns the exit status: an ExitCode.
int runCommandLine(int argc, char** argv);

} // namespace xov::cli
