#include "tests/apps/CliFixture.h"

#include <QDir>
#include <QFile>

namespace xov::cli {
namespace {

// Seismograms from standard input and pipes, and files whose names are no UTF-8.
class CliStreams : public CliTest {
protected:
  // What the shell writes down where names cannot pass through a QString.
  static constexpr char kLatin1[] = "caf\\351"; // "café" in Latin-1, as printf writes it
  Outcome bash(const QString& line) {
    writeFile("line.sh", line.toUtf8());
    return shell("bash line.sh");
  }
};

TEST_F(CliStreams, readsStandardInputByEachOfItsNames) {
  writeRecord("a.SAC");
  const QString row = xov({"info", "a.SAC"}).out.section('\n', 1, 1).section(' ', 0, -2);
  ASSERT_FALSE(row.isEmpty());
  for (const char* line : {"$XOV info - < a.SAC", "cat a.SAC | $XOV info -", "cat a.SAC | $XOV info /dev/stdin",
                           "$XOV info /dev/stdin < a.SAC", "$XOV info <(cat a.SAC)"}) {
    const Outcome outcome = bash(line);
    EXPECT_EQ(outcome.status, 0) << line << '\n' << qPrintable(outcome.err);
    EXPECT_EQ(outcome.out.section('\n', 1, 1).section(' ', 0, -2), row) << line;
  }
}

TEST_F(CliStreams, drawsWhatComesOutOfPipes) {
  writeRecord("a.SAC");
  writeRecord("b.SAC", {.component = "BHN"});
  writeRecord("c.SAC", {.component = "BHE"});
  for (const char* command : {"section", "stack", "three", "panels", "drum", "monitor"}) {
    const QString rest = QString(command) == "drum" ? "" : "<(cat b.SAC) c.SAC";
    const Outcome outcome = bash(QStringLiteral("cat a.SAC | $XOV %1 - %2 -o %1.png").arg(command, rest));
    EXPECT_TRUE(QFile::exists(at(QStringLiteral("%1.png").arg(command)))) << command << qPrintable(outcome.err);
  }
  // The same picture as from files.
  EXPECT_EQ(bash("$XOV section a.SAC b.SAC c.SAC -o files.png").status, 0);
  EXPECT_EQ(contents("section.png"), contents("files.png"));
}

TEST_F(CliStreams, refusesEmptyAndForeignStreamsInOneLine) {
  EXPECT_EQ(bash("true | $XOV info -").err, "xov: standard input: the file is empty\n");
  const Outcome text = bash("echo hello | $XOV section -");
  EXPECT_EQ(text.status, 1);
  EXPECT_TRUE(text.err.startsWith("xov: standard input: unknown format")) << qPrintable(text.err);
  EXPECT_EQ(text.err.count('\n'), 1);
  EXPECT_EQ(bash("$XOV info - < /dev/zero").err, "xov: standard input: is neither a file nor a pipe\n");
}

TEST_F(CliStreams, readsAndWritesNamesThatAreNoUtf8) {
  writeRecord("a.SAC");
  writeFile("points.txt", "1 2\n3 4\n");
  const QString name = QString::fromLatin1(kLatin1);
  const Outcome outcome = bash("set -e\n"
                               "name=$(printf '" +
                               name +
                               "')\n"
                               "mkdir \"$name\"\n"
                               "cp a.SAC \"$name/$name.SAC\"\n"
                               "$XOV info \"$name/$name.SAC\" > named\n"
                               "$XOV info \"$name\" > folder\n"
                               "$XOV info \"$name/*.SAC\" > pattern\n"
                               "$XOV section \"$name/$name.SAC\" -o \"$name/$name.png\"\n"
                               "$XOV section a.SAC -o plain.png\n"
                               "cmp plain.png \"$name/$name.png\"\n"
                               "$XOV section a.SAC -o \"$name/$name.pdf\"\n"
                               "test -s \"$name/$name.pdf\"\n"
                               "rm \"$name/$name\".*\n"
                               "rmdir \"$name\"\n");
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err, "");
  for (const char* table : {"named", "folder", "pattern"})
    EXPECT_EQ(contents(table).count('\n'), 2) << table;
  EXPECT_EQ(files().filter("?"), QStringList()) << "nothing is written under another name";
}

TEST_F(CliStreams, namesAMissingFileThatIsNoUtf8) {
  const Outcome outcome = bash("$XOV info $(printf '" + QString::fromLatin1(kLatin1) + ".SAC')");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.startsWith("xov: caf")) << qPrintable(outcome.err);
  EXPECT_TRUE(outcome.err.endsWith(".SAC: cannot be opened: No such file or directory\n")) << qPrintable(outcome.err);
}

} // namespace
} // namespace xov::cli
