#include "tests/apps/CliFixture.h"

#include <QDir>
#include <QSet>
#include <QXmlStreamReader>

namespace xov::cli {
namespace {

// What files hold, and what they are called, stays in its place: no text of theirs reaches the terminal as more than
// text, no code becomes a path, no small file much memory.
using CliHostileFiles = CliTest;

TEST_F(CliHostileFiles, areReadAndWrittenByNamesThatAreNotUtf8) {
  writeRecord("a.SAC");
  const QString line = "n=$(printf 'caf\\351') && mv a.SAC \"$n.SAC\" && $XOV info \"$n.SAC\" && "
                       "for end in png pdf svg tif; do $XOV section \"$n.SAC\" -o \"$n.$end\" || exit 3; "
                       "test -s \"$n.$end\" || exit 4; done; "
                       "$XOV convert \"$n.SAC\" -o \"$n.mseed\" && test -s \"$n.mseed\" && "
                       "$XOV convert \"$n.SAC\" -o \"$n-folder/\" && test -d \"$n-folder\" && "
                       "$XOV drum \"$n.SAC\" --index-cache \"$n-kept\" -o d.png";
  const Outcome outcome = shell(line);
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err, "");
  // Nothing by another name: the record, four plots, the copy, its folder, and the drum.
  const Outcome others = shell("ls | grep -av \"^$(printf 'caf\\351')\"");
  EXPECT_EQ(others.out, "d.png\n");
  (void)shell("rm -r caf*"); // which Qt cannot name
}

TEST_F(CliHostileFiles, giveNoPathsByTheirCodes) {
  writeRecord("in/a.SAC", {.network = "..", .station = "../../x", .component = "/tmp/y"});
  ASSERT_EQ(xov({"convert", "in/a.SAC", "-o", "out/deep/"}).status, 0);
  ASSERT_EQ(xov({"section", "in/a.SAC", "--page", "station", "-o", "out/deep/{station}{channel}.png"}).status, 0);
  EXPECT_EQ(files(), (QStringList{"in", "out"}));
  EXPECT_EQ(QDir(at("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{"deep"});
  EXPECT_EQ(QDir(at("out/deep")).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(CliHostileFiles, sendNothingToTheTerminal) {
  // Clears the screen, sets a title, and would show "exe.SAC" as "CAS.exe".
  const QString evil = QStringLiteral("\x1b[2J\x1b]0;title\x07") + QChar(0x9B) + "31m" + QChar(0x202E) + "exe" +
                       QChar(0x2066) + QChar(0x200F);
  writeFile("events.xml", "<quakeml><eventParameters><event publicID='1'><description><text>" +
                              QString(evil).remove(QChar(0x1B)).remove(QChar(0x07)).toUtf8() +
                              "</text></description><origin><time><value>2024-01-01T00:00:00Z</value></time>"
                              "<latitude><value>1</value></latitude><longitude><value>2</value></longitude></origin>"
                              "</event></eventParameters></quakeml>");
  writeFile("table.csv", "time,latitude,longitude,depth,mag,place\n2024-01-01T00:00:00Z,1,2,3,4," + evil.toUtf8() +
                             "\n" + evil.toUtf8() + ",1,2,3,4,x\n");
  writeRecord("a.SAC", {.station = "\x1b[2J\x07"});
  for (const char* file : {"events.xml", "table.csv", "a.SAC"}) {
    const Outcome outcome = xov({"info", file});
    EXPECT_EQ(outcome.status, 0) << file << qPrintable(outcome.err);
    for (const QString& text : {outcome.out, outcome.err}) {
      for (const QChar c : {QChar(0x1B), QChar(0x07), QChar(0x9B), QChar(0x202E), QChar(0x2066), QChar(0x200F)})
        EXPECT_FALSE(text.contains(c)) << file << ": " << int(c.unicode());
    }
  }
}

TEST_F(CliHostileFiles, addNoElementsToDrawings) {
  writeRecord("a.SAC", {.station = "</g><a&"});
  ASSERT_EQ(xov({"section", "a.SAC", "--title", "</text><script>]]>&amp;\"", "-o", "a.svg"}).status, 0);
  QXmlStreamReader svg(contents("a.svg"));
  QSet<QString> elements;
  while (!svg.atEnd()) {
    if (svg.readNext() == QXmlStreamReader::StartElement) elements.insert(svg.name().toString());
  }
  EXPECT_FALSE(svg.hasError()) << qPrintable(svg.errorString());
  EXPECT_TRUE(elements.contains("svg"));
  EXPECT_FALSE(elements.contains("script"));
  EXPECT_FALSE(elements.contains("a"));
}

TEST_F(CliHostileFiles, takeLittleMemoryWhileTheyAreSmall) {
  // Headers that claim as many samples, points and cells as their numbers hold.
  writeRecord("a.SAC");
  QByteArray record = contents("a.SAC");
  const qint32 most = 0x7FFFFFFF;
  record.replace(316, 4, QByteArray(reinterpret_cast<const char*>(&most), 4)); // npts
  writeFile("many.SAC", record);
  writeFile("many.nxy", "2147483647\n1 1\n2 2\n");
  writeFile("deep.xml", "<quakeml>" + QByteArray("<a>").repeated(300'000));
  writeFile("wide.xml", "<quakeml " + QByteArray("a='' ").repeated(300'000) + "/>");
  writeFile("two.i2", "12");
  const char* const commands[] = {"info many.SAC",
                                  "section many.SAC -o a.png",
                                  "map --image 0 --size 300 160 --polygons many.nxy -o a.png",
                                  "info deep.xml",
                                  "info wide.xml",
                                  "section a.SAC --stations deep.xml -o a.png",
                                  "section a.SAC --pick-file wide.xml -o a.png",
                                  "grid two.i2 --rows 2000000000 --columns 2000000000 -o a.png"};
  for (const char* command : commands) {
    const Outcome outcome = shell(QStringLiteral("ulimit -v 524288; ulimit -t 5; $XOV ") + command);
    EXPECT_EQ(outcome.status, 1) << command;
    EXPECT_EQ(outcome.err.count('\n'), 1) << command << ": " << qPrintable(outcome.err);
    EXPECT_FALSE(outcome.err.contains("memory")) << command << ": " << qPrintable(outcome.err);
  }
}

} // namespace
} // namespace xov::cli
