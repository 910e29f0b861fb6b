#include "XOV_Graphics/platform/surface/PdfPages.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "tests/support/PdfObjects.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QRegularExpression>

namespace xov {
namespace {

using testing::PdfObjects;
using Outcome = PdfPages::Outcome;

/// A page with a rectangle, a text and so a font, a translucent colour and an image: all that has objects of its own.
QByteArray page(double width, const QString& text) {
  return pdfPage({0, 0, width, 100}, [&](GraphicsContext& context) {
    context.setColor(QColor(255, 0, 0, 100));
    context.fillRect({10, 10, width / 2, 50});
    context.drawText(text, {20, 40}, TextAttributes::helvetica(14));
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(qRgb(1, 2, 3));
    context.drawImage(image, {60, 60, 20, 20}, image.rect());
  });
}

QByteArray documentOf(const QList<QByteArray>& pages) {
  QByteArray whole;
  QBuffer buffer(&whole);
  buffer.open(QIODevice::WriteOnly);
  PdfPages document(buffer);
  for (const QByteArray& page : pages)
    EXPECT_EQ(document.add(page), Outcome::Written);
  EXPECT_TRUE(document.finish());
  return whole;
}

TEST(PdfPages, everyPageKeepsItsSizeAndItsOperators) {
  const QList<QByteArray> pages = {page(200, QStringLiteral("one")), page(300, QStringLiteral("two")),
                                   page(400, QStringLiteral("three"))};
  const PdfObjects whole(documentOf(pages));
  const QList<QByteArray> found = whole.pages();
  ASSERT_EQ(found.size(), 3);
  for (qsizetype i = 0; i < pages.size(); ++i) {
    const PdfObjects alone(pages[i]);
    EXPECT_TRUE(found[i].contains("/MediaBox [0 0 " + QByteArray::number(200 + 100 * i) + ".000000 100.000000]"));
    const QByteArray operators = alone.streamBehind(alone.pages().at(0), "/Contents");
    EXPECT_TRUE(operators.contains("BT\n"));
    EXPECT_EQ(whole.streamBehind(found[i], "/Contents"), operators);
  }
}

TEST(PdfPages, everyPageReachesItsOwnFontAndImage) {
  const PdfObjects whole(documentOf({page(200, QStringLiteral("abc")), page(200, QStringLiteral("defg"))}));
  QList<QByteArray> letters;
  for (const QByteArray& page : whole.pages()) {
    const QByteArray resources = whole.objectBehind(page, "/Resources");
    const QByteArray font = whole.objectBehind(resources, QRegularExpression("/F\\d+"));
    EXPECT_TRUE(font.contains("/Subtype /Type0")) << resources.constData();
    const QByteArray image = whole.objectBehind(resources, QRegularExpression("/Im\\d+"));
    EXPECT_TRUE(image.contains("/Subtype /Image\n")) << resources.constData();
    letters << whole.objectBehind(font, "/ToUnicode");
  }
  ASSERT_EQ(letters.size(), 2);
  EXPECT_TRUE(letters[0].contains("<0061>") && letters[0].contains("<0063>")); // a, c
  EXPECT_TRUE(letters[1].contains("<0064>") && letters[1].contains("<0067>")); // d, g
}

TEST(PdfPages, theTableLeadsToEveryObjectThatIsReferredTo) {
  const QByteArray file = documentOf({page(200, QStringLiteral("one")), page(300, QStringLiteral("two"))});
  const PdfObjects whole(file);
  ASSERT_GT(whole.count(), 20);
  for (qsizetype number = 1; number <= whole.count(); ++number) {
    const QByteArray object = whole.object(number);
    EXPECT_TRUE(object.startsWith(QByteArray::number(number) + " 0 obj\n")) << number;
    const QByteArray words = object.left(object.indexOf("stream\n"));
    for (const auto& match : QRegularExpression("(\\d+) 0 R").globalMatch(QString::fromLatin1(words))) {
      const qsizetype other = match.captured(1).toLongLong();
      EXPECT_TRUE(other >= 1 && other <= whole.count()) << words.constData();
    }
  }
}

TEST(PdfPages, aDocumentOfManyPagesHasOneCatalogueAndOneInformation) {
  QList<QByteArray> pages;
  for (int i = 0; i < 12; ++i)
    pages << page(100, QString::number(i));
  const QByteArray file = documentOf(pages);
  EXPECT_EQ(file.count("/Type /Catalog\n"), 1);
  EXPECT_EQ(file.count("/CreationDate"), 1);
  EXPECT_EQ(file.count("/Type /Pages\n"), 1);
  EXPECT_TRUE(file.contains("/Count 12\n"));
  EXPECT_TRUE(file.endsWith("%%EOF\n"));
}

TEST(PdfPages, refusesWhatIsNoDocumentOfOnePage) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  PdfPages document(buffer);
  const QByteArray one = page(100, QStringLiteral("one"));
  EXPECT_EQ(document.add({}), Outcome::NoPage);
  EXPECT_EQ(document.add(documentOf({one, one})), Outcome::NoPage);
  for (const char* word : {"/Info", "/Root", "/Pages ", "/Kids", "/Count"}) {
    QByteArray without = one;
    without.replace(word, QByteArray(qsizetype(std::strlen(word)), 'x'));
    EXPECT_EQ(document.add(without), Outcome::NoPage) << word;
  }
  EXPECT_EQ(buffer.data(), "");
  EXPECT_EQ(document.add(one), Outcome::Written); // and goes on
}

/// Takes so many bytes and no more.
class FullDevice : public QIODevice {
public:
  explicit FullDevice(qint64 room) : room_(room) { open(WriteOnly | Unbuffered); }

protected:
  qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }
  qint64 writeData(const char* /*data*/, qint64 size) override {
    if (size > room_) return -1;
    room_ -= size;
    return size;
  }

private:
  qint64 room_;
};

TEST(PdfPages, tellsWhereverTheDeviceTakesNoMore) {
  const QByteArray one = page(100, QStringLiteral("one"));
  const qsizetype size = documentOf({one, one}).size();
  const auto fits = [&one](qsizetype room) {
    FullDevice device(room);
    PdfPages document(device);
    return document.add(one) == Outcome::Written && document.add(one) == Outcome::Written && document.finish();
  };
  EXPECT_TRUE(fits(size));
  for (qsizetype room = 0; room < size; room += 97)
    EXPECT_FALSE(fits(room)) << room;
  EXPECT_FALSE(fits(size - 1));
}

} // namespace
} // namespace xov
