#include "XOV_Graphics/seismic/prepare/ParticleMotion.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using Floats = std::vector<float>;

std::shared_ptr<SeismogramRecord> component(const char* code, float begin, Floats samples,
                                            float azimuth = kUndefinedValue) {
  SacHeader header = *makeRecord({.component = code, .begin = begin, .interval = 1})->GetSacHeader();
  header.cmpaz = azimuth;
  header.e = kUndefinedValue;
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

// The vertical component begins a second later, the east one ends a second earlier: three samples are common.
TEST(ParticleMotion, isWhatTheComponentsHaveInCommonWithoutItsMeans) {
  const auto motion = particleMotionOf(
      {component("BHZ", 1, {1, 2, 3, 9}), component("BHN", 0, {7, 4, 4, 4, 9}), component("BHE", 0, {7, 1, 0, -1})});
  ASSERT_TRUE(motion) << motion.error().toStdString();
  EXPECT_EQ(*motion->samples[0], Floats({-1, 0, 1}));
  EXPECT_EQ(*motion->samples[1], Floats({0, 0, 0}));
  EXPECT_EQ(*motion->samples[2], Floats({1, 0, -1}));
  EXPECT_EQ(motion->names[2], QStringLiteral("BHE"));
  EXPECT_EQ(motion->firstAzimuthDeg, 0);
}

TEST(ParticleMotion, hasTheSecondHorizontalComponentClockwiseFromTheFirst) {
  const auto motion = particleMotionOf(
      {component("BHZ", 0, {0, 1}), component("BH1", 0, {0, 2}, 110), component("BH2", 0, {0, 4}, 20)});
  ASSERT_TRUE(motion) << motion.error().toStdString();
  EXPECT_EQ(motion->names[1], QStringLiteral("BH2"));
  EXPECT_EQ(motion->firstAzimuthDeg, 20);
  EXPECT_EQ(*motion->samples[1], Floats({-2, 2}));
  const auto radial = particleMotionOf(
      {component("BHZ", 0, {0, 1}), component("BHR", 0, {0, 2}, 350), component("BHT", 0, {0, 4}, 80)});
  ASSERT_TRUE(radial);
  EXPECT_EQ(radial->names[1], QStringLiteral("BHR"));
}

TEST(ParticleMotion, refusesWhatMakesNoPath) {
  const auto vertical = component("BHZ", 0, {0, 1});
  const auto north = component("BHN", 0, {0, 1});
  EXPECT_TRUE(
      particleMotionOf({vertical, north, nullptr}).error().contains(QStringLiteral("found 2 of the components")));
  EXPECT_TRUE(particleMotionOf({vertical, north, component("BH2", 0, {0, 1}, 60)})
                  .error()
                  .contains(QStringLiteral("with the azimuths 0 and 60, expected a right angle")));
  EXPECT_TRUE(particleMotionOf({vertical, north, component("BH2", 0, {0, 1})})
                  .error()
                  .contains(QStringLiteral("no azimuth")));
  EXPECT_TRUE(particleMotionOf({vertical, north, component("BHE", 50, {0, 1})})
                  .error()
                  .contains(QStringLiteral("no time that all components have")));
  EXPECT_FALSE(particleMotionOf({}));
}

} // namespace
} // namespace xov
