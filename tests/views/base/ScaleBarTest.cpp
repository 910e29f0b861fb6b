#include "XOV_Graphics/views/base/ScaleBar.h"

#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

TEST(ScaleBar, showsTheLargestRoundNumberThatFits) {
  struct Case {
    double pointsPerUnit;
    double value;
    double length;
    const char* text;
  };
  // Of 30 points: 30 units, so 20; 60, so 50; 10 and 20 exactly; 0.3, so 0.2; 3 million, so 2 million.
  for (const Case& expected :
       {Case{1, 20, 20, "20 nm"}, Case{0.5, 50, 25, "50 nm"}, Case{3, 10, 30, "10 nm"}, Case{1.5, 20, 30, "20 nm"},
        Case{100, 0.2, 20, "0.2 nm"}, Case{1e-5, 2e6, 20, "2e6 nm"}, Case{3e9, 1e-8, 30, "1e-8 nm"}}) {
    const auto bar = scaleBar(expected.pointsPerUnit, 30, QStringLiteral("nm"));
    ASSERT_TRUE(bar) << expected.text;
    EXPECT_DOUBLE_EQ(bar->value, expected.value);
    EXPECT_NEAR(bar->length, expected.length, 1e-6);
    EXPECT_EQ(bar->text, QLatin1String(expected.text));
  }
}

TEST(ScaleBar, needsNoUnit) { EXPECT_EQ(scaleBar(1, 30, QString())->text, QStringLiteral("20")); }

TEST(ScaleBar, isNoneWhereThereIsNoScale) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double scale : {0.0, -1.0, kInfinity, std::numeric_limits<double>::quiet_NaN(), 1e-308, 1e-320})
    EXPECT_FALSE(scaleBar(scale, 30, QString())) << scale;
  EXPECT_FALSE(scaleBar(1, 0, QString()));
  EXPECT_FALSE(scaleBar(1, -3, QString()));
  EXPECT_FALSE(scaleBar(1e307, 0.3, QString())); // 3e-308, of which 1e-308 has not all digits
}

// 20 points up from (100, 50), with lines of 6 points across its ends; the text 6 points left of those, at half
// height.
TEST(ScaleBar, standsUprightBesideItsText) {
  RecordingContext recording;
  {
    GraphicsContext::Pass pass(recording);
    drawUprightBar(*scaleBar(1, 30, QStringLiteral("nm")), {100, 50});
  }
  ASSERT_EQ(recording.strokes().size(), 1U);
  EXPECT_EQ(recording.strokes()[0].path.shape().boundingRect(), QRectF(97, 50, 6, 20));
  ASSERT_EQ(recording.texts().size(), 1U);
  const RecordedItem text = recording.texts()[0];
  const QSizeF size = TextAttributes::helvetica(10).size(QStringLiteral("20 nm"));
  EXPECT_NEAR(text.position.x() + size.width(), 97 - 6, 1e-9);
  EXPECT_NEAR(text.position.y() + size.height() / 2, 60, 1e-9);
}

} // namespace
} // namespace xov
