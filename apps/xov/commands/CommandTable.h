#pragma once

#include "apps/xov/commands/Command.h"

#include <memory>
#include <span>

namespace xov::cli {

/// A subcommand as the command line knows it.
struct CommandRow {
  const char* name;
  const char* summary; ///< one line for the list of commands
  std::unique_ptr<Command> (*make)();
};

/// All subcommands, in the order in which help lists them.
std::span<const CommandRow> commandTable();

} // namespace xov::cli
