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
  static QString document(const QString& name) {
    QFile file(QStringLiteral(XOV_DOCUMENTS "/") + name);
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

  // What bash offers for the last of these words.
  QStringList completed(const QString& words) {
    const auto output =
        tool("bash", {"--norc", "-c",
                      ". " XOV_DOCUMENTS "/xov.bash; COMP_WORDS=(" + words +
                          "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _xov; printf '%s\n' \"${COMPREPLY[@]}\""});
    return output->split('\n', Qt::SkipEmptyParts);
  }
};

TEST_F(CliDocumentation, knowsItsCommands) {
  for (const char* command : {"section", "panels", "stack", "three", "drum", "monitor", "spectrogram", "spectrum",
                              "ppsd", "xy", "scatter", "hist", "map", "grid", "fk", "info", "resources"})
    EXPECT_TRUE(commands().contains(command)) << command;
  EXPECT_TRUE(longOptions("section").contains("zero-lines"));
}

TEST_F(CliDocumentation, describesEachCommandAndOptionInTheManPage) {
  const QString page = document("xov.1");
  for (const QString& command : commands()) {
    EXPECT_TRUE(page.contains(".It Cm " + command + "\n")) << qPrintable(command);
    EXPECT_TRUE(page.contains(".Nm\n.Cm " + command + "\n")) << qPrintable(command);
    EXPECT_TRUE(page.contains(".Ss xov " + command + "\n")) << qPrintable(command);
    for (const QString& option : longOptions(command))
      EXPECT_TRUE(page.contains("Fl -" + option)) << qPrintable(command + " --" + option);
  }
}

TEST_F(CliDocumentation, completesEachCommandAndOptionInBash) {
  if (QStandardPaths::findExecutable("bash").isEmpty()) GTEST_SKIP() << "bash is not installed";
  EXPECT_EQ(completed("xov ''"), commands() << "help");
  EXPECT_EQ(completed("xov help ''"), commands());
  for (const QString& command : commands()) {
    QStringList options = completed("xov " + command + " --");
    for (QString& option : options)
      option.remove(0, 2);
    EXPECT_EQ(options, longOptions(command)) << qPrintable(command);
  }
}

TEST_F(CliDocumentation, completesValuesInBash) {
  if (QStandardPaths::findExecutable("bash").isEmpty()) GTEST_SKIP() << "bash is not installed";
  writeFile("data set.SAC", "");
  EXPECT_EQ(completed("xov sec"), QStringList{"section"});
  EXPECT_EQ(completed("xov --v"), QStringList{"--version"});
  EXPECT_EQ(completed("xov stack --style b"), QStringList{"bands"});
  EXPECT_EQ(completed("xov stack --style = b"), QStringList{"bands"}); // as bash takes --style=b apart
  EXPECT_EQ(completed("xov stack --style ="), (QStringList{"overlay", "bands"}));
  EXPECT_EQ(completed("xov monitor --origin l"), QStringList{"left"});
  EXPECT_EQ(completed("xov section --zero-l"), QStringList{"--zero-lines"});
  EXPECT_EQ(completed("xov section --sort a"), QStringList{"azimuth"});
  EXPECT_EQ(completed("xov section da"), QStringList{"data set.SAC"});
  // The values of an option are numbers, and behind the last of them there are files.
  EXPECT_EQ(completed("xov stack --fixed-x d"), QStringList());
  EXPECT_EQ(completed("xov stack --fixed-x 0 d"), QStringList());
  EXPECT_EQ(completed("xov stack --fixed-x 0 -100 d"), QStringList{"data set.SAC"});
  EXPECT_EQ(completed("xov section -o d"), QStringList{"data set.SAC"});
  EXPECT_EQ(completed("xov map --polygons a b d"), QStringList{"data set.SAC"});
  EXPECT_EQ(completed("xov map --polygons a --ali"), QStringList{"--align"});
}

TEST_F(CliDocumentation, completesInFish) {
  if (QStandardPaths::findExecutable("fish").isEmpty()) GTEST_SKIP() << "fish is not installed";
  environment_.insert("HOME", folder_.path());
  const auto candidates = [this](const QString& words) {
    const Outcome outcome =
        shell("fish --no-config -c 'source " XOV_DOCUMENTS "/xov.fish; complete -C \"" + words + "\"'");
    EXPECT_EQ(outcome.err, "");
    QStringList names;
    for (const QString& line : outcome.out.split('\n', Qt::SkipEmptyParts))
      names.append(line.section('\t', 0, 0));
    return names;
  };
  EXPECT_EQ(candidates("xov sec"), QStringList{"section"});
  EXPECT_EQ(candidates("xov stack --style b"), QStringList{"bands"});
  for (const QString& command : commands()) {
    const QStringList options = candidates("xov " + command + " --");
    for (const QString& option : longOptions(command))
      EXPECT_TRUE(options.contains("--" + option)) << qPrintable(command + " --" + option);
  }
}

TEST_F(CliDocumentation, completesInZsh) {
  if (QStandardPaths::findExecutable("zsh").isEmpty()) GTEST_SKIP() << "zsh is not installed";
  // An interactive shell on a terminal of its own, into which words and a tab are typed, and a key that prints what
  // the line is then.
  writeFile("typed.zsh", R"zsh(zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PS1= PS2=; stty -echo; unsetopt zle_bracketed_paste; fpath=($1 \$fpath); autoload -U compinit; compinit -u -D"
zpty -w shell 'show() { print -r -- "<$LBUFFER>"; LBUFFER= }; zle -N show; bindkey "^G" show; print rea""dy'
zpty -r shell line '*ready*'
zpty -w -n shell "$2"$'\t\a'
zpty -r shell line '*<*>*'
print -r -- "${${line#*<}%%>*}"
)zsh");
  environment_.insert("HOME", folder_.path());
  environment_.insert("TERM", "dumb");
  const auto completedLine = [this](const QString& words) {
    return tool("zsh", {"-f", at("typed.zsh"), XOV_DOCUMENTS, words})->trimmed();
  };
  EXPECT_EQ(completedLine("xov sec"), "xov section");
  EXPECT_EQ(completedLine("xov section --zero-l"), "xov section --zero-lines");
  EXPECT_EQ(completedLine("xov stack --style ba"), "xov stack --style bands");
  EXPECT_EQ(completedLine("xov help mon"), "xov help monitor");
}

TEST_F(CliDocumentation, hasAManPageWithoutFaults) {
  const QString page = QStringLiteral(XOV_DOCUMENTS "/xov.1");
  if (QStandardPaths::findExecutable("man").isEmpty()) GTEST_SKIP() << "man is not installed";
  const Outcome formatted = shell("man --warnings -E UTF-8 -l -Tutf8 -Z " + page + " > /dev/null");
  EXPECT_EQ(formatted.status, 0);
  EXPECT_EQ(formatted.err, "");
  EXPECT_EQ(tool("mandoc", {"-Tlint", "-Wwarning", page}).value_or(QString()), "");
}

} // namespace
} // namespace xov::cli
