#include "apps/xov/documents/Documents.h"
#include "apps/xov/prepare/Preparation.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>
#include <utility>

namespace xov::cli {

namespace {

constexpr char kSynopsis[] = "@synopsis@";
constexpr char kOptions[] = "@options ";
constexpr char kAs[] = "@as ";
constexpr char kSection[] = ".Ss ";
constexpr char kCommandSection[] = "xov ";
constexpr char kHelpOption[] = "--help";
constexpr std::size_t kLongestLetter = 2; // "G" and "T1" are letters, "file" is a word

// "FILE" is file, but "G" stays.
std::string argumentName(std::string name) {
  if (name.size() > kLongestLetter)
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return char(std::tolower(c)); });
  return name;
}

std::string valuesOf(const OptionRow& row) {
  if (row.values.empty()) return {};
  std::string names = " Ar";
  for (const std::string& value : row.values)
    names.append(" ").append(argumentName(value));
  if (row.isList) return names + " Ns Op , Ns Ar ...";
  if (row.takesMany) return names + " ...";
  return (row.valueMayLack ? " Op" : "") + names;
}

// "Fl o Ar file , Fl -output Ar file"
std::string itemOf(const OptionRow& row) {
  const std::string longForm = "Fl " + row.longName.substr(1) + valuesOf(row);
  return row.shortName.empty() ? longForm : "Fl " + row.shortName.substr(1) + valuesOf(row) + " , " + longForm;
}

bool isShared(const std::string& group) { return group == kOutputGroup || group == kPreparationGroup; }

std::string synopsisOf(const CommandOptions& command) {
  std::string lines = ".Nm\n.Cm " + command.name + "\n";
  std::string behind;           // the arguments, and the option that they may stand behind
  std::set<std::string> shared; // the groups of options that are told of once for all commands
  for (const OptionRow& row : command.options) {
    if (row.longName == kHelpOption) continue;
    if (row.isArgument) {
      behind = ".Op Fl " + row.longName.substr(1) + "\n";
    } else if (!isShared(row.group)) {
      lines += ".Op Fl " + row.longName.substr(1) +
               (row.isList ? " Ar " + argumentName(row.values[0]) : valuesOf(row)) + "\n";
    } else if (shared.insert(row.group).second) {
      lines += ".Op Ar " + argumentName(row.group) + " options\n";
    }
  }
  if (!command.argument.empty())
    behind += command.manyArguments ? ".Ar\n" : ".Ar " + argumentName(command.argument) + "\n";
  return lines + behind;
}

// Fills a template in, and keeps account of what it describes.
class Page {
public:
  explicit Page(const std::vector<CommandOptions>& table) : table_(table) {}

  std::string fill(const std::string& pattern) {
    std::istringstream lines(pattern);
    std::string page;
    for (std::string line; std::getline(lines, line);)
      page += filled(line);
    checkAll();
    return page;
  }

private:
  using Described = std::pair<std::string, std::string>; // a command and an option

  std::string filled(const std::string& line) {
    if (line == kSynopsis) return synopsis();
    if (line.starts_with(kSection)) section_ = line.substr(sizeof kSection - 1);
    if (line.starts_with(kOptions)) return items(wordsBehind(kOptions, line));
    if (!line.starts_with(kAs)) return line + "\n";
    std::vector<std::string> words = wordsBehind(kAs, line);
    for (std::size_t i = 1; i < words.size(); ++i) {
      if (row(words[0], words[i]) == nullptr || row(commandOfSection(), words[i]) == nullptr) throw unknown(words[i]);
      described_.insert({commandOfSection(), words[i]});
    }
    return {};
  }

  static std::vector<std::string> wordsBehind(const std::string& directive, const std::string& line) {
    std::istringstream stream(line.substr(directive.size(), line.size() - directive.size() - 1));
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
      words.push_back(word);
    return words;
  }

  std::string synopsis() const {
    std::string lines;
    for (const CommandOptions& command : table_) {
      if (!command.name.empty()) lines += synopsisOf(command);
    }
    return lines;
  }

  std::string items(const std::vector<std::string>& options) {
    std::string item;
    for (const std::string& option : options) {
      const OptionRow* found = nullptr;
      for (const CommandOptions& command : table_) {
        const bool here = commandOfSection().empty() || command.name == commandOfSection();
        if (!here || row(command.name, option) == nullptr) continue;
        found = row(command.name, option);
        described_.insert({command.name, option});
      }
      if (found == nullptr) throw unknown(option);
      item += (item.empty() ? ".It " : " , ") + itemOf(*found);
    }
    return item + "\n";
  }

  // Empty in a section that is not of one command.
  std::string commandOfSection() const {
    return section_.starts_with(kCommandSection) ? section_.substr(sizeof kCommandSection - 1) : std::string();
  }

  const OptionRow* row(const std::string& command, const std::string& option) const {
    for (const CommandOptions& candidate : table_) {
      if (candidate.name != command) continue;
      const auto found = std::ranges::find(candidate.options, option, &OptionRow::longName);
      return found == candidate.options.end() ? nullptr : &*found;
    }
    return nullptr;
  }

  DocumentError unknown(const std::string& option) const {
    return DocumentError("the man page describes " + option + " in '" + section_ +
                         "', where there is no such option");
  }

  void checkAll() const {
    for (const CommandOptions& command : table_) {
      for (const OptionRow& option : command.options) {
        if (!described_.contains({command.name, option.longName}))
          throw DocumentError("the man page does not describe " + command.name + " " + option.longName);
      }
    }
  }

  const std::vector<CommandOptions>& table_;
  std::string section_;
  std::set<Described> described_;
};

} // namespace

std::string manPage(const std::vector<CommandOptions>& table, const std::string& pattern) {
  return Page(table).fill(pattern);
}

} // namespace xov::cli
