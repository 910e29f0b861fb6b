#include "tests/apps/CliFixture.h"

#include <QDir>
#include <QImageReader>
#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <unistd.h>

namespace xov::cli {
namespace {

class CliOutput : public CliTest {
protected:
  void SetUp() override { writeRecord("a.SAC", {.arrival = 5}); }

  /// Draws into the file and expects that nothing else is written, nor said.
  void draw(const QString& name, const QStringList& options = {}) {
    const QStringList before = files();
    const Outcome outcome = xov(QStringList{"section", "a.SAC", "-o", name} + options);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    QStringList after = files();
    after.removeOne(name);
    QStringList others = before;
    others.removeOne(name);
    EXPECT_EQ(after, others);
  }

  QImage image(const QString& name, const QByteArray& format) {
    QImageReader reader(at(name));
    EXPECT_EQ(reader.format(), format);
    return reader.read();
  }
};

TEST_F(CliOutput, setsPropertiesOfTheView) {
  draw("options.png", {"--title", "A title", "--line-width", "2"});
  draw("set.png", {"--set", "title=A title", "--set", "lineWidth=2"});
  draw("usual.png");
  EXPECT_EQ(contents("set.png"), contents("options.png"));
  EXPECT_NE(contents("set.png"), contents("usual.png"));
  const Outcome wrong = xov({"section", "a.SAC", "-o", "wrong.png", "--set", "lineWidth=wide"});
  EXPECT_EQ(wrong.status, 1);
  EXPECT_EQ(wrong.err, "xov: --set: lineWidth: found 'wide', expected a number\n");
  EXPECT_FALSE(files().contains("wrong.png"));
  EXPECT_EQ(xov({"section", "a.SAC", "--set", "lineWidth"}).status, 2);
}

TEST_F(CliOutput, isTheSameWithAnyNumberOfThreads) {
  for (const char* extension : {"png", "pdf"}) {
    QByteArray alone;
    for (const char* threads : {"1", "2", "4", "16"}) {
      const QString name = QStringLiteral("a%1.%2").arg(threads, extension);
      const Outcome outcome = xov({"--threads", threads, "section", "a.SAC", "--scale", "2", "-o", name});
      EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
      const QByteArray bytes = contents(name);
      ASSERT_FALSE(bytes.isEmpty());
      if (alone.isEmpty()) alone = bytes;
      EXPECT_TRUE(bytes == alone) << qPrintable(name);
    }
  }
}

TEST_F(CliOutput, writesPicturesOfSizeTimesScale) {
  draw("a.png", {"--size", "300", "200"});
  EXPECT_EQ(image("a.png", "png").size(), QSize(300, 200));
  draw("b.PNG", {"--size", "300", "200", "--scale", "2"});
  EXPECT_EQ(image("b.PNG", "png").size(), QSize(600, 400));
  draw("c.jpg", {"--size", "300", "200", "--scale", "0.5"});
  EXPECT_EQ(image("c.jpg", "jpeg").size(), QSize(150, 100));
  draw("d.tif", {"--size", "300", "200", "--scale", "1.5"});
  EXPECT_EQ(image("d.tif", "tiff").size(), QSize(450, 300));
}

TEST_F(CliOutput, tagsPicturesWithTheirResolution) {
  draw("a.png", {"--scale", "2"});
  // 144 pixels an inch are 144 / 0.0254 = 5669.3 a metre.
  EXPECT_EQ(image("a.png", "png").dotsPerMeterX(), 5669);
  draw("a.tif", {"--scale", "2"});
  XOV_REQUIRE_TOOL(info, "tiffinfo", {at("a.tif")});
  EXPECT_TRUE(QRegularExpression("Resolution: 144(\\.0+\\d*)?, 144").match(info).hasMatch() ||
              info.contains("Resolution: 5669, 5669"))
      << qPrintable(info);
}

TEST_F(CliOutput, writesThePictureThatTheRecordMakes) {
  draw("a.png", {"--size", "300", "200"});
  const QImage picture = image("a.png", "png");
  EXPECT_EQ(picture.pixel(5, 100), qRgb(255, 255, 255));
  int black = 0;
  int red = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      black += qRed(pixel) < 64 && qGreen(pixel) < 64 ? 1 : 0;
      red += qRed(pixel) > 128 && qGreen(pixel) < 128 ? 1 : 0;
    }
  }
  // The trace of 9 periods, up and down over half of the frame's 100 points, is some 18 · 50 pixels of ink at least;
  // the tick of the arrival is 0.8 of a strip of 100 points.
  EXPECT_GT(black, 900);
  EXPECT_GT(red, 40);
}

