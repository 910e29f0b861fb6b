#include "XOV_Graphics/platform/TextAttributes.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/Typeface.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainterPath>

#include <random>

namespace xov {
namespace {

// Advance widths of Helvetica in thousandths of its size (Adobe Font Metrics).
constexpr double kDigit = 556;
constexpr double kSpace = 278;
constexpr double kH = 722;
constexpr double ke = 556;
constexpr double kl = 222;
constexpr double ki = 222;
constexpr double kW = 944;

TEST(TextAttributes, widthsAreHelveticasOwn) {
  const TextAttributes font = TextAttributes::helvetica(10);
  EXPECT_NEAR(font.size(QStringLiteral("0123456789")).width(), 10 * kDigit / 100, 0.01);
  EXPECT_NEAR(font.size(QStringLiteral("Hel i")).width(), (kH + ke + kl + kSpace + ki) / 100, 0.01);
}

TEST(TextAttributes, widthsAreProportionalToTheSize) {
  const QString text = QStringLiteral("II.TLY.00.BHZ");
  const double large = TextAttributes::helvetica(1000).size(text).width();
  for (double size : {0.5, 1.0, 9.0, 9.7, 14.0, 18.0, 72.0}) {
    EXPECT_NEAR(TextAttributes::helvetica(size).size(text).width(), large * size / 1000, 1e-9) << size;
  }
}

TEST(TextAttributes, lettersAreNotKerned) {
  const TextAttributes font = TextAttributes::helvetica(100);
  const double both = font.size(QStringLiteral("AV")).width();
  EXPECT_NEAR(both, font.size(QStringLiteral("A")).width() + font.size(QStringLiteral("V")).width(), 1e-9);
}

TEST(TextAttributes, aLineIs115HundredthsOfTheSizeHigh) {
  const TextAttributes font = TextAttributes::helvetica(20);
  EXPECT_NEAR(font.size(QStringLiteral("x")).height(), 23, 1e-12);
  EXPECT_NEAR(font.lineHeight(), 23, 1e-12);
  EXPECT_NEAR(font.descent(), 4.6, 1e-12);
}

TEST(TextAttributes, severalLinesMakeOneBoxAsWideAsTheWidest) {
  const TextAttributes font = TextAttributes::helvetica(10);
  const QSizeF size = font.size(QStringLiteral("i\nWW\n"));
  EXPECT_NEAR(size.width(), 2 * kW / 100, 0.01);
  EXPECT_NEAR(size.height(), 3 * 11.5, 1e-12);
}

TEST(TextAttributes, textWithoutCharactersIsOneEmptyLine) {
  EXPECT_EQ(TextAttributes::helvetica(10).size(QString()), QSizeF(0, 11.5));
}

TEST(TextAttributes, aSizeThatIsNotPositiveGivesAnEmptyBox) {
  for (double size : {0.0, -3.0, std::nan("")}) {
    EXPECT_EQ(TextAttributes::helvetica(size).size(QStringLiteral("x")), QSizeF(0, 0));
  }
}

TEST(TextAttributes, textIsBlackUnlessAColourIsSet) {
  TextAttributes font = TextAttributes::helvetica(10);
  EXPECT_FALSE(font.color().has_value());
  EXPECT_EQ(font.effectiveColor(), colors::black);
  font.setColor(colors::red);
  font.setFont(QStringLiteral("Helvetica"), 12);
  EXPECT_EQ(font.effectiveColor(), colors::red);
}

TEST(TextAttributes, theSystemLabelFontIsHelvetica10) {
  EXPECT_EQ(TextAttributes::systemLabel(), TextAttributes::helvetica(10));
}

TEST(Typeface, helveticaIsAnInstalledFontOfItsWidths) {
  // A foundry may stand behind the name: "Nimbus Sans [urw]".
  const QString family =
      QFontInfo(Typeface::forFamily(QStringLiteral("Helvetica")).font()).family().section(QStringLiteral(" ["), 0, 0);
  const QStringList twins = {
      QStringLiteral("Helvetica"),      QStringLiteral("Nimbus Sans"),     QStringLiteral("Nimbus Sans L"),
      QStringLiteral("TeX Gyre Heros"), QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
      QStringLiteral("Arimo")};
  EXPECT_TRUE(twins.contains(family)) << qPrintable(family);
}

TEST(Typeface, aFamilyThatIsMissingIsReplacedByHelvetica) {
  const Typeface& missing = Typeface::forFamily(QStringLiteral("No Such Family"));
  const Typeface& helvetica = Typeface::forFamily(QStringLiteral("Helvetica"));
  EXPECT_EQ(missing.font().family(), helvetica.font().family());
}

TEST(Typeface, outlinesStandOnTheBaseline) {
  const QRectF box = Typeface::forFamily(QStringLiteral("Helvetica")).outline(QStringLiteral("H")).boundingRect();
  EXPECT_NEAR(box.bottom(), 0, 2);  // y downwards, so the foot of the H is at 0
  EXPECT_NEAR(box.top(), -729, 12); // Helvetica's cap height is 718, Nimbus Sans' 729
}

// Letters are put together from outlines that are found once: no line may look otherwise for that.
TEST(Typeface, drawsEveryLineAsQtDoes) {
  std::mt19937 random(3);
  QStringList lines{QStringLiteral("AVATAR To Wy"),
                    QStringLiteral("fi fl ffi ffl"),
                    QStringLiteral(" a  b "),
                    QStringLiteral("S0001 XX BHZ (10.01) (7.00)"),
                    QStringLiteral("Zürich 3° × 2, Tōhoku"),
                    QStringLiteral("a\tb")};
  for (int i = 0; i < 50; ++i) {
    QString& line = lines.emplace_back();
    for (int k = 0; k < 20; ++k)
      line += QChar(ushort(' ' + random() % 95));
  }
  for (const char* family : {"Helvetica", "Courier"}) {
    const Typeface& face = Typeface::forFamily(QLatin1String(family));
    for (const QString& line : lines) {
      QPainterPath expected;
      expected.addText(0, 0, face.font(), line);
      expected.setFillRule(Qt::WindingFill);
      EXPECT_EQ(face.outline(line), expected) << line.toStdString();
      const double width = QFontMetricsF(face.font()).horizontalAdvance(line);
      EXPECT_DOUBLE_EQ(face.advance(line) * Typeface::kDesignSize, width) << line.toStdString();
    }
  }
}

} // namespace
} // namespace xov
