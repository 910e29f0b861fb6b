#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace xov::cli {

/// What may stand in the place of an option's values.
enum class ValueKind : std::uint8_t {
  Text,   ///< what nobody can guess: numbers, titles, patterns
  File,   ///< the name of a file
  Choice, ///< one of a few words
};

/// An option as it was declared.
struct OptionRow {
  std::string shortName;           ///< "-o"; empty without one
  std::string longName;            ///< "--output"
  std::vector<std::string> values; ///< names of its values, as help has them: "W", "H"; none for a flag
  ValueKind kind = ValueKind::Text;
  std::vector<std::string> choices; ///< of ValueKind::Choice
  bool valueMayLack = false;        ///< "--topo" alone means something
  bool takesMany = false;           ///< any number of values of that kind
  bool mayRepeat = false;
  bool isList = false;     ///< a value may be several with commas between them
  bool isArgument = false; ///< the command's arguments, which may stand behind this option, too
  std::string group;       ///< heading that help lists it under
  std::string description; ///< one line, without a default at its end
};

/// A command with its options and the arguments besides.
struct CommandOptions {
  std::string name;
  std::string summary;
  std::vector<OptionRow> options; ///< in their order, --help included
  std::string argument;           ///< name of the arguments: "FILES"; empty where there are none
  bool manyArguments = false;
};

/// What `app` declares, which stays as it is.
CommandOptions optionsOf(CLI::App& app);

/// All that the command line takes: the program's own options first, under no name, then each command.
std::vector<CommandOptions> optionTable();

/// The heading of the options that all drawing commands share.
inline constexpr char kOutputGroup[] = "Output";

} // namespace xov::cli
