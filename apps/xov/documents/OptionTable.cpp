#include "apps/xov/documents/OptionTable.h"

#include "apps/xov/commands/CommandLine.h"
#include "apps/xov/options/Choices.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace xov::cli {

namespace {

constexpr char kFile[] = "FILE";

std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;)
    words.push_back(word);
  return words;
}

// "[SHARE]" may be left out.
bool isOptionalName(const std::string& name) { return name.starts_with('[') && name.ends_with(']'); }

// "PATTERN[,...]" is called PATTERN.
std::string withoutBrackets(const std::string& name) { return name.substr(0, name.find('[')); }

std::string withoutDefault(const std::string& description) {
  const std::size_t start = description.rfind(" (default");
  return start != std::string::npos && description.ends_with(')') ? description.substr(0, start) : description;
}

bool takesAnyNumber(const CLI::Option& option) {
  return option.get_items_expected_max() >= CLI::detail::expected_max_vector_size;
}

OptionRow rowOf(CLI::Option& option) {
  OptionRow row;
  if (!option.get_snames().empty()) row.shortName = "-" + option.get_snames().front();
  row.longName = "--" + option.get_lnames().front();
  row.group = option.get_group();
  row.description = withoutDefault(option.get_description());
  if (option.get_items_expected_max() == 0) return row;
  for (const std::string& name : wordsOf(option.get_type_name())) {
    row.valueMayLack = isOptionalName(name);
    row.values.push_back(row.valueMayLack ? name.substr(1, name.size() - 2) : withoutBrackets(name));
  }
  if (row.values.empty()) row.values = {kFile};
  row.isList = option.get_type_name().find("[,...]") != std::string::npos;
  row.isArgument = option.get_positional();
  row.choices = choicesOf(option);
  if (!row.choices.empty()) row.kind = ValueKind::Choice;
  if (row.values.front() == kFile) row.kind = ValueKind::File;
  row.valueMayLack = row.valueMayLack || option.get_items_expected_min() == 0;
  row.mayRepeat = takesAnyNumber(option);
  row.takesMany = row.mayRepeat && option.get_allow_extra_args();
  return row;
}

} // namespace

CommandOptions optionsOf(CLI::App& app) {
  CommandOptions command;
  command.name = app.get_parent() == nullptr ? std::string() : app.get_name();
  command.summary = app.get_description();
  for (CLI::Option* option : app.get_options()) {
    if (option->get_positional()) {
      command.argument = option->get_name(true);
      command.manyArguments = takesAnyNumber(*option);
    }
    if (!option->get_lnames().empty()) command.options.push_back(rowOf(*option));
  }
  return command;
}

std::vector<CommandOptions> optionTable() {
  CommandLine line;
  std::vector<CommandOptions> table = {optionsOf(line.app())};
  for (CLI::App* command : line.app().get_subcommands({}))
    table.push_back(optionsOf(*command));
  return table;
}

} // namespace xov::cli
