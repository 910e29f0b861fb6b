#include "XOV_Graphics/seismic/signal/BiquadCascade.h"

#include "XOV_Graphics/seismic/signal/Butterworth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace xov {
namespace {

using Values = std::vector<double>;

/// -8 ... 8 in no order: (7i² + 3i) mod 17 - 8.
Values mixed(int count = 64) {
  Values values;
  for (int i = 0; i < count; ++i)
    values.push_back((i * i * 7 + 3 * i) % 17 - 8);
  return values;
}

std::vector<Biquad> sectionsOf(const ButterworthFilter& filter) { return *designButterworth(filter, 0.05); }

Values filtered(Values values, const ButterworthFilter& filter, FilterPhase phase) {
  applyFilter(values, sectionsOf(filter), phase);
  return values;
}

TEST(BiquadCascade, isItsDifferenceEquation) {
  // y[n] = x[n] + 2 x[n-1] + 3 x[n-2] + y[n-1]/2 - y[n-2]/4, of 1 0 0 0: 1, 5/2, 3 + 5/4 - 1/4 = 4, 2 - 5/8 = 11/8.
  BiquadCascade one({{1, 2, 3, -0.5, 0.25}});
  Values values{1, 0, 0, 0};
  one.filter(values);
  EXPECT_EQ(values, (Values{1, 2.5, 4, 1.375}));
  // Behind another one, y[n] = x[n] - x[n-1].
  BiquadCascade two({{1, 2, 3, -0.5, 0.25}, {1, -1, 0, 0, 0}});
  values = {1, 0, 0, 0};
  two.filter(values);
  EXPECT_EQ(values, (Values{1, 1.5, 1.5, -2.625}));
}

TEST(BiquadCascade, filtersASignalPieceByPiece) {
  for (const int order : {1, 2, 3, 4, 6, 9, 20}) {
    const std::vector<Biquad> sections = sectionsOf(ButterworthFilter::bandPass(1, 3, order));
    Values whole = mixed(5000);
    BiquadCascade(sections).filter(whole);
    Values pieces = mixed(5000);
    BiquadCascade cascade(sections);
    for (std::size_t i = 0; i < 5000; i += 625)
      cascade.filter(std::span(pieces).subspan(i, 625));
    EXPECT_EQ(pieces, whole) << order;
    // One section after the other over the whole signal is the same filter.
    Values slow = mixed(5000);
    for (const Biquad& section : sections)
      BiquadCascade({section}).filter(slow);
    EXPECT_EQ(slow, whole) << order;
  }
}

TEST(BiquadCascade, runsBackwards) {
  Values forward = mixed();
  Values backward = mixed();
  std::ranges::reverse(backward);
  BiquadCascade(sectionsOf(ButterworthFilter::lowPass(2, 5))).filter(forward);
  BiquadCascade(sectionsOf(ButterworthFilter::lowPass(2, 5))).filterBackwards(backward);
  std::ranges::reverse(backward);
  EXPECT_EQ(backward, forward);
}

TEST(BiquadCascade, goesOnFromASteadyValue) {
  Values values(50, 7);
  BiquadCascade cascade(sectionsOf(ButterworthFilter::lowPass(0.5, 5)));
  cascade.steadyAt(7);
  cascade.filter(values);
  for (const double value : values)
    ASSERT_NEAR(value, 7, 1e-10);
}

TEST(BiquadCascade, fadesAwayToNothing) {
  Values values(100000);
  values[0] = 1;
  BiquadCascade(sectionsOf(ButterworthFilter::lowPass(2))).filter(values);
  EXPECT_NE(values[100], 0);
  EXPECT_EQ(values.back(), 0) << "not the smallest number there is";
}

// Samples 0, 10, 40 and 63, filtered by scipy.signal 1.10 (butter, sosfilt, sosfiltfilt) at 20 Hz.
TEST(ApplyFilter, agreesWithScipy) {
  struct Row {
    ButterworthFilter filter;
    Values causal;
    Values zeroPhase;
  };
  const Row rows[] = {
      {ButterworthFilter::bandPass(1, 3, 3),
       {-0.14479146406011556, 1.4739822688136597, 3.856939728422069, -3.401790309163868},
       {-0.33421786726423186, 4.768738300995402, 0.6415337031669339, 0.5661736184793087}},
      {ButterworthFilter::lowPass(2, 5),
       {-0.010260648631685484, -2.1940613506725666, -5.4852898801083025, 2.488891704579672},
       {-7.990517050035933, 5.794887283648657, 1.408411331892253, -1.1130930538435595}},
      {ButterworthFilter::highPass(0.5, 4),
       {-6.51403645508997, 2.4249965178184443, 11.428295538969211, -7.14448652107083},
       {0.3039122240788106, 8.796835167317784, 7.116877052358066, 0.45950979055306895}},
      {ButterworthFilter::bandStop(1, 3, 2),
       {-5.111564201272178, 0.7256886133523424, 3.4663211725708587, -1.6581108935668851},
       {-7.82467038086052, 3.4099974195390694, 6.520454227718523, -1.0877257142268197}},
  };
  for (const Row& row : rows) {
    const Values causal = filtered(mixed(), row.filter, FilterPhase::Causal);
    const Values zeroPhase = filtered(mixed(), row.filter, FilterPhase::Zero);
    std::size_t k = 0;
    for (const std::size_t i : {0U, 10U, 40U, 63U}) {
      EXPECT_NEAR(causal[i], row.causal[k], 1e-11) << int(row.filter.band) << ", sample " << i;
      EXPECT_NEAR(zeroPhase[i], row.zeroPhase[k], 1e-11) << int(row.filter.band) << ", sample " << i;
      ++k;
    }
  }
}

TEST(ApplyFilter, leavesAPulseWhereItIsWithZeroPhaseOnly) {
  Values pulse;
  for (int i = 0; i < 400; ++i)
    pulse.push_back(std::exp(-std::pow((i - 150) / 8.0, 2)));
  const auto peak = [](const Values& values) { return std::ranges::max_element(values) - values.begin(); };
  EXPECT_EQ(peak(filtered(pulse, ButterworthFilter::lowPass(0.5), FilterPhase::Zero)), 150);
  EXPECT_GT(peak(filtered(pulse, ButterworthFilter::lowPass(0.5), FilterPhase::Causal)), 160);
}

TEST(ApplyFilter, knowsNoTransientOfALevelWithZeroPhase) {
  for (const double value : filtered(Values(200, 1000), ButterworthFilter::highPass(0.1), FilterPhase::Zero))
    ASSERT_NEAR(value, 0, 1e-8);
  for (const double value : filtered(Values(200, 1000), ButterworthFilter::lowPass(0.1), FilterPhase::Zero))
    ASSERT_NEAR(value, 1000, 1e-4);
}

TEST(ApplyFilter, treatsStretchesByThemselves) {
  const Values part = mixed(30);
  Values both = part;
  both.push_back(std::nan(""));
  both.push_back(HUGE_VAL);
  both.insert(both.end(), part.begin(), part.end());
  for (const FilterPhase phase : {FilterPhase::Causal, FilterPhase::Zero}) {
    const Values alone = filtered(part, ButterworthFilter::bandPass(1, 3), phase);
    const Values together = filtered(both, ButterworthFilter::bandPass(1, 3), phase);
    EXPECT_EQ(Values(together.begin(), together.begin() + 30), alone);
    EXPECT_TRUE(std::isnan(together[30]));
    EXPECT_EQ(together[31], HUGE_VAL);
    EXPECT_EQ(Values(together.begin() + 32, together.end()), alone);
  }
}

TEST(ApplyFilter, takesStretchesOfOneSample) {
  const Values single = filtered({5}, ButterworthFilter::lowPass(1), FilterPhase::Zero);
  EXPECT_NEAR(single[0], 5, 1e-9);
  EXPECT_TRUE(filtered({}, ButterworthFilter::lowPass(1), FilterPhase::Zero).empty());
}

} // namespace
} // namespace xov
