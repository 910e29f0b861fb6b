#include "apps/xov/commands/CommandLine.h"

#include "apps/xov/commands/CommandTable.h"

#include <CLI/CLI.hpp>

#include <XOV_Graphics/base/Version.h>
#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

namespace {

constexpr char kFooter[] = "Exit status: 0 when all went well, 1 when an input could not be read or an output not\n"
                           "written, 2 when the command line is wrong. Examples and details: man xov\n";

// Qt wants a UTF-8 locale and says so on standard error when it starts in another one, as under cron.
void useUtf8() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) ::setenv("LC_ALL", "C.UTF-8", 1);
}

// Whether the parser would take a file name or pattern apart, as a list in brackets.
bool looksLikeList(const std::string& argument) { return argument.starts_with('[') && argument.ends_with(']'); }

// The same file by a name that the parser takes for one.
std::string asFileName(const std::string& argument) { return "./" + argument; }

// The arguments after the program's name, as the parser wants them: last one first, and without what it gets wrong.
// - "--title=" it takes for an option whose value follows: split in two, the value is the empty text that was meant.
// - "[A-C]*[EN]" it takes for a list of names.
// - "--" it forgets when file names stand before it: all arguments after it are file names.
std::vector<std::string> reversedArguments(int argc, char** argv) {
  std::vector<std::string> arguments;
  bool onlyNames = false;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
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

struct Subcommand {
  CLI::App* options;
  std::unique_ptr<Command> command;
};

std::vector<Subcommand> addSubcommands(CLI::App& xov) {
  std::vector<Subcommand> subcommands;
  for (const CommandRow& row : commandTable()) {
    CLI::App* options = xov.add_subcommand(row.name, row.summary);
    subcommands.push_back({options, row.make()});
    subcommands.back().command->addOptions(*options);
  }
  return subcommands;
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

// The first argument where it should be a command and is none.
std::optional<std::string> unknownCommand(int argc, char** argv) {
  if (argc < 2 || argv[1][0] == '-') return {};
  const auto table = commandTable();
  const bool known = std::any_of(table.begin(), table.end(),
                                 [&](const CommandRow& row) { return std::strcmp(row.name, argv[1]) == 0; });
  return known ? std::nullopt : std::optional<std::string>(argv[1]);
}

ExitCode runParsed(const std::vector<Subcommand>& subcommands) {
  for (const Subcommand& subcommand : subcommands) {
    if (subcommand.options->parsed()) return subcommand.command->run();
  }
  return ExitCode::Usage; // not reached: parsing requires a subcommand
}

ExitCode parseAndRun(int argc, char** argv) {
  CLI::App xov("Plots of seismograms and other data, in a window or as PDF, TIFF, JPEG and PNG files.", "xov");
  xov.require_subcommand(1);
  xov.set_version_flag("--version", "xov " + version().toString().toStdString(), "Print the version and exit");
  xov.footer(kFooter);
  const std::vector<Subcommand> subcommands = addSubcommands(xov);
  if (const auto unknown = unknownCommand(argc, argv))
    return usageError(xov, "there is no command '" + *unknown + "'");
  try {
    xov.parse(reversedArguments(argc, argv));
  } catch (const CLI::Success& helpOrVersion) {
    xov.exit(helpOrVersion);
    return ExitCode::Ok;
  } catch (const CLI::ParseError& error) {
    return usageError(xov, error.what());
  }
  return runParsed(subcommands);
}

} // namespace

int runCommandLine(int argc, char** argv) {
  useUtf8();
  ExitCode code = ExitCode::Failed;
  try {
    code = parseAndRun(argc, argv);
  } catch (const std::bad_alloc&) {
    complain(QStringLiteral("not enough memory"));
  } catch (const std::exception& exception) {
    complain(QString::fromUtf8(exception.what()));
  }
  return int(std::max(code, finishStandardOutput()));
}

} // namespace xov::cli