TEST_F(CliOutput, writesAPdfPageOfTheSizeInPoints) {
  draw("a.pdf", {"--size", "842", "595"});
  EXPECT_TRUE(contents("a.pdf").startsWith("%PDF-"));
  XOV_REQUIRE_TOOL(info, "pdfinfo", {at("a.pdf")});
  EXPECT_TRUE(QRegularExpression("Pages: +1\n").match(info).hasMatch()) << qPrintable(info);
  EXPECT_TRUE(QRegularExpression("Page size: +842 x 595 pts").match(info).hasMatch()) << qPrintable(info);
}

TEST_F(CliOutput, embedsAllFontsInAPdf) {
  draw("a.pdf");
  XOV_REQUIRE_TOOL(fonts, "pdffonts", {at("a.pdf")});
  const QStringList rows = fonts.split('\n', Qt::SkipEmptyParts).mid(2);
  EXPECT_FALSE(rows.isEmpty());
  // The columns at the end are emb, sub, uni, and the object of two numbers.
  for (const QString& row : rows)
    EXPECT_TRUE(QRegularExpression(" yes +\\w+ +yes +\\d+ +\\d+$").match(row).hasMatch()) << qPrintable(row);
}

TEST_F(CliOutput, writesAnSvgOfPathsAndTexts) {
  draw("a.svg", {"--size", "842", "595"});
  QXmlStreamReader reader(contents("a.svg"));
  QMap<QString, int> elements;
  QStringList texts;
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    if (elements.isEmpty()) {
      EXPECT_EQ(reader.name(), QStringLiteral("svg"));
      EXPECT_EQ(reader.namespaceUri(), QStringLiteral("http://www.w3.org/2000/svg"));
      EXPECT_EQ(reader.attributes().value("viewBox"), QStringLiteral("0 0 842 595"));
    }
    const QString name = reader.name().toString();
    ++elements[name];
    if (name == QLatin1String("text")) texts << reader.readElementText();
  }
  EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
  EXPECT_GT(elements["path"], 3); // frame, ticks, trace
  EXPECT_EQ(elements["image"], 0);
  EXPECT_TRUE(texts.contains(QStringLiteral("A"))) << qPrintable(texts.join(QLatin1Char('|'))); // the arrival
}

TEST_F(CliOutput, writesTheSamePageInEveryTimeZone) {
  for (const char* extension : {"pdf", "svg"}) {
    QByteArrayList files;
    for (const char* zone : {"UTC", "Asia/Kathmandu", "America/St_Johns"}) {
      environment_.insert(QStringLiteral("TZ"), QLatin1String(zone));
      const QString name = QStringLiteral("page%1.%2").arg(files.size()).arg(QLatin1String(extension));
      draw(name);
      files << contents(name);
    }
    EXPECT_EQ(files[1], files[0]) << extension;
    EXPECT_EQ(files[2], files[0]) << extension;
  }
}

TEST_F(CliOutput, writesTheSameBytesForTheSameDrawing) {
  for (const char* extension : {"pdf", "svg", "tif", "jpg", "png"}) {
    const QString one = QStringLiteral("one.%1").arg(extension);
    const QString two = QStringLiteral("two.%1").arg(extension);
    draw(one);
    draw(two);
    EXPECT_EQ(contents(one), contents(two)) << extension;
  }
}

