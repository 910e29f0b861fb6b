#include "apps/xov/documents/Documents.h"

namespace xov::cli {

namespace {

constexpr char kHead[] = R"(# bash completion for xov; made from its own table of options
)";

// What follows an option stands in one line: the number of its values, "any" for any number; what they are; choices.
constexpr char kBody[] = R"sh(
_xov() {
  local words=() word i count kind choices command option
  # bash takes "--style=bands" apart into three words.
  for ((i = 0; i <= COMP_CWORD; i++)); do
    [[ ${COMP_WORDS[i]} == '=' ]] || words+=("${COMP_WORDS[i]}")
  done
  [[ ${COMP_WORDS[COMP_CWORD]} == '=' ]] && words+=('')
  local last=$((${#words[@]} - 1))
  word=${words[last]} command=${words[1]}
  COMPREPLY=()
  if ((last == 1)) || [[ $command == help ]]; then
    if [[ $word == -* ]]; then
      mapfile -t COMPREPLY < <(compgen -W "$(_xov_options '')" -- "$word")
    elif ((last == 1)); then
      mapfile -t COMPREPLY < <(compgen -W "$_xov_commands help" -- "$word")
    else
      mapfile -t COMPREPLY < <(compgen -W "$_xov_commands" -- "$word")
    fi
    return
  fi
  # The option whose values the word is among, if any.
  for ((i = last - 1; i > 1; i--)); do
    option=${words[i]}
    [[ $option == -* && $option != -[0-9.]* ]] || continue
    read -r count kind choices < <(_xov_values "$command $option")
    [[ $count == any ]] || ((last - i <= ${count:-0})) || break
    case $kind in
      choice) mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word") && return ;;
      text) return ;;
    esac
    break
  done
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_xov_options "$command")" -- "$word")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}

complete -F _xov xov
)sh";

const char* wordFor(ValueKind kind) {
  switch (kind) {
  case ValueKind::File:
    return "file";
  case ValueKind::Choice:
    return "choice";
  case ValueKind::Text:
    break;
  }
  return "text";
}

std::string optionNames(const CommandOptions& command) {
  std::string names;
  for (const OptionRow& row : command.options) {
    for (const std::string& name : {row.shortName, row.longName}) {
      if (!name.empty()) names += (names.empty() ? "" : " ") + name;
    }
  }
  return names;
}

std::string valuesOf(const OptionRow& row) {
  std::string values = row.takesMany ? "any" : std::to_string(row.values.size());
  values += std::string(" ") + wordFor(row.kind);
  for (const std::string& choice : row.choices)
    values += " " + choice;
  return values;
}

std::string valueCases(const CommandOptions& command) {
  std::string cases;
  for (const OptionRow& row : command.options) {
    if (row.values.empty()) continue;
    std::string pattern = "'" + command.name + " " + row.longName + "'";
    if (!row.shortName.empty()) pattern += " | '" + command.name + " " + row.shortName + "'";
    cases += "    " + pattern + ") echo '" + valuesOf(row) + "' ;;\n";
  }
  return cases;
}

} // namespace

std::string bashCompletion(const std::vector<CommandOptions>& table) {
  std::string commands;
  std::string options;
  std::string values;
  for (const CommandOptions& command : table) {
    if (!command.name.empty()) commands += (commands.empty() ? "" : " ") + command.name;
    options += "    '" + command.name + "') echo '" + optionNames(command) + "' ;;\n";
    values += valueCases(command);
  }
  return kHead + ("\n_xov_commands='" + commands + "'\n") + "\n_xov_options() {\n  case $1 in\n" + options +
         "  esac\n}\n\n_xov_values() {\n  case $1 in\n" + values + "  esac\n}\n" + kBody;
}

} // namespace xov::cli
