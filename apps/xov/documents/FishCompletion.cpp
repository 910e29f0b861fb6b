#include "apps/xov/documents/Documents.h"

namespace xov::cli {

namespace {

std::string inQuotes(const std::string& text) {
  std::string safe;
  for (const char c : text) {
    if (c == '\'' || c == '\\') safe += '\\';
    safe += c;
  }
  return "'" + safe + "'";
}

std::string valuesOf(const OptionRow& row) {
  if (row.values.empty()) return {};
  if (row.kind == ValueKind::File) return row.valueMayLack ? " -F" : " -r";
  std::string values = " -x";
  if (row.kind != ValueKind::Choice) return values;
  std::string choices;
  for (const std::string& choice : row.choices)
    choices += (choices.empty() ? "" : " ") + choice;
  return values + " -a " + inQuotes(choices);
}

} // namespace

std::string fishCompletion(const std::vector<CommandOptions>& table) {
  std::string commands;
  std::string lines;
  for (const CommandOptions& command : table) {
    const bool own = command.name.empty();
    const std::string condition =
        own ? "not __fish_seen_subcommand_from $xov_commands" : "__fish_seen_subcommand_from " + command.name;
    const std::string start = "complete -c xov -n \"" + condition + "\"";
    if (own) {
      lines += start + " -f\n";
    } else {
      commands += " " + command.name;
      lines += "complete -c xov -n \"not __fish_seen_subcommand_from $xov_commands\" -a " + command.name + " -d " +
               inQuotes(command.summary) + "\n";
    }
    for (const OptionRow& row : command.options) {
      lines += start + (row.shortName.empty() ? "" : " -s " + row.shortName.substr(1)) + " -l " +
               row.longName.substr(2) + valuesOf(row) + " -d " + inQuotes(row.description) + "\n";
    }
  }
  return "# fish completion for xov; made from its own table of options\n\nset -g xov_commands help" + commands +
         "\n\n" + lines +
         "complete -c xov -n \"not __fish_seen_subcommand_from $xov_commands\" -a help -d 'Print help on a command'\n"
         "complete -c xov -n \"__fish_seen_subcommand_from help\" -f -a \"$xov_commands\"\n";
}

} // namespace xov::cli
