#include "XOV_Graphics/seismic/signal/Butterworth.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov {
namespace {

using std::numbers::pi;

/// The gain of a digital Butterworth filter by its definition: 1/√(1 + x^2n), where x is the prototype's frequency
/// and tangents of half the digital frequencies stand for the analogue ones.
double gainByDefinition(const ButterworthFilter& filter, double hz, double interval) {
  const double f = std::tan(pi * hz * interval);
  const double low = std::tan(pi * filter.lowHz * interval);
  const double high = std::tan(pi * filter.highHz * interval);
  double x = 0;
  switch (filter.band) {
  case FilterBand::LowPass:
    x = f / high;
    break;
  case FilterBand::HighPass:
    x = low / f;
    break;
  case FilterBand::BandPass:
    x = (f * f - low * high) / (f * (high - low));
    break;
  case FilterBand::BandStop:
    x = f * (high - low) / (f * f - low * high);
    break;
  }
  return 1 / std::sqrt(1 + std::pow(x, 2 * filter.order));
}

std::vector<Biquad> sectionsOf(const ButterworthFilter& filter, double interval) {
  const Result<std::vector<Biquad>> sections = designButterworth(filter, interval);
  EXPECT_TRUE(sections) << sections.error().toStdString();
  return *sections;
}

double gain(const std::vector<Biquad>& sections, double hz, double interval) {
  return std::abs(responseOf(sections, 2 * pi * hz * interval));
}

TEST(Butterworth, lowPassAtAQuarterOfTheSamplingRateIsThatOfTheBooks) {
  // tan ¼π = 1, so the denominator 1 + √2 s + s² gives (2 + √2) + (2 - √2) z⁻², and the numerator (1 + z⁻¹)².
  const std::vector<Biquad> sections = sectionsOf(ButterworthFilter::lowPass(25, 2), 0.01);
  ASSERT_EQ(sections.size(), 1U);
  const double scale = 1 / (2 + std::sqrt(2));
  EXPECT_NEAR(sections[0].b0, scale, 1e-15);
  EXPECT_NEAR(sections[0].b1, 2 * scale, 1e-15);
  EXPECT_NEAR(sections[0].b2, scale, 1e-15);
  EXPECT_NEAR(sections[0].a1, 0, 1e-15);
  EXPECT_NEAR(sections[0].a2, (2 - std::sqrt(2)) * scale, 1e-15);
}

TEST(Butterworth, ofFirstOrderIsThatOfTheBooks) {
  // With t = tan(π · 10 Hz · 0.01 s): t (1 + z⁻¹) / ((1 + t) - (1 - t) z⁻¹), and (1 - z⁻¹) / the same.
  const double t = std::tan(0.1 * pi);
  const std::vector<Biquad> low = sectionsOf(ButterworthFilter::lowPass(10, 1), 0.01);
  ASSERT_EQ(low.size(), 1U);
  EXPECT_NEAR(low[0].b0, t / (1 + t), 1e-15);
  EXPECT_NEAR(low[0].b1, t / (1 + t), 1e-15);
  EXPECT_EQ(low[0].b2, 0);
  EXPECT_NEAR(low[0].a1, -(1 - t) / (1 + t), 1e-15);
  EXPECT_EQ(low[0].a2, 0);
  const std::vector<Biquad> high = sectionsOf(ButterworthFilter::highPass(10, 1), 0.01);
  EXPECT_NEAR(high[0].b0, 1 / (1 + t), 1e-15);
  EXPECT_NEAR(high[0].b1, -1 / (1 + t), 1e-15);
}

TEST(Butterworth, hasTheGainOfItsDefinitionInEveryBandAndOrder) {
  for (int order = 1; order <= kMostFilterOrder; ++order) {
    for (const ButterworthFilter& filter :
         {ButterworthFilter::lowPass(3, order), ButterworthFilter::highPass(3, order),
          ButterworthFilter::bandPass(2, 9, order), ButterworthFilter::bandStop(2, 9, order),
          ButterworthFilter::bandPass(0.5, 24, order)}) {
      const std::vector<Biquad> sections = sectionsOf(filter, 0.02);
      for (double hz = 0.25; hz < 25; hz += 0.25)
        ASSERT_NEAR(gain(sections, hz, 0.02), gainByDefinition(filter, hz, 0.02), 1e-9)
            << "band " << int(filter.band) << ", order " << order << ", at " << hz << " Hz";
    }
  }
}

TEST(Butterworth, doesNotTurnWhatPassesUpsideDown) {
  for (const int order : {1, 2, 3, 4, 5}) {
    EXPECT_NEAR(responseOf(sectionsOf(ButterworthFilter::lowPass(3, order), 0.02), 0).real(), 1, 1e-12);
    EXPECT_NEAR(responseOf(sectionsOf(ButterworthFilter::highPass(3, order), 0.02), pi).real(), 1, 1e-12);
    EXPECT_NEAR(responseOf(sectionsOf(ButterworthFilter::bandStop(3, 6, order), 0.02), 0).real(), 1, 1e-12);
    const double middle = 2 * std::atan(std::sqrt(std::tan(pi * 0.06) * std::tan(pi * 0.12)));
    EXPECT_NEAR(responseOf(sectionsOf(ButterworthFilter::bandPass(3, 6, order), 0.02), middle).real(), 1, 1e-12);
  }
}

// Both roots of z² + a1 z + a2 lie inside the unit circle where |a2| < 1 and |a1| < 1 + a2.
TEST(Butterworth, isStableFromTheLowestCornerToTheHighest) {
  for (const double corner : {1.0001e-6, 1e-4, 0.01, 0.25, 0.49, 0.499999}) {
    for (const int order : {1, 2, 7, kMostFilterOrder}) {
      for (const ButterworthFilter& filter :
           {ButterworthFilter::lowPass(corner, order), ButterworthFilter::highPass(corner, order),
            ButterworthFilter::bandPass(corner, corner + (0.5 - corner) / 2, order),
            ButterworthFilter::bandStop(corner, corner + (0.5 - corner) / 2, order)}) {
        for (const Biquad& section : sectionsOf(filter, 1)) {
          ASSERT_LT(std::abs(section.a2), 1) << corner << ", order " << order;
          ASSERT_LT(std::abs(section.a1), 1 + section.a2) << corner << ", order " << order;
        }
      }
    }
  }
}

TEST(Butterworth, refusesFiltersThatCannotBe) {
  const auto refusal = [](const ButterworthFilter& filter, double interval) {
    return designButterworth(filter, interval).error().toStdString();
  };
  const char* const above = "found a corner of 50 Hz, expected one above 0 and below 50 Hz, half the sampling rate";
  EXPECT_EQ(refusal(ButterworthFilter::lowPass(50), 0.01), above);
  EXPECT_EQ(refusal(ButterworthFilter::bandPass(1, 50), 0.01), above);
  EXPECT_EQ(refusal(ButterworthFilter::highPass(0), 0.01),
            "found a corner of 0 Hz, expected one above 0 and below 50 Hz, half the sampling rate");
  EXPECT_EQ(refusal(ButterworthFilter::lowPass(std::nan("")), 0.01),
            "found a corner of nan Hz, expected one above 0 and below 50 Hz, half the sampling rate");
  EXPECT_EQ(refusal(ButterworthFilter::bandPass(4, 4), 0.01),
            "found corners of 4 and 4 Hz, expected the lower one first");
  EXPECT_EQ(refusal(ButterworthFilter::lowPass(1, 0), 0.01), "found a filter of order 0, expected 1 to 20");
  EXPECT_EQ(refusal(ButterworthFilter::lowPass(1, 21), 0.01), "found a filter of order 21, expected 1 to 20");
  EXPECT_EQ(refusal(ButterworthFilter::lowPass(1), 0), "found a sample interval of 0 s, expected more than 0");
  EXPECT_EQ(refusal(ButterworthFilter::highPass(0.00001), 0.01),
            "found a corner of 1e-05 Hz, expected 0.0001 Hz or more at this sampling rate");
}

} // namespace
} // namespace xov
