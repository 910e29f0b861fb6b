#pragma once

#include "apps/xov/documents/OptionTable.h"

#include <stdexcept>

namespace xov::cli {

/// What makes a table and a template not fit together.
struct DocumentError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Completion of commands, options, their choices and file names in three shells.
std::string bashCompletion(const std::vector<CommandOptions>& table);
std::string zshCompletion(const std::vector<CommandOptions>& table);
std::string fishCompletion(const std::vector<CommandOptions>& table);

/// A man page from its template, in which
///   @synopsis@          stands for one synopsis a command,
///   @options --a --b@   in a section "xov NAME" for the item that describes these options of the command,
///   @as OTHER --a --b@  there for nothing: its text says that these are as those of another command.
/// Sections of other names describe the options of all commands that have them. Throws a DocumentError that names an
/// option which the template does not describe, or which there is not.
std::string manPage(const std::vector<CommandOptions>& table, const std::string& pattern);

} // namespace xov::cli
