#include "XOV_Graphics/platform/surface/PdfCheck.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "XOV_Graphics/platform/surface/PdfTable.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

/// Text and so a font, and pictures that are packed with and without losses and with an opacity.
void drawChecked(GraphicsContext& context) {
  context.setColor(colors::red);
  context.fillRect({10, 10, 50, 50});
  context.drawText(QStringLiteral("Seismogram"), {60, 40}, TextAttributes::helvetica(14));
  QImage photograph(400, 300, QImage::Format_RGB32), cells(7, 5, QImage::Format_ARGB32),
      grey(9, 4, QImage::Format_Mono);
  for (int y = 0; y < photograph.height(); ++y) {
    for (int x = 0; x < photograph.width(); ++x)
      photograph.setPixel(x, y, qRgb(x * y % 256, x % 256, y % 256));
  }
  cells.fill(QColor(0, 0, 255, 100));
  grey.fill(1);
  context.drawImage(photograph, {100, 10, 80, 60}, photograph.rect(), 1, ImageKind::Picture);
  context.drawImage(cells, {20, 70, 20, 20}, cells.rect());
  context.drawImage(grey, {50, 70, 20, 20}, grey.rect());
}

QByteArray checkedPage() { return pdfPage({0, 0, 200, 100}, drawChecked); }

/// The page with other bytes in a place, and a table that leads to the objects all the same.
QByteArray changed(const QByteArray& file, qsizetype at, qsizetype count, const QByteArray& bytes) {
  const auto table = PdfTable::parse(file);
  EXPECT_TRUE(table);
  return table ? table->withChanges(file, {{{at, at + count}, bytes}}) : QByteArray();
}

TEST(PdfCheck, findsNoFaultInAPage) {
  const QByteArray page = checkedPage();
  EXPECT_TRUE(page.contains("/DCTDecode") && page.contains("/SMask") && page.contains("/Length1"));
  EXPECT_EQ(pdfFault(page), QString());
  EXPECT_EQ(pdfFault(pdfPage({0, 0, 20, 10}, [](GraphicsContext&) {})), QString());
}

// As Qt writes one when there was no memory to pack it with.
TEST(PdfCheck, findsAStreamThatIsEmpty) {
  const QByteArray page = checkedPage();
  int streams = 0;
  for (qsizetype at = page.indexOf("/FlateDecode"); at >= 0; at = page.indexOf("/FlateDecode", at + 1)) {
    const qsizetype begin = page.indexOf("\nstream\n", at) + 8;
    const qsizetype end = page.indexOf("\nendstream", begin);
    QByteArray empty = changed(page, begin, end - begin, "");
    EXPECT_NE(pdfFault(empty), QString()) << at; // of a length that is not there
    empty.replace("\n" + QByteArray::number(end - begin) + "\nendobj", "\n0\nendobj");
    EXPECT_NE(pdfFault(empty), QString()) << at;
    ++streams;
  }
  EXPECT_GE(streams, 4); // the content, the font, the cells and their opacity
}

TEST(PdfCheck, findsADamagedStream) {
  const QByteArray page = pdfPage({0, 0, 20, 10}, [](GraphicsContext& context) { context.fillRect({1, 1, 5, 5}); });
  const qsizetype begin = page.indexOf("\nstream\n", page.indexOf("/FlateDecode")) + 8;
  const qsizetype end = page.indexOf("\nendstream", begin);
  ASSERT_GT(end, begin + 8);
  int missed = 0;
  for (qsizetype at = begin; at < end; ++at) {
    QByteArray damaged = page;
    damaged[at] = char(damaged[at] ^ 0x10);
    missed += pdfFault(damaged).isEmpty() ? 1 : 0;
  }
  EXPECT_LE(missed, 1); // some bits between the last block and the sum behind it mean nothing
}

TEST(PdfCheck, findsAPageThatBreaksOff) {
  const QByteArray page = checkedPage();
  EXPECT_NE(pdfFault(QByteArray()), QString());
  for (qsizetype size = 0; size + 2 < page.size(); size += 97)
    EXPECT_NE(pdfFault(page.first(size)), QString()) << size;
}

TEST(PdfCheck, findsATableThatLeadsElsewhere) {
  const QByteArray page = checkedPage();
  QByteArray moved = page;
  moved.insert(moved.indexOf("2 0 obj"), "% moved\n");
  EXPECT_NE(pdfFault(moved), QString());
  QByteArray two = page;
  EXPECT_NE(pdfFault(two.replace("/Count 1\n", "/Count 2\n")), QString());
}

} // namespace
} // namespace xov
