#include "XOV_Graphics/views/base/Legend.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

const QRectF kFrame(100, 50, 400, 300);
const TextAttributes kFont = TextAttributes::helvetica(10);
const std::vector<LegendEntry> kTwo = {{QStringLiteral("one"), Qt::red}, {QStringLiteral("second"), Qt::blue}};

LegendLayout layOut(const std::vector<LegendEntry>& entries, LegendPlace place, const CoveredPart& covered = {}) {
  return layOutLegend(kFrame, entries, place, kFont, covered);
}

// Two rows of 14 points and the longer text, inside 6 points at all sides.
QSizeF sizeOfTwo() { return {6 + 20 + 6 + kFont.size(QStringLiteral("second")).width() + 6, 6 + 2 * 14 + 6}; }

} // namespace

TEST(Legend, standsSixPointsInsideTheCornerOfItsFrame) {
  const QSizeF size = sizeOfTwo();
  const double left = 106, right = 500 - 6 - size.width();
  const double low = 56, high = 350 - 6 - size.height();
  EXPECT_EQ(layOut(kTwo, LegendPlace::TopRight).box, QRectF(QPointF(right, high), size));
  EXPECT_EQ(layOut(kTwo, LegendPlace::TopLeft).box, QRectF(QPointF(left, high), size));
  EXPECT_EQ(layOut(kTwo, LegendPlace::BottomRight).box, QRectF(QPointF(right, low), size));
  EXPECT_EQ(layOut(kTwo, LegendPlace::BottomLeft).box, QRectF(QPointF(left, low), size));
}

TEST(Legend, hasItsRowsFromTheTopDown) {
  const LegendLayout legend = layOut(kTwo, LegendPlace::BottomLeft);
  ASSERT_EQ(legend.rows.size(), 2U);
  // The box reaches from 56 to 96: rows about 83 and 69, texts of 11.5 points.
  EXPECT_EQ(legend.rows[0].text, QStringLiteral("one"));
  EXPECT_EQ(legend.rows[0].sample, QLineF(112, 83, 132, 83));
  EXPECT_EQ(legend.rows[0].place, QPointF(138, 83 - 5.75));
  EXPECT_EQ(legend.rows[1].sample, QLineF(112, 69, 132, 69));
  EXPECT_EQ(legend.rows[1].color, QColor(Qt::blue));
}

TEST(Legend, takesTheCornerWhereItCoversLeast) {
  const auto placed = [](double topRight, double topLeft, double bottomRight, double bottomLeft) {
    return layOut(kTwo, LegendPlace::Best,
                  [=](const QRectF& box) {
                    const bool isLeft = box.x() == 106, isLow = box.y() == 56;
                    if (isLow) return isLeft ? bottomLeft : bottomRight;
                    return isLeft ? topLeft : topRight;
                  })
        .box;
  };
  EXPECT_EQ(placed(3, 2, 1, 2), layOut(kTwo, LegendPlace::BottomRight).box);
  EXPECT_EQ(placed(3, 2, 2, 3), layOut(kTwo, LegendPlace::TopLeft).box) << "the upper one among equals";
  EXPECT_EQ(placed(1, 1, 1, 1), layOut(kTwo, LegendPlace::TopRight).box);
  EXPECT_EQ(placed(3, 3, 3, 0), layOut(kTwo, LegendPlace::BottomLeft).box);
  EXPECT_EQ(layOut(kTwo, LegendPlace::Best).box, layOut(kTwo, LegendPlace::TopRight).box) << "nothing is known";
}

TEST(Legend, countsWhatItHasNoRoomFor) {
  const std::vector<LegendEntry> many(100, LegendEntry{QStringLiteral("station"), Qt::red});
  // (300 - 24) / 14 = 19.7: 18 entries and a row that counts the other 82.
  const LegendLayout legend = layOut(many, LegendPlace::TopRight);
  ASSERT_EQ(legend.rows.size(), 19U);
  EXPECT_EQ(legend.rows[17].text, QStringLiteral("station"));
  EXPECT_EQ(legend.rows[18].text, QStringLiteral("and 82 more"));
  EXPECT_FALSE(legend.rows[18].color);
}

TEST(Legend, cutsTextsThatAreWiderThanItsFrame) {
  const LegendLayout legend = layOut({{QString(500, QLatin1Char('M')), Qt::red}}, LegendPlace::TopLeft);
  ASSERT_EQ(legend.rows.size(), 1U);
  EXPECT_TRUE(legend.rows[0].text.endsWith(QStringLiteral("M...")));
  EXPECT_LE(legend.box.right(), 494);
  EXPECT_GT(legend.box.right(), 480);
}

TEST(Legend, leavesFramesWithoutRoomAlone) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const QRectF& frame : {QRectF(0, 0, 400, 30), QRectF(0, 0, 40, 300), QRectF(0, 0, -50, -50),
                              QRectF(0, 0, kInfinity - kInfinity, kInfinity - kInfinity)})
    EXPECT_TRUE(layOutLegend(frame, kTwo, LegendPlace::Best, kFont, {}).rows.empty());
  EXPECT_TRUE(layOut({}, LegendPlace::Best).rows.empty());
}

TEST(Legend, isDrawnOnWhiteInItsColours) {
  RecordingContext recording;
  {
    GraphicsContext::Pass pass(recording);
    drawLegend(layOut(kTwo, LegendPlace::TopLeft), kFont, 0.5);
    drawLegend(LegendLayout(), kFont, 0.5);
  }
  ASSERT_EQ(recording.fills().size(), 1U);
  EXPECT_EQ(recording.fills()[0].color.rgb(), colors::white.rgb());
  const auto strokes = recording.strokes();
  ASSERT_EQ(strokes.size(), 3U) << "outline and two samples";
  EXPECT_EQ(strokes[1].color, QColor(Qt::red));
  EXPECT_EQ(strokes[2].color, QColor(Qt::blue));
  EXPECT_EQ(strokes[2].path.lineWidth(), 1.5) << "so that its colour shows";
  EXPECT_EQ(recording.texts().size(), 2U);
}

} // namespace xov
