#include "apps/xov/output/PlotSize.h"

#include <gtest/gtest.h>

#include <QSizeF>

namespace xov::cli {
namespace {

TEST(PlotSize, aNumberAloneCountsPoints) {
  const auto length = parsedLength(QStringLiteral("600"));
  ASSERT_TRUE(length);
  EXPECT_EQ(length->points, 600);
  EXPECT_FALSE(length->hasUnit);
}

TEST(PlotSize, unitsAreTurnedIntoPoints) {
  struct Case {
    const char* text;
    double points;
  };
  // 1 in = 72 pt = 2.54 cm.
  for (const Case& row : {Case{"6in", 432}, Case{"2.54cm", 72}, Case{"25.4mm", 72}, Case{"16cm", 16 / 2.54 * 72},
                          Case{"450pt", 450}, Case{"1e1mm", 10 / 25.4 * 72}, Case{"6IN", 432}}) {
    const auto length = parsedLength(QLatin1String(row.text));
    ASSERT_TRUE(length) << row.text;
    EXPECT_NEAR(length->points, row.points, 1e-9) << row.text;
    EXPECT_TRUE(length->hasUnit) << row.text;
  }
}

TEST(PlotSize, whatIsNoLengthIsNone) {
  for (const char* text : {"", "cm", "6inch", "6 feet", "16cmcm", "nan", "infcm", "0x10", "12a"})
    EXPECT_FALSE(parsedLength(QLatin1String(text))) << text;
}

TEST(PlotSize, widthAndHeightHaveAUnitBothOrNone) {
  EXPECT_EQ(*parsedSize(QStringLiteral("6in"), QStringLiteral("288pt")), QSizeF(432, 288));
  EXPECT_EQ(*parsedSize(QStringLiteral("600"), QStringLiteral("400")), QSizeF(600, 400));
  EXPECT_EQ(parsedSize(QStringLiteral("6"), QStringLiteral("4in")).error(),
            QStringLiteral("found '6 4in', expected a unit at both or at none"));
  EXPECT_EQ(parsedSize(QStringLiteral("6in"), QStringLiteral("4")).error(),
            QStringLiteral("found '6in 4', expected a unit at both or at none"));
}

TEST(PlotSize, sidesHaveOneToTwentyThousandPoints) {
  EXPECT_TRUE(parsedSize(QStringLiteral("1"), QStringLiteral("20000")));
  for (const char* side : {"0", "-5cm", "0.1mm", "20001", "300in", "1e300cm"}) {
    const auto size = parsedSize(QStringLiteral("100"), QLatin1String(side));
    EXPECT_TRUE(size.error().startsWith(QStringLiteral("found '%1', expected 1 to 20000 points").arg(side))) << side;
    EXPECT_FALSE(parsedSize(QLatin1String(side), QStringLiteral("100"))) << side;
  }
}

} // namespace
} // namespace xov::cli
