#include "XOV_Graphics/seismic/signal/SymmetricMatrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace xov;

namespace {

Vector3 times(const SymmetricMatrix& m, const Vector3& v) {
  return {m.xx * v[0] + m.xy * v[1] + m.xz * v[2], m.xy * v[0] + m.yy * v[1] + m.yz * v[2],
          m.xz * v[0] + m.yz * v[1] + m.zz * v[2]};
}

} // namespace

// (2 1; 1 2) has 3 along (1, 1) and 1 along (1, -1); z stands for itself.
TEST(EigenPairs, areTheLargestFirst) {
  const auto pairs = eigenPairs({.xx = 2, .yy = 2, .zz = 5, .xy = 1});
  EXPECT_NEAR(pairs[0].value, 5, 1e-14);
  EXPECT_NEAR(std::abs(pairs[0].vector[2]), 1, 1e-14);
  EXPECT_NEAR(pairs[1].value, 3, 1e-14);
  EXPECT_NEAR(pairs[1].vector[0] * pairs[1].vector[1], 0.5, 1e-14);
  EXPECT_NEAR(pairs[2].value, 1, 1e-14);
  EXPECT_NEAR(pairs[2].vector[0] * pairs[2].vector[1], -0.5, 1e-14);
}

TEST(EigenPairs, solveTheMatrixWhateverItsScale) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> number(-1, 1);
  for (int i = 0; i < 300; ++i) {
    const double scale = std::pow(10.0, i % 3 == 0 ? 0 : (i % 3 == 1 ? 300 : -300));
    const auto next = [&] { return i % 7 == 0 && number(random) < 0 ? 0 : scale * number(random); };
    const SymmetricMatrix m{next(), next(), next(), next(), next(), next()};
    const auto pairs = eigenPairs(m);
    EXPECT_GE(pairs[0].value, pairs[1].value);
    EXPECT_GE(pairs[1].value, pairs[2].value);
    for (std::size_t k = 0; k < 3; ++k) {
      const Vector3 image = times(m, pairs[k].vector);
      for (std::size_t row = 0; row < 3; ++row)
        EXPECT_NEAR(image[row] / scale, pairs[k].value / scale * pairs[k].vector[row], 1e-13) << "case " << i;
      EXPECT_NEAR(dot(pairs[k].vector, pairs[k].vector), 1, 1e-13);
      EXPECT_NEAR(dot(pairs[k].vector, pairs[(k + 1) % 3].vector), 0, 1e-13);
    }
  }
}

TEST(EigenPairs, ofWhatIsNoNumberAreZerosAlongTheAxes) {
  for (const double odd : {std::nan(""), std::numeric_limits<double>::infinity(), 0.0}) {
    const auto pairs = eigenPairs({.yz = odd});
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_EQ(pairs[k].value, 0);
      EXPECT_EQ(pairs[k].vector[k], 1);
    }
  }
}
