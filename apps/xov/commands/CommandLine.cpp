#include "apps/xov/commands/CommandLine.h"

#include "apps/xov/commands/CommandTable.h"
#include "apps/xov/commands/Suggestion.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/prepare/StepWords.h"
#include "apps/xov/terminal/LittleMemory.h"
#include "apps/xov/terminal/System.h"

#include <CLI/CLI.hpp>

#include <XOV_Graphics/base/Threads.h>
#include <XOV_Graphics/base/Version.h>
#include <XOV_Graphics/seismic/io/archive/Archive.h>
#include <algorithm>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace xov::cli {

namespace {

constexpr char kHelp[] = "help";
constexpr char kFooter[] = "'xov help COMMAND' or 'xov COMMAND --help' says what a command takes.\n"
                           "Exit status: 0 when all went well, 1 when an input could not be read or an output not\n"
                           "written, 2 when the command line is wrong. Examples and details: man xov\n";

// Whether the parser would take a file name or pattern apart, as a list in brackets.
bool looksLikeList(const std::string& argument) { return argument.starts_with('[') && argument.ends_with(']'); }

// The same file by a name that the parser takes for one.
std::string asFileName(const std::string& argument) { return "./" + argument; }

// The words after the program's name, as the parser wants them: last one first, and without what it gets wrong.
// - "--title=" it takes for an option whose value follows: split in two, the value is the empty text that was meant.
// - "[A-C]*[EN]" it takes for a list of names.
// - "--" it forgets when file names stand before it: all arguments after it are file names.
std::vector<std::string> asParserWants(const std::vector<std::string>& words) {
  std::vector<std::string> arguments;
  bool onlyNames = false;
  for (const std::string& argument : words) {
    const bool isOption = !onlyNames && argument.starts_with("--");
    const bool afterOption = !onlyNames && !arguments.empty() && arguments.back().starts_with('-');
    if (isOption && argument.size() == 2) {
      onlyNames = true;
    } else if (isOption && argument.find('=') == argument.size() - 1) {
      arguments.push_back(argument.substr(0, argument.size() - 1));
      arguments.emplace_back();
    } else if ((looksLikeList(argument) && !afterOption) ||
               (onlyNames && argument.size() > 1 && argument[0] == '-')) {
      arguments.push_back(asFileName(argument));
    } else {
      arguments.push_back(argument);
    }
  }
  return {arguments.rbegin(), arguments.rend()};
}

// One line that says what is wrong and where to read more.
ExitCode usageError(const CLI::App& xov, const std::string& what) {
  std::string name = "xov";
  QString where;
  for (const CLI::App* subcommand : xov.get_subcommands()) {
    where = QString::fromStdString(subcommand->get_name()) + QStringLiteral(": ");
    name += " " + subcommand->get_name();
  }
  const QString text = QString::fromStdString(what).simplified();
  complain(where + text + QStringLiteral(" (see '%1 --help')").arg(QString::fromStdString(name)));
  return ExitCode::Usage;
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names;
  for (const CommandRow& row : commandTable())
    names.emplace_back(row.name);
  return names;
}

// All ways to write the options of the program or of the command that was named.
std::vector<std::string> optionNames(const CLI::App& xov) {
  const auto named = xov.get_subcommands();
  const CLI::App& options = named.empty() ? xov : *named.front();
  std::vector<std::string> names;
  for (const CLI::Option* option : options.get_options()) {
    for (const std::string& name : option->get_lnames())
      names.push_back("--" + name);
    for (const std::string& name : option->get_snames())
      names.push_back("-" + name);
  }
  return names;
}

// Before the command's name or behind it.
void addQuiet(CLI::App& options) {
  options.add_flag_callback("-q,--quiet", setQuiet, "Say nothing but errors: no notes, no progress");
}

// What is wrong with the arguments that nobody takes; nothing when there are none. A wrong option comes first: what
// else is wrong may follow from it.
std::optional<std::string> unexpected(const CLI::App& xov) {
  const std::vector<std::string> words = xov.remaining(true);
  if (words.empty()) return {};
  const auto option =
      std::ranges::find_if(words, [](const std::string& word) { return word.size() > 1 && word.starts_with('-'); });
  if (option == words.end()) return "found '" + words.front() + "', expected no more arguments";
  const std::string name = option->substr(0, option->find('='));
  return "there is no option '" + name + "'" + suggestionFor(name, optionNames(xov));
}

// "help section" is "section --help", and "help" alone is "--help".
std::vector<std::string> withHelpAsOption(std::vector<std::string> words) {
  if (words.empty() || words[0] != kHelp) return words;
  if (words.size() < 2) return {"--help"};
  return {std::move(words[1]), "--help"};
}

} // namespace

CommandLine::CommandLine()
    : app_(std::make_unique<CLI::App>(
          "Plots of seismograms and other data, in a window or as PDF, TIFF, JPEG and PNG files.", "xov")) {
  app_->require_subcommand(1);
  app_->set_version_flag("-V,--version", "xov " + version().toString().toStdString(), "Print the version and exit");
  Options(*app_)
      .add("--threads", threads_, "Threads that share the work (default: as many as processors)")
      .typeName("N")
      .check(numberFromTo(1, kMostThreads))
      .parsed()
      ->trigger_on_parse(); // what is wrong with it is no matter of the command behind it
  app_->footer(kFooter);
  addQuiet(*app_);
  for (const CommandRow& row : commandTable()) {
    CLI::App* options = app_->add_subcommand(row.name, row.summary);
    subcommands_.push_back({options, row.make()});
    addQuiet(*options);
    subcommands_.back().command->addOptions(Options(*options));
  }
}

CommandLine::~CommandLine() = default;

ExitCode CommandLine::run(const std::vector<std::string>& words) {
  const std::vector<std::string> known = commandNames();
  if (!words.empty() && !words[0].starts_with('-') && std::ranges::find(known, words[0]) == known.end())
    return usageError(*app_, "there is no command '" + words[0] + "'" + suggestionFor(words[0], known));
  try {
    app_->parse(asParserWants(withStepValues(words)));
  } catch (const CLI::Success& helpOrVersion) {
    std::ostringstream text;
    app_->exit(helpOrVersion, text, text);
    print(QString::fromStdString(text.str()));
    return ExitCode::Ok;
  } catch (const CLI::ParseError& error) {
    return usageError(*app_, unexpected(*app_).value_or(error.what()));
  }
  return runParsed();
}

ExitCode CommandLine::runParsed() const {
  if (threads_ > 0) setThreadCount(threads_);
  for (const Subcommand& subcommand : subcommands_) {
    if (!subcommand.options->parsed()) continue;
    const ExitCode code = subcommand.command->run();
    const QStringList faults = takeSampleFaults();
    for (const QString& fault : faults)
      complain(fault);
    return faults.isEmpty() ? code : std::max(code, ExitCode::Failed);
  }
  return ExitCode::Usage; // not reached: parsing requires a subcommand
}

int runCommandLine(int argc, char** argv) {
  prepareForLittleMemory();
  holdStandardStreams();
  useUtf8();
  ExitCode code = ExitCode::Failed;
  try {
    code = CommandLine().run(withHelpAsOption({argv + std::min(argc, 1), argv + argc}));
    if (code == ExitCode::Ok) sayNotesOfTheEnd();
  } catch (const std::bad_alloc&) {
    complain(QStringLiteral("not enough memory"));
  } catch (const std::exception& exception) {
    complain(QString::fromUtf8(exception.what()));
  }
  return int(std::max(code, finishStandardOutput()));
}

} // namespace xov::cli
