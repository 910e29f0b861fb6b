#pragma once

namespace xov::cli {

/// Parses the command line, runs the subcommand and returns the exit status: an ExitCode.
int runCommandLine(int argc, char** argv);

} // namespace xov::cli
