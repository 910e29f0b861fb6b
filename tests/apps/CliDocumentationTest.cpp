#include "tests/apps/CliFixture.h"

#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

namespace xov::cli {
namespace {

QStringList allMatches(const QString& text, const char* pattern) {
  QStringList found;
  QRegularExpressionMatchIterator matches =
      QRegularExpression(QString::fromLatin1(pattern), QRegularExpression::MultilineOption).globalMatch(text);
  while (matches.hasNext())
    found.append(matches.next().captured(1));
  found.removeDuplicates();
  return found;
}

class CliDocumentation : public CliTest {
protected:
  static QString source(const QString& name) {
    QFile file(QStringLiteral(XOV_COMMAND_SOURCES "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return QString::fromUtf8(file.readAll());
  }

  QStringList commands() {
    const QString help = xov({"--help"}).out;
    return allMatches(help.mid(help.indexOf("Subcommands:")), "^  (\\w+) ");
  }

  QStringList longOptions(const QString& command) {
    return allMatches(xov({command, "--help"}).out, "^  [^ ]*--([a-z0-9-]+)");
  }
};

TEST_F(CliDocumentation, knowsItsCommands) {
  for (const char* command : {"section", "panels", "stack", "three", "drum", "monitor", "xy", "scatter", "hist",
                              "map", "grid", "fk", "info", "resources"})
    EXPECT_TRUE(commands().contains(command)) << command;
  EXPECT_TRUE(longOptions("section").contains("zero-lines"));
}

TEST_F(CliDocumentation, describesEachCommandAndOptionInTheManPage) {
  const QString page = source("xov.1");
  for (const QString& command : commands()) {
    EXPECT_TRUE(page.contains(".It Cm " + command + "\n")) << qPrintable(command);
    for (const QString& option : longOptions(command))
      EXPECT_TRUE(page.contains("Fl -" + option)) << qPrintable(command + " --" + option);
  }
}

TEST_F(CliDocumentation, completesEachCommandAndOption) {
  const QString bash = source("completion/xov.bash");
  const QString zsh = source("completion/_xov");
  const QString fish = source("completion/xov.fish");
  for (const QString& command : commands()) {
    EXPECT_TRUE(bash.contains("    " + command + ") ")) << qPrintable(command);
    EXPECT_TRUE(zsh.contains("'" + command + ":")) << qPrintable(command);
    EXPECT_TRUE(fish.contains("-a " + command + " ")) << qPrintable(command);
    for (const QString& option : longOptions(command)) {
      EXPECT_TRUE(bash.contains("--" + option)) << qPrintable(command + " --" + option);
      EXPECT_TRUE(zsh.contains("--" + option)) << qPrintable(command + " --" + option);
      EXPECT_TRUE(fish.contains("-l " + option + " ")) << qPrintable(command + " --" + option);
    }
  }
}

TEST_F(CliDocumentation, completesWordsInBash) {
  if (QStandardPaths::findExecutable("bash").isEmpty()) GTEST_SKIP() << "bash is not installed";
  writeFile("data set.SAC", "");
  const auto complete = [this](const QString& words) {
    const auto output = tool("bash", {"--norc", "-c",
                                      ". " XOV_COMMAND_SOURCES "/completion/xov.bash; COMP_WORDS=(" + words +
                                          "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _xov; "
                                          "printf '%s\\n' \"${COMPREPLY[@]}\""});
    return output->split('\n', Qt::SkipEmptyParts);
  };
  EXPECT_EQ(complete("xov se"), QStringList{"section"});
  EXPECT_EQ(complete("xov stack --style b"), QStringList{"bands"});
  EXPECT_EQ(complete("xov monitor --origin l"), QStringList{"left"});
  EXPECT_EQ(complete("xov --v"), QStringList{"--version"});
  EXPECT_EQ(complete("xov section --z"), QStringList{"--zero-lines"});
  EXPECT_EQ(complete("xov section --sort a"), QStringList{"azimuth"});
  EXPECT_EQ(complete("xov section da"), QStringList{"data set.SAC"});
}

TEST_F(CliDocumentation, hasAManPageWithoutFaults) {
  const QString page = QStringLiteral(XOV_COMMAND_SOURCES "/xov.1");
  if (QStandardPaths::findExecutable("man").isEmpty()) GTEST_SKIP() << "man is not installed";
  const Outcome formatted = shell("man --warnings -E UTF-8 -l -Tutf8 -Z " + page + " > /dev/null");
  EXPECT_EQ(formatted.status, 0);
  EXPECT_EQ(formatted.err, "");
  EXPECT_EQ(tool("mandoc", {"-Tlint", "-Wwarning", page}).value_or(QString()), "");
}

} // namespace
} // namespace xov::cli
