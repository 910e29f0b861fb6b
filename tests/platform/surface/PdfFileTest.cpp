#include "XOV_Graphics/platform/surface/PdfFile.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"

#include <gtest/gtest.h>

#include <random>

namespace xov {
namespace {

/// A page with text and so with fonts: objects lie before the content's and behind it.
QByteArray sampleFile() {
  return pdfPage({0, 0, 200, 100}, [](GraphicsContext& context) {
    context.setColor(colors::red);
    context.fillRect({10, 10, 50, 50});
    context.drawText(QStringLiteral("Seismogram"), {60, 40}, TextAttributes::helvetica(14));
  });
}

/// The number in the file behind the last occurrence of `words`.
qsizetype numberBehind(const QByteArray& file, const QByteArray& words) {
  const QByteArray rest = file.mid(file.lastIndexOf(words) + words.size());
  return rest.left(rest.indexOf('\n')).toLongLong();
}

/// Where the table of objects says that each begins, from the first on.
QList<qsizetype> tableOf(const QByteArray& file) {
  const QList<QByteArray> lines = file.mid(numberBehind(file, "startxref\n")).split('\n');
  EXPECT_EQ(lines[0], "xref");
  const qsizetype count = lines[1].mid(2).toLongLong(); // "0 19"
  QList<qsizetype> places;
  for (qsizetype i = 1; i < count; ++i) {
    EXPECT_EQ(lines[2 + i].size(), 19); // and the line feed
    places << lines[2 + i].left(10).toLongLong();
  }
  return places;
}

TEST(PdfFile, showsTheOperatorsOfThePage) {
  const auto file = PdfFile::parse(sampleFile());
  ASSERT_TRUE(file);
  // The rectangle's lower edge lies 10 points above that of a page of 100; the painter's y grows downwards.
  EXPECT_TRUE(file->content().contains("10 90 m\n60 90 l\n")) << file->content().constData();
  EXPECT_TRUE(file->content().contains("BT\n"));
}

TEST(PdfFile, holdsTheNewContentAndStaysReadable) {
  const auto file = PdfFile::parse(sampleFile());
  ASSERT_TRUE(file);
  for (const QByteArray& content : {QByteArray("q\nQ\n"), file->content() + QByteArray(300000, '\n')}) {
    const auto changed = PdfFile::parse(file->withContent(content));
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->content(), content);
  }
}

TEST(PdfFile, theTableLeadsToEveryObjectWhateverTheContentsLength) {
  const auto file = PdfFile::parse(sampleFile());
  ASSERT_TRUE(file);
  std::mt19937 random(1);
  QByteArray noise; // does not pack, so that the length gains digits and everything moves far
  for (int i = 0; i < 50000; ++i)
    noise += char(' ' + random() % 90);
  for (const QByteArray& content : {QByteArray("q\nQ\n"), noise}) {
    const QByteArray changed = file->withContent(content);
    const QList<qsizetype> places = tableOf(changed);
    ASSERT_EQ(places.size(), tableOf(sampleFile()).size());
    for (qsizetype i = 0; i < places.size(); ++i) {
      const QByteArray start = QByteArray::number(i + 1) + " 0 obj\n";
      EXPECT_EQ(changed.mid(places[i], start.size()), start);
    }
  }
}

TEST(PdfFile, saysTheLengthOfTheNewContent) {
  const auto file = PdfFile::parse(sampleFile());
  ASSERT_TRUE(file);
  const QByteArray changed = file->withContent("q\nQ\n");
  const QByteArray start = "/Filter /FlateDecode\n>>\nstream\n"; // the page's content is the first stream
  const qsizetype begin = changed.indexOf(start) + start.size();
  const qsizetype end = changed.indexOf("\nendstream", begin);
  // The object of the length is the one behind the content's: "10 0 obj\n12\nendobj\n".
  const QList<QByteArray> lines = changed.mid(end).split('\n');
  ASSERT_EQ(lines[2], "endobj");
  EXPECT_EQ(lines[4].toLongLong(), end - begin) << changed.mid(end, 60).constData();
}

TEST(PdfFile, everyOtherObjectStaysAsItIs) {
  const QByteArray before = sampleFile();
  const auto file = PdfFile::parse(before);
  ASSERT_TRUE(file);
  const QByteArray after = file->withContent("q\nQ\n");
  const QList<qsizetype> old = tableOf(before), now = tableOf(after);
  int same = 0;
  for (qsizetype i = 0; i < old.size(); ++i) {
    const auto object = [](const QByteArray& bytes, qsizetype at) {
      return bytes.mid(at, bytes.indexOf("endobj\n", at) - at);
    };
    same += object(before, old[i]) == object(after, now[i]) ? 1 : 0;
  }
  EXPECT_EQ(same, old.size() - 2); // all but the content and its length
}

TEST(PdfFile, refusesWhatIsNoSuchFile) {
  EXPECT_FALSE(PdfFile::parse({}));
  EXPECT_FALSE(PdfFile::parse("%PDF-1.4\n"));
  EXPECT_FALSE(PdfFile::parse("startxref\n999999999999999\n%%EOF\n"));
  EXPECT_FALSE(PdfFile::parse("xref\n0 999999999\ntrailer\nstartxref\n0\n%%EOF\n"));
  QByteArray unpackedStream = sampleFile();
  unpackedStream.replace("/FlateDecode", "/NoneOfThese");
  EXPECT_FALSE(PdfFile::parse(unpackedStream));
}

TEST(PdfFile, refusesEveryFileThatIsCutShort) {
  const QByteArray file = sampleFile();
  const qsizetype table = file.lastIndexOf("startxref\n") + qsizetype(sizeof "startxref\n");
  for (qsizetype size = 0; size < table; ++size)
    ASSERT_FALSE(PdfFile::parse(file.left(size))) << size;
}

TEST(PdfFile, survivesDamagedBytes) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  const QByteArray file = sampleFile();
  int parsed = 0;
  for (int round = 0; round < 2000; ++round) {
    QByteArray damaged = file;
    for (int k = 0; k < 20; ++k)
      damaged[qsizetype(random() % unsigned(file.size()))] = char('0' + random() % 10);
    const auto result = PdfFile::parse(damaged);
    if (!result) continue;
    ++parsed;
    EXPECT_FALSE(result->withContent("q\nQ\n").isEmpty());
  }
  EXPECT_LT(parsed, 2000);
}

} // namespace
} // namespace xov