TEST_F(CliOutput, writesAPictureNamedAfterTheCommandWithoutADisplay) {
  const Outcome outcome = xov({"section", "a.SAC"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "wrote section.png\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(files(), (QStringList{"a.SAC", "section.png"}));
}

TEST_F(CliOutput, replacesNoFileThatWasNotAskedFor) {
  writeFile("section.png", "mine");
  writeFile("section_2.png", "mine, too");
  EXPECT_EQ(xov({"section", "a.SAC"}).out, "wrote section_3.png\n");
  EXPECT_EQ(contents("section.png"), "mine");
  EXPECT_EQ(contents("section_2.png"), "mine, too");
}

TEST_F(CliOutput, takesSizesInCentimetresAndInches) {
  draw("a.pdf", {"--size", "16cm", "10cm"});
  XOV_REQUIRE_TOOL(info, "pdfinfo", {at("a.pdf")});
  // 16 / 2.54 · 72 = 453.5 and 10 / 2.54 · 72 = 283.5 points, in whole ones.
  EXPECT_TRUE(QRegularExpression("Page size: +454 x 283 pts").match(info).hasMatch()) << qPrintable(info);
  draw("a.png", {"--size", "6in,4in"});
  EXPECT_EQ(image("a.png", "png").size(), QSize(432, 288));
  const Outcome mixed = xov({"section", "a.SAC", "-o", "b.png", "--size", "6", "4in"});
  EXPECT_EQ(mixed.status, 2);
  EXPECT_TRUE(mixed.err.contains("--size: found '6 4in', expected a unit at both or at none"))
      << qPrintable(mixed.err);
}

TEST_F(CliOutput, givesPicturesTheirPixelsAnInchAndTellsThem) {
  for (const char* name : {"a.png", "a.tif", "a.jpg"}) {
    draw(name, {"--size", "6in", "4in", "--dpi", "300"});
    const QImage picture(at(name));
    EXPECT_EQ(picture.size(), QSize(1800, 1200)) << name;
    EXPECT_NEAR(picture.dotsPerMeterX() * 0.0254, 300, 0.01) << name;
    EXPECT_NEAR(picture.dotsPerMeterY() * 0.0254, 300, 0.01) << name;
  }
  EXPECT_EQ(xov({"section", "a.SAC", "--dpi", "300", "--scale", "2", "-o", "b.png"}).status, 2);
  EXPECT_EQ(xov({"section", "a.SAC", "--dpi", "1", "-o", "b.png"}).status, 2);
}

TEST_F(CliOutput, drawsTheSameInPixelsAnInchAndPixelsAPoint) {
  draw("a.png", {"--dpi", "144"});
  draw("b.png", {"--scale", "2"});
  EXPECT_EQ(contents("a.png"), contents("b.png"));
}

TEST_F(CliOutput, saysNothingButErrorsWhenQuiet) {
  writeRecord("b.SAC");
  writeRecord("c.SAC");
  const QString note = "xov: c.SAC: the last record has no partner; not drawn\n";
  EXPECT_EQ(xov({"panels", "a.SAC", "b.SAC", "c.SAC"}).err, note);
  for (const QStringList& words : {QStringList{"--quiet", "panels"}, QStringList{"panels", "-q"}}) {
    const Outcome outcome = xov(words + QStringList{"a.SAC", "b.SAC", "c.SAC"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 0);
  }
  EXPECT_EQ(xov({"section", "--quiet", "nowhere.SAC", "a.SAC", "-o", "x.png"}).err.count('\n'), 1);
}

TEST_F(CliOutput, replacesAnExistingFile) {
  writeFile("a.png", QByteArray(1000000, 'x'));
  draw("a.png", {"--size", "300", "200"});
  EXPECT_EQ(image("a.png", "png").size(), QSize(300, 200));
}

TEST_F(CliOutput, failsWhereTheFolderDoesNotExist) {
  for (const char* extension : {"pdf", "svg", "tif", "jpg", "png"}) {
    const QString name = QStringLiteral("nowhere/a.%1").arg(extension);
    const Outcome outcome = xov({"section", "a.SAC", "-o", name});
    EXPECT_EQ(outcome.status, 1) << extension;
    EXPECT_EQ(outcome.err, "xov: " + name + ": No such file or directory\n");
  }
  EXPECT_EQ(files(), QStringList{"a.SAC"});
}

TEST_F(CliOutput, failsWhereTheFolderMustNotBeWritten) {
  // /proc takes no files from anyone; permissions do not hold root off.
  const QString name = ::geteuid() == 0 ? QStringLiteral("/proc/a.png") : QStringLiteral("/a.png");
  const Outcome outcome = xov({"section", "a.SAC", "-o", name});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.startsWith("xov: " + name + ": ")) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
}

TEST_F(CliOutput, failsWhereAFolderHasTheName) {
  ASSERT_TRUE(QDir(folder_.path()).mkpath("a.png"));
  const Outcome outcome = xov({"section", "a.SAC", "-o", "a.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.startsWith("xov: a.png: ")) << qPrintable(outcome.err);
}

TEST_F(CliOutput, leavesTheOldFileWhenTheDiskIsFull) {
  for (const char* extension : {"pdf", "tif", "png"}) {
    const QString name = QStringLiteral("plot.%1").arg(extension);
    writeFile(name, "old");
    // A limit of 1 block on the size of files stands for a full disk.
    const Outcome outcome =
        shell(QStringLiteral("trap '' XFSZ; ulimit -f 1; exec $XOV section a.SAC -o %1").arg(name));
    EXPECT_EQ(outcome.status, 1) << extension;
    EXPECT_TRUE(outcome.err.startsWith("xov: " + name + ": ")) << qPrintable(outcome.err);
    EXPECT_EQ(contents(name), "old") << extension;
  }
  EXPECT_EQ(files(), (QStringList{"a.SAC", "plot.pdf", "plot.png", "plot.tif"}));
}

TEST_F(CliOutput, failsOnAPictureOfTooManyPixels) {
  const Outcome outcome = xov({"section", "a.SAC", "-o", "a.png", "--size", "20000", "20000", "--scale", "32"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.startsWith("xov: a.png: ")) << qPrintable(outcome.err);
  EXPECT_EQ(files(), QStringList{"a.SAC"});
}

TEST_F(CliOutput, drawsTheSmallestAndOddSizes) {
  draw("a.png", {"--size", "1", "1"});
  EXPECT_EQ(image("a.png", "png").size(), QSize(1, 1));
  draw("a.pdf", {"--size", "1", "1"});
  draw("b.png", {"--size", "20000", "10", "--scale", "0.1"});
  EXPECT_EQ(image("b.png", "png").size(), QSize(2000, 1));
}

} // namespace
} // namespace xov::cli
