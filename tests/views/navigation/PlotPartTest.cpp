#include "XOV_Graphics/views/base/PlotPart.h"

#include "NavigatedSection.h"

#include <limits>

namespace xov::testing {
namespace {

using Motion = PlotReach::Motion;
constexpr double kHuge = std::numeric_limits<double>::max();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kEndless = std::numeric_limits<double>::infinity();

TEST(PlotPart, zoomKeepsAValueAtItsShareOfTheSpan) {
  // 25 lies at a quarter of 0 … 100, and at a quarter of 50 units that begin 12.5 below it.
  expectSpan(zoomedSpan({0, 100}, 25, 0.5, Motion::Linear), 12.5, 62.5);
  expectSpan(zoomedSpan({0, 100}, kNotANumber, 0.5, Motion::Linear), 25, 75);
}

TEST(PlotPart, zoomOfALogarithmicSpanIsOneOfItsDecades) {
  // Half of the four decades 0.01 … 100 about 1 are 0.1 … 10; shifting by a quarter moves on by one decade.
  expectSpan(zoomedSpan({0.01, 100}, 1, 0.5, Motion::Logarithmic), 0.1, 10, 1e-9);
  expectSpan(shiftedSpan({0.01, 100}, 0.25, Motion::Logarithmic), 0.1, 1000, 1e-9);
  EXPECT_NEAR(shareOfSpan({0.01, 100}, 1, Motion::Logarithmic), 0.5, 1e-12);
}

TEST(PlotPart, aZoomThatIsNoneChangesNothing) {
  for (const double factor : {0.0, -1.0, kNotANumber})
    EXPECT_EQ(zoomedSpan({0, 100}, 25, factor, Motion::Linear), (PlotSpan{0, 100}));
  EXPECT_EQ(shiftedSpan({0, 100}, kNotANumber, Motion::Linear), (PlotSpan{0, 100}));
}

TEST(PlotPart, oneZoomIsAMillionMillionTimesAtMost) {
  expectSpan(zoomedSpan({0, 1e12}, 0, 1e-300, Motion::Linear), 0, 1);
  expectSpan(zoomedSpan({0, 1}, 0, 1e300, Motion::Linear), 0, 1e12);
}

PlotReach reachOf(const PlotSpan& whole, const PlotSpan& farthest, double least) {
  PlotReach reach;
  reach.setX(whole, farthest, false, least);
  reach.gain = true;
  return reach;
}

TEST(PlotPart, partsStayWithinReachAndAreNeitherTooNarrowNorTooWide) {
  const PlotReach reach = reachOf({0, 100}, {-50, 150}, 2);
  expectSpan(nearestPart(reach, {.x = {-80, -60}, .y = {}}).x, -50, -30); // moved inside
  expectSpan(nearestPart(reach, {.x = {140, 160}, .y = {}}).x, 130, 150);
  expectSpan(nearestPart(reach, {.x = {49.9, 50.1}, .y = {}}).x, 49, 51); // 2 wide about 50
  expectSpan(nearestPart(reach, {.x = {-1000, 1000}, .y = {}}).x, -50, 150);
}

TEST(PlotPart, noPartHasANumberlessOrEmptySpan) {
  const PlotReach reach = reachOf({0, 100}, {0, 100}, 0);
  for (const double lower : {0.0, 50.0, -kHuge, kHuge, kNotANumber, kEndless, -kEndless, 1e30}) {
    for (const double upper : {0.0, 50.0, -kHuge, kHuge, kNotANumber, kEndless, -kEndless, -1e30}) {
      const PlotPart part = nearestPart(reach, {.x = {lower, upper}, .y = {}, .gain = lower});
      EXPECT_GE(part.x.lower, 0) << lower << ' ' << upper;
      EXPECT_LE(part.x.upper, 100) << lower << ' ' << upper;
      EXPECT_GT(part.x.width(), 0) << lower << ' ' << upper;
      EXPECT_TRUE(part.gain >= kLeastGain && part.gain <= kLargestGain) << part.gain;
    }
  }
}

TEST(PlotPart, anAxisWithoutExtentDoesNotMove) {
  for (const PlotSpan& span :
       {PlotSpan{5, 5}, PlotSpan{0, kEndless}, PlotSpan{kNotANumber, 1}, PlotSpan{-kHuge, kHuge}})
    EXPECT_EQ(reachOf(span, span, 0).x, Motion::None);
}

TEST(PlotPart, anAxisMovesOnlyWhereBothTheWholeAndItsReachHaveAnExtent) {
  for (const PlotSpan& whole : {PlotSpan{0, 100}, PlotSpan{5, 5}}) {
    const PlotReach reach = reachOf(whole, whole.width() > 0 ? PlotSpan{0, kEndless} : PlotSpan{0, 100}, 1);
    EXPECT_EQ(reach.x, Motion::None) << whole.upper;
    EXPECT_EQ(reach.farthestX, whole);
    EXPECT_EQ(nearestPart(reach, {.x = {20, 30}, .y = {}}).x, whole);
  }
}

TEST(PlotPart, aSpanThatRunsDownwardsStaysSo) {
  const PlotReach reach = reachOf({100, 0}, {100, 0}, 1);
  EXPECT_EQ(reach.x, Motion::Linear);
  expectSpan(zoomedSpan({100, 0}, 25, 0.5, Motion::Linear), 62.5, 12.5);
  expectSpan(nearestPart(reach, {.x = {62.5, 12.5}, .y = {}}).x, 62.5, 12.5);
  expectSpan(nearestPart(reach, {.x = {120, 60}, .y = {}}).x, 100, 40);
}

TEST(PlotPart, whatLiesAMillionthBesideTheWholeIsTheWhole) {
  const PlotReach reach = reachOf({0, 100}, {-50, 150}, 1);
  EXPECT_EQ(nearestPart(reach, {.x = {1e-7, 100}, .y = {}, .gain = 1 + 1e-9}), reach.whole);
  EXPECT_NE(nearestPart(reach, {.x = {0.01, 100}, .y = {}}), reach.whole);
}

} // namespace
} // namespace xov::testing
