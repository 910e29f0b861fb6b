#include "apps/xov/documents/Documents.h"

namespace xov::cli {

namespace {

// In single quotes, with what _arguments would take for its own behind backslashes.
std::string escaped(const std::string& text) {
  std::string safe;
  for (const char c : text) {
    if (c == '\'') {
      safe += "'\\''";
      continue;
    }
    if (c == '[' || c == ']' || c == ':' || c == '\\') safe += '\\';
    safe += c;
  }
  return safe;
}

std::string actionOf(const OptionRow& row) {
  if (row.kind == ValueKind::File) return "_files";
  std::string choices;
  for (const std::string& choice : row.choices)
    choices += (choices.empty() ? "" : " ") + choice;
  return "(" + choices + ")";
}

std::string valuesOf(const OptionRow& row) {
  if (row.takesMany) return ":*-*:" + row.values.front() + ":" + actionOf(row);
  std::string values;
  for (const std::string& name : row.values)
    values += (row.valueMayLack ? "::" : ":") + name + ":" + actionOf(row);
  return values;
}

std::string specOf(const OptionRow& row) {
  std::string rest = "[";
  rest.append(escaped(row.description)).append("]").append(valuesOf(row)).append("'");
  if (row.shortName.empty()) return (row.mayRepeat ? "'*" : "'") + row.longName + rest;
  return "'(" + row.shortName + " " + row.longName + ")'{" + row.shortName + "," + row.longName + "}'" + rest;
}

std::string argumentsOf(const CommandOptions& command) {
  std::string lines = "_arguments";
  for (const OptionRow& row : command.options)
    lines.append(" \\\n      ").append(specOf(row));
  if (!command.argument.empty())
    lines += std::string(" \\\n      ") + (command.manyArguments ? "'*:file:_files'" : "':file:_files'");
  return lines;
}

} // namespace

std::string zshCompletion(const std::vector<CommandOptions>& table) {
  std::string commands;
  std::string cases;
  std::string own;
  for (const CommandOptions& command : table) {
    if (command.name.empty()) {
      own = argumentsOf(command);
      continue;
    }
    commands += "  '" + command.name + ":" + escaped(command.summary) + "'\n";
    cases += "  " + command.name + ")\n    " + argumentsOf(command) + "\n    ;;\n";
  }
  return "#compdef xov\n# made from xov's own table of options\n\nlocal -a commands\ncommands=(\n" + commands +
         ")\n\nif (( CURRENT == 2 )); then\n  if [[ $words[2] == -* ]]; then\n    " + own +
         "\n  else\n    commands+=('help:Print help on a command')\n    _describe command commands\n  fi\n  "
         "return\nfi\n"
         "\nlocal command=$words[2]\nshift words\n(( CURRENT-- ))\ncase $command in\n  help)\n    _describe command "
         "commands\n    ;;\n" +
         cases + "esac\n";
}

} // namespace xov::cli
