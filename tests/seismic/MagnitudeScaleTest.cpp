#include "XOV_Graphics/seismic/MagnitudeScale.h"

#include <gtest/gtest.h>

using namespace xov;

namespace {

HypocentreValues with(std::vector<EventMagnitude> magnitudes, std::optional<std::size_t> preferred = {}) {
  HypocentreValues values;
  setMagnitudes(values, std::move(magnitudes), preferred);
  return values;
}

} // namespace

TEST(MagnitudeScale, countsAllMomentMagnitudesAsMw) {
  for (const char* type : {"Mw", "MW", "mww", "Mwc", "Mwb", "Mwr", "Mwp", "Mw(mB)"})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Moment) << type;
}

TEST(MagnitudeScale, knowsSurfaceAndBodyWaveMagnitudes) {
  for (const char* type : {"Ms", "MS", "Msz", "MS_20", "ms7", "MsBB"})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Surface) << type;
  for (const char* type : {"mb", "mB", "MB", " mb "})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Body) << type;
}

TEST(MagnitudeScale, knowsLocalAndDurationMagnitudes) {
  for (const char* type : {"ML", "ml", "MLs", "MLv", "Mlr"})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Local) << type;
  for (const char* type : {"Md", "MD", "mc"})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Duration) << type;
}

TEST(MagnitudeScale, takesMagnitudesOfLgWavesForNeitherBodyWaveNorLocal) {
  for (const char* type : {"mb_Lg", "mbLg", "MLg"})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Other) << type;
}

TEST(MagnitudeScale, ofAnythingElseIsOther) {
  for (const char* type : {"", "M", "Mh", "Me", "K", "earthquake"})
    EXPECT_EQ(magnitudeScale(QString::fromLatin1(type)), MagnitudeScale::Other) << type;
}

TEST(Magnitudes, ofEachScaleComeThrough) {
  const HypocentreValues values = with({{"mb", 5.5F}, {"Ms_20", 6.25F}, {"Mwc", 6.5F}, {"ML", 5.75F}});
  EXPECT_EQ(values.mb, 5.5F);
  EXPECT_EQ(values.Ms, 6.25F);
  EXPECT_EQ(values.Mw, 6.5F);
  ASSERT_EQ(values.magnitudes.size(), 4U);
  EXPECT_EQ(values.magnitudes[3].type, QStringLiteral("ML"));
  EXPECT_EQ(values.magnitudes[3].value, 5.75F);
}

TEST(Magnitudes, ofOneScaleAreRepresentedByTheFirstOrThePreferred) {
  EXPECT_EQ(with({{"Mwc", 6.5F}, {"Mww", 6.75F}}).Mw, 6.5F);
  EXPECT_EQ(with({{"Mwc", 6.5F}, {"Mww", 6.75F}}, 1).Mw, 6.75F);
  EXPECT_EQ(with({{"Mwc", 6.5F}, {"mb", 6}, {"Mww", 6.75F}}, 1).Mw, 6.5F);
}

TEST(Magnitudes, thatAreNotThereAreUnset) {
  const HypocentreValues values = with({{"ML", 3}});
  EXPECT_EQ(values.mb, kUndefinedValue);
  EXPECT_EQ(values.Ms, kUndefinedValue);
  EXPECT_EQ(values.Mw, kUndefinedValue);
  EXPECT_EQ(with({}).preferredMagnitude, kUndefinedValue);
}

TEST(Magnitudes, withoutAPreferredOneStandInInAFixedOrder) {
  EXPECT_EQ(with({{"mb", 5}, {"Mw", 6}, {"Ms", 7}}).preferredMagnitude, 6);
  EXPECT_EQ(with({{"mb", 5}, {"Ms", 7}}).preferredMagnitude, 7);
  EXPECT_EQ(with({{"ML", 4}, {"mb", 5}}).preferredMagnitude, 5);
  EXPECT_EQ(with({{"Md", 3}, {"ML", 4}}).preferredMagnitude, 4);
  EXPECT_EQ(with({{"", 2}, {"Md", 3}}).preferredMagnitude, 3);
  EXPECT_EQ(with({{"Mh", 2}}).preferredMagnitude, 2);
  EXPECT_EQ(with({{"Mw", 6}, {"ML", 4}}, 1).preferredMagnitude, 4);
}
