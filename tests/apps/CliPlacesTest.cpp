#include "tests/apps/CliFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace xov::cli {
namespace {

/// Places that take no file, or not as others do.
class CliPlaces : public CliTest {
protected:
  void SetUp() override { writeRecord("a.SAC", {.arrival = 5}); }

  /// Runs lines of sh in which the folder "disk" is a disk of its own, made with those options of tmpfs. Status 77
  /// where the system mounts none for us.
  Outcome onDisk(const char* options, const QString& lines) {
    writeFile("lines.sh", "mkdir -p disk && mount -t tmpfs -o " + QByteArray(options) + " none disk || exit 77\n" +
                              lines.toUtf8());
    // As a user who may mount in a name space of their own.
    const Outcome outcome = shell("unshare --map-root-user --mount sh lines.sh");
    return outcome.err.startsWith("unshare: ") ? Outcome{kNoDisk, {}, outcome.err} : outcome;
  }

  static constexpr int kNoDisk = 77;
};

#define XOV_REQUIRE_DISK(outcome)                                                                                    \
  if ((outcome).status == kNoDisk) GTEST_SKIP() << "no disk of its own can be mounted: " << qPrintable((outcome).err)

TEST_F(CliPlaces, aDiskOfSixtyFourKilobytesKeepsTheOldFiles) {
  const Outcome outcome =
      onDisk("size=64k", "set -e; SIZE='--size 300 200'\n"
                         "for end in png pdf svg; do $XOV section a.SAC -q $SIZE -o disk/a.$end; done\n"
                         "$XOV convert a.SAC -o disk/a.mseed\n"
                         "cp -r disk before\n"
                         "cat /dev/zero > disk/fill 2> /dev/null || true\n"
                         "set +e\n"
                         "for end in png pdf svg; do\n"
                         "  $XOV section a.SAC -q $SIZE --title other -o disk/a.$end; echo $?\n"
                         "done\n"
                         "$XOV convert a.SAC -o disk/a.mseed; echo $?\n"
                         "$XOV section a.SAC -q $SIZE -o disk/new.png; echo $?\n"
                         "rm disk/fill; diff -r disk before && ls -A disk | wc -l\n"
                         "rm disk/a.pdf disk/a.svg\n"
                         "$XOV section a.SAC -q $SIZE --title other -o disk/a.png && cmp disk/a.png "
                         "before/a.png\n");
  XOV_REQUIRE_DISK(outcome);
  EXPECT_EQ(outcome.out.section('\n', 0, 5), "1\n1\n1\n1\n1\n4") << "five failures, then the four old files";
  EXPECT_TRUE(outcome.out.contains("differ")) << "there is room again";
  QString expected;
  for (const char* name : {"a.png", "a.pdf", "a.svg", "a.mseed", "new.png"})
    expected += QStringLiteral("xov: disk/%1: No space left on device\n").arg(QLatin1String(name));
  EXPECT_EQ(outcome.err, expected) << qPrintable(outcome.err);
}

TEST_F(CliPlaces, aDiskWithoutRoomForAnotherNameIsSaid) {
  const Outcome outcome = onDisk("size=1m,nr_inodes=2", "echo old > disk/a.png\n"
                                                        "$XOV section a.SAC -q -o disk/a.png; echo $?\n"
                                                        "cat disk/a.png; ls -A disk\n");
  XOV_REQUIRE_DISK(outcome);
  EXPECT_EQ(outcome.out, "1\nold\na.png\n");
  EXPECT_EQ(outcome.err, "xov: disk/a.png: No space left on device\n");
}

TEST_F(CliPlaces, aDiskThatIsOnlyReadIsSaidToAdministratorsToo) {
  const Outcome outcome = onDisk("size=1m", "echo old > disk/a.png; cp a.SAC disk; mount -o remount,ro disk\n"
                                            "$XOV section a.SAC -q -o disk/a.png; echo $?\n"
                                            "$XOV section a.SAC -q -o disk/new.pdf; echo $?\n"
                                            "$XOV convert a.SAC -o disk/folder/; echo $?\n"
                                            "$XOV info disk/a.SAC > listed; echo $?\n"
                                            "cat disk/a.png; ls -A disk\n");
  XOV_REQUIRE_DISK(outcome);
  EXPECT_EQ(outcome.out, "1\n1\n1\n0\nold\na.SAC\na.png\n");
  EXPECT_EQ(outcome.err.section('\n', 0, 1), "xov: disk/a.png: Read-only file system\n"
                                             "xov: disk/new.pdf: Read-only file system");
  EXPECT_EQ(outcome.err.count('\n'), 3) << qPrintable(outcome.err);
}

TEST_F(CliPlaces, aFullDiskIsOneLineHoweverManyFilesItTakesNot) {
  writeRecord("b.SAC", {.component = "BHN"});
  writeRecord("c.SAC", {.component = "BHE"});
  // The shell's limit counts 512 bytes, of which a record has more.
  const Outcome outcome = shell("trap '' XFSZ; ulimit -f 1; $XOV convert a.SAC b.SAC c.SAC -o out/");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.endsWith(".SAC: File too large; the same of 2 more\n")) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  EXPECT_EQ(QDir(at("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

TEST_F(CliPlaces, aClosedStandardOutputIsSaidAndEndsInNoFile) {
  for (const char* line : {"$XOV info a.SAC >&-", "$XOV section a.SAC -q -o plot.png >&-"}) {
    const Outcome outcome = shell(QLatin1String(line));
    const bool prints = QByteArrayView(line).contains("info");
    EXPECT_EQ(outcome.status, prints ? 1 : 0) << line;
    EXPECT_EQ(outcome.err, prints ? "xov: standard output: Bad file descriptor\n" : "") << line;
  }
  // A file that is opened would take the number of the stream, and what is printed would stand in it.
  EXPECT_EQ(shell("cp a.SAC b.SAC; $XOV info b.SAC 0<&- 1>&- 2>&-").status, 1);
  EXPECT_EQ(contents("b.SAC"), contents("a.SAC"));
  EXPECT_EQ(shell("$XOV section a.SAC -o named.png").status, 0);
  EXPECT_EQ(contents("plot.png"), contents("named.png"));
}

TEST_F(CliPlaces, aStandardOutputThatIsFullOrLeftIsSaid) {
  EXPECT_EQ(shell("$XOV info a.SAC > /dev/full").err, "xov: standard output: No space left on device\n");
  // A pipe without a reader ends the command as it ends others.
  const Outcome left = shell("sleep 0.2 | { trap '' PIPE; sleep 0.4; $XOV info a.SAC; } | true");
  EXPECT_EQ(left.err.count('\n'), left.err.isEmpty() ? 0 : 1) << qPrintable(left.err);
}

TEST_F(CliPlaces, aPipeIsWrittenToAndOneWhoseReaderLeavesIsSaid) {
  ASSERT_EQ(::mkfifo(qPrintable(at("pipe.png")), 0600), 0);
  EXPECT_EQ(shell("cat pipe.png > read.png & $XOV section a.SAC -o pipe.png && wait").status, 0);
  EXPECT_EQ(shell("$XOV section a.SAC -o plot.png").status, 0);
  EXPECT_EQ(contents("read.png"), contents("plot.png"));
  EXPECT_TRUE(!QFileInfo(at("pipe.png")).isFile());
  // More than a pipe holds, to a reader that takes one byte.
  ASSERT_EQ(::mkfifo(qPrintable(at("pipe.tif")), 0600), 0);
  const Outcome left = shell("head -c 1 pipe.tif > one & $XOV section a.SAC -o pipe.tif");
  EXPECT_EQ(left.status, 1);
  EXPECT_EQ(left.err, "xov: pipe.tif: Broken pipe\n");
}

TEST_F(CliPlaces, aFullPipeIsWaitedFor) {
  // Uncompressed, more than the 64 kilobytes that a pipe takes before anybody reads.
  ASSERT_EQ(::mkfifo(qPrintable(at("pipe.tif")), 0600), 0);
  EXPECT_EQ(shell("$XOV section a.SAC -o plot.tif").status, 0);
  EXPECT_GT(contents("plot.tif").size(), 100'000);
  EXPECT_EQ(shell("{ sleep 0.3; cat; } < pipe.tif > read.tif & $XOV section a.SAC -o pipe.tif && wait").status, 0);
  EXPECT_EQ(contents("read.tif"), contents("plot.tif"));
}

TEST_F(CliPlaces, aFolderThatMayNotBeWrittenKeepsItsFiles) {
  if (::geteuid() == 0) GTEST_SKIP() << "permissions do not hold root off";
  ASSERT_EQ(shell("mkdir closed && $XOV section a.SAC -o closed/a.png && chmod 500 closed").status, 0);
  const QByteArray before = contents("closed/a.png");
  for (const char* name : {"closed/a.png", "closed/b.png"}) {
    const Outcome outcome = xov({"section", "a.SAC", "--title", "other", "-o", name});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, QStringLiteral("xov: %1: Permission denied\n").arg(QLatin1String(name)));
  }
  EXPECT_EQ(contents("closed/a.png"), before);
  EXPECT_EQ(shell("chmod 700 closed").status, 0);
}

TEST_F(CliPlaces, namesMayBeAsLongAsNamesCanBe) {
  const QString longest = QString(251, 'n') + ".png";
  for (int i = 0; i < 2; ++i) {
    const Outcome outcome = xov({"section", "a.SAC", "-o", longest});
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  }
  EXPECT_EQ(files(), (QStringList{"a.SAC", longest}));
  EXPECT_EQ(xov({"section", "a.SAC", "-o", "n" + longest}).err, "xov: n" + longest + ": File name too long\n");
  // 125 letters of two bytes, 5 of one.
  const QString letters = QString(125, QChar(0xE9)) + "n.png";
  EXPECT_EQ(xov({"section", "a.SAC", "-o", letters}).err, "");
  EXPECT_EQ(contents(letters), contents(longest));
  EXPECT_EQ(xov({"section", "a.SAC", "-o", QChar(0xE9) + letters}).status, 1);
  EXPECT_EQ(files().size(), 3);
}

TEST_F(CliPlaces, aNameThatLeavesNoRoomForThatOfItsIndexIsReadAllTheSame) {
  SacHeader header;
  header.delta = 0.1F;
  header.b = 0;
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 0), Qt::UTC));
  const QString longest = QString(251, 'n') + ".SAC";
  constexpr std::size_t kManySamples = 300'000; // more than the megabyte that is read without an index
  writeRecord(longest, SacSeismogram(header, std::vector<float>(kManySamples, 1)));
  const Outcome outcome = xov({"drum", longest, "--index-cache", "beside", "-o", "a.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.err.endsWith(": File name too long\n")) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err.count('\n'), 1);
  EXPECT_EQ(files(), (QStringList{"a.SAC", "a.png", longest}));
}

TEST_F(CliPlaces, aLinkStaysALink) {
  ASSERT_EQ(shell("mkdir kept && ln -s kept/a.png a.png && $XOV section a.SAC -o a.png").status, 0);
  EXPECT_TRUE(QFileInfo(at("a.png")).isSymLink());
  EXPECT_GT(contents("kept/a.png").size(), 100);
}

TEST_F(CliPlaces, filesHaveThePermissionsOfTheUsersMask) {
  EXPECT_EQ(shell("umask 027; $XOV section a.SAC -o a.png; stat -c %a a.png").out, "640\n");
  EXPECT_EQ(shell("chmod 604 a.png; umask 077; $XOV section a.SAC -o a.png; stat -c %a a.png").out, "604\n");
}

TEST_F(CliPlaces, whatAKilledCommandLeftGoesWithTheNextFile) {
  writeFile(".xov-0123456789abcdef.part", "half");
  writeFile("a.png.AbCdEf", "of another program");
  EXPECT_EQ(xov({"section", "a.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(files(), (QStringList{"a.SAC", "a.png", "a.png.AbCdEf"}));
}

TEST_F(CliPlaces, indexesThatFindNoRoomAreOneNoteOfACommandThatSucceeds) {
  for (const char* name : {"long.SAC", "longer.SAC"}) {
    SacHeader header;
    header.delta = 0.1F;
    header.b = 0;
    header.kcmpnm = name[4] == '.' ? "BHZ" : "BHN";
    constexpr std::size_t kSamples = 300'000; // more than the megabyte that is read without an index
    writeRecord(QLatin1String(name), SacSeismogram(header, std::vector<float>(kSamples, 1)));
  }
  // Below a file there is no folder.
  const QStringList words = {"section", "long.SAC", "longer.SAC", "--index-cache", "a.SAC/none", "-o"};
  const Outcome drawn = xov(words + QStringList("plot.png"));
  EXPECT_EQ(drawn.status, 0);
  EXPECT_EQ(drawn.err.count('\n'), 1) << qPrintable(drawn.err);
  EXPECT_TRUE(drawn.err.startsWith("xov: long.SAC: its index is not kept: ")) << qPrintable(drawn.err);
  EXPECT_TRUE(drawn.err.endsWith(": Not a directory; the same of 1 more\n")) << qPrintable(drawn.err);
  const Outcome failed = xov(words + QStringList("a.SAC/plot.png"));
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.err, "xov: a.SAC/plot.png: Not a directory\n");
}

TEST_F(CliPlaces, aSystemWithoutFontsIsSaidInOneLine) {
  writeFile("none.conf", "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig>\n"
                         "<dir>/nonexistent</dir>\n</fontconfig>\n");
  environment_.insert("FONTCONFIG_FILE", at("none.conf"));
  const Outcome outcome = xov({"section", "a.SAC", "-o", "a.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: no fonts are installed: letters are drawn as boxes\n");
  EXPECT_EQ(xov({"section", "a.SAC", "-q", "-o", "a.png"}).err, "");
}

} // namespace
} // namespace xov::cli
