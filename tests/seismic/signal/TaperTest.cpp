#include "XOV_Graphics/seismic/signal/Taper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace xov {
namespace {

using Values = std::vector<double>;

void expectNear(const Values& values, const Values& expected) {
  ASSERT_EQ(values.size(), expected.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (std::isnan(expected[i]))
      EXPECT_TRUE(std::isnan(values[i])) << i;
    else
      EXPECT_NEAR(values[i], expected[i], 1e-15) << i;
  }
}

TEST(ApplyTaper, risesAndFallsOverItsLength) {
  Values hann(7, 4);
  applyTaper(hann, 2);
  expectNear(hann, {0, 2, 4, 4, 4, 2, 0}); // ½ (1 - cos ½π) = ½
  Values cosine(7, 4);
  applyTaper(cosine, 2, TaperShape::Cosine);
  expectNear(cosine, {0, 4 * std::sqrt(0.5), 4, 4, 4, 4 * std::sqrt(0.5), 0}); // sin ¼π
}

TEST(ApplyTaper, takesLengthsBetweenSamples) {
  Values values(6, 1);
  applyTaper(values, 1.5);
  expectNear(values, {0, 0.75, 1, 1, 0.75, 0}); // at 2/3: ½ (1 - cos 120°)
}

TEST(ApplyTaper, ofMoreThanHalfIsOneOfHalf) {
  Values values(5, 1);
  applyTaper(values, 100);
  expectNear(values, {0, 0.5, 1, 0.5, 0});
  Values share(5, 1);
  applyTaperShare(share, 0.25);
  expectNear(share, {0, 1, 1, 1, 0});
}

TEST(ApplyTaper, treatsStretchesByThemselves) {
  const double gap = std::nan("");
  Values values{1, 1, 1, gap, 1, 1, 1, 1, 1, gap, 1};
  applyTaper(values, 2);
  expectNear(values, {0, 1, 0, gap, 0, 0.5, 1, 0.5, 0, gap, 1});
}

TEST(ApplyTaper, withoutLengthChangesNothing) {
  Values values{1, 2, 3};
  applyTaper(values, 0);
  applyTaper(values, -1);
  applyTaper(values, std::nan(""));
  expectNear(values, {1, 2, 3});
}

} // namespace
} // namespace xov
