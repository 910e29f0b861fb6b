#include "XOV_Graphics/seismic/prepare/Rotation.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov {
namespace {

using Floats = std::vector<float>;

double cosine(double degrees) { return std::cos(degrees * std::numbers::pi / 180); }
double sine(double degrees) { return std::sin(degrees * std::numbers::pi / 180); }

struct Fields {
  const char* component = "BHZ";
  float begin = 0;
  float interval = 1;
  float azimuth = kUndefinedValue;
  float backAzimuth = kUndefinedValue;
  const char* station = "TLY";
};

std::shared_ptr<SeismogramRecord> component(const Fields& fields, Floats samples) {
  SacHeader header = *makeRecord({.station = fields.station,
                                  .component = fields.component,
                                  .begin = fields.begin,
                                  .interval = fields.interval})
                          ->GetSacHeader();
  header.cmpaz = fields.azimuth;
  header.baz = fields.backAzimuth;
  header.e = kUndefinedValue;
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

/// A ground that moves by 1 in that direction, seen by Z, N and E.
ThreeComponents motion(double azimuthDeg, double fromVerticalDeg) {
  const double flat = sine(fromVerticalDeg);
  return {component({.component = "BHZ"}, {float(cosine(fromVerticalDeg))}),
          component({.component = "BHN"}, {float(flat * cosine(azimuthDeg))}),
          component({.component = "BHE"}, {float(flat * sine(azimuthDeg))})};
}

float only(const std::shared_ptr<SeismogramRecord>& record) { return record->GetSacSeis()[0]; }

TEST(Rotated, hasAWaveFromTheEventOnRAlone) {
  for (const double backAzimuth : {0.0, 30.0, 90.0, 135.0, 250.0, 359.0}) {
    // Away from the event, level.
    const auto turned = rotated(motion(backAzimuth + 180, 90), WaveAxes::ZRT, {.backAzimuthDeg = backAzimuth});
    ASSERT_TRUE(turned) << turned.error().toStdString();
    EXPECT_NEAR(only((*turned)[0]), 0, 1e-6);
    EXPECT_NEAR(only((*turned)[1]), 1, 1e-6) << backAzimuth;
    EXPECT_NEAR(only((*turned)[2]), 0, 1e-6) << backAzimuth;
    // To the right of that.
    const auto across = rotated(motion(backAzimuth + 270, 90), WaveAxes::ZRT, {.backAzimuthDeg = backAzimuth});
    EXPECT_NEAR(only((*across)[1]), 0, 1e-6) << backAzimuth;
    EXPECT_NEAR(only((*across)[2]), 1, 1e-6) << backAzimuth;
  }
}

TEST(Rotated, hasPOnLAloneAndSvOnQ) {
  const WaveDirection direction{.backAzimuthDeg = 40, .incidenceDeg = 25};
  const auto p = rotated(motion(220, 25), WaveAxes::LQT, direction);
  ASSERT_TRUE(p);
  EXPECT_NEAR(only((*p)[0]), 1, 1e-6);
  EXPECT_NEAR(only((*p)[1]), 0, 1e-6);
  EXPECT_NEAR(only((*p)[2]), 0, 1e-6);
  const auto sv = rotated(motion(40, 65), WaveAxes::LQT, direction);
  EXPECT_NEAR(only((*sv)[0]), 0, 1e-6);
  EXPECT_NEAR(only((*sv)[1]), 1, 1e-6);
  EXPECT_NEAR(only((*sv)[2]), 0, 1e-6);
}

TEST(Rotated, tellsWhatTheNewComponentsAre) {
  const auto turned = rotated(motion(0, 90), WaveAxes::LQT, {.backAzimuthDeg = 200, .incidenceDeg = 20});
  ASSERT_TRUE(turned);
  const char* const codes[] = {"BHL", "BHQ", "BHT"};
  const float azimuths[] = {20, 200, 110};
  const float inclinations[] = {20, 70, 90};
  for (std::size_t k = 0; k < 3; ++k) {
    const SacHeader& header = *(*turned)[k]->GetSacHeader();
    EXPECT_EQ((*turned)[k]->kcmpnm().toStdString(), codes[k]);
    EXPECT_FLOAT_EQ(header.cmpaz, azimuths[k]);
    EXPECT_FLOAT_EQ(header.cmpinc, inclinations[k]);
  }
  EXPECT_EQ((*rotated(motion(0, 90), WaveAxes::ZRT, {.backAzimuthDeg = 200}))[1]->kcmpnm().toStdString(), "BHR");
}

TEST(Rotated, takesComponentsOfAnyAzimuth) {
  // A ground that moves to azimuth 75, seen by components at 30 and 120 degrees; the event lies at 255 degrees.
  const ThreeComponents components{
      nullptr, component({.component = "BH1", .azimuth = 30, .backAzimuth = 255}, {float(cosine(75 - 30))}),
      component({.component = "BH2", .azimuth = 120}, {float(cosine(75 - 120))})};
  const auto turned = rotated(components, WaveAxes::ZRT);
  ASSERT_TRUE(turned) << turned.error().toStdString();
  EXPECT_EQ((*turned)[0], nullptr);
  EXPECT_NEAR(only((*turned)[1]), 1, 1e-6);
  EXPECT_NEAR(only((*turned)[2]), 0, 1e-6);
}

TEST(Rotated, countsFromTheCommonTimeOn) {
  const ThreeComponents components{component({.component = "BHZ", .begin = 1}, {10, 11, 12, 13, 14}),
                                   component({.component = "BHN", .begin = 3}, {-3, -4, -5, -6}),
                                   component({.component = "BHE", .begin = 2.05F}, {2, 3, 4, NAN})};
  const auto turned = rotated(components, WaveAxes::ZRT, {.backAzimuthDeg = 0});
  ASSERT_TRUE(turned) << turned.error().toStdString();
  EXPECT_EQ(test::copiedSamples(*(*turned)[0]), (Floats{12, 13, 14}));
  EXPECT_EQ(test::copiedSamples(*(*turned)[1]), (Floats{3, 4, 5})) << "R = -N, which has no gap";
  EXPECT_EQ((*turned)[2]->GetSacSeis()[0], -3) << "T = -E";
  EXPECT_TRUE(std::isnan((*turned)[2]->GetSacSeis()[2]));
  EXPECT_EQ((*turned)[0]->b(), 3);
  EXPECT_EQ((*turned)[1]->b(), 3);
  EXPECT_FLOAT_EQ((*turned)[2]->b(), 3.05F);
}

TEST(Rotated, refusesWhatDoesNotFit) {
  const auto refusal = [](const ThreeComponents& components, WaveAxes axes = WaveAxes::ZRT) {
    return rotated(components, axes, {.backAzimuthDeg = 10}).error().toStdString();
  };
  const auto n = component({.component = "BHN"}, {1, 2, 3});
  const auto e = component({.component = "BHE"}, {1, 2, 3});
  EXPECT_EQ(refusal({nullptr, n, nullptr}), "II.TLY..BHN: found 1 of the components, expected two horizontal ones");
  EXPECT_EQ(refusal({}), "found 0 of the components, expected two horizontal ones");
  EXPECT_EQ(refusal({nullptr, n, e}, WaveAxes::LQT),
            "II.TLY..BHN: found 2 of the components, expected a vertical and two horizontal ones");
  EXPECT_EQ(refusal({nullptr, n, component({.component = "BHE", .interval = 2}, {1, 2, 3})}),
            "II.TLY..BHE: found a sample interval of 2 s, expected the 1 s of II.TLY..BHN");
  EXPECT_EQ(refusal({nullptr, n, component({.component = "BHE", .begin = 0.5F}, {1, 2, 3})}),
            "II.TLY..BHE: found samples 0.5 s beside those of II.TLY..BHN, expected them at the same times");
  EXPECT_EQ(refusal({nullptr, n, component({.component = "BHE", .begin = 3}, {1, 2, 3})}),
            "II.TLY..BHN: found no time that all components have, expected one");
  EXPECT_EQ(refusal({nullptr, n, component({.component = "BH2"}, {1, 2, 3})}),
            "II.TLY..BH2: found no azimuth of the component, expected one, or a code ending in N or E");
  EXPECT_EQ(refusal({nullptr, n, component({.component = "BHE", .azimuth = 180}, {1, 2, 3})}),
            "II.TLY..BHN: found components with the azimuths 0 and 180, expected an angle");
  EXPECT_EQ(rotated({nullptr, n, e}, WaveAxes::ZRT).error().toStdString(),
            "II.TLY..BHN: found no back azimuth, expected the places of station and event");
}

TEST(RotatedRecords, rotatesEachStationAndPieceInItsPlace) {
  const Floats three{1, 2, 3};
  const auto z = component({.component = "BHZ"}, three);
  const auto other = component({.component = "BHZ", .station = "ULN"}, three);
  const SeismogramArray records{z,
                                component({.component = "BHN", .backAzimuth = 0}, three),
                                component({.component = "BHN", .begin = 100, .backAzimuth = 0}, {7, 8}),
                                component({.component = "BHE", .begin = 100, .backAzimuth = 0}, {5, 6}),
                                component({.component = "BHE", .backAzimuth = 0}, three),
                                other};
  const RotatedRecords turned = rotatedRecords(records, WaveAxes::ZRT);
  ASSERT_EQ(turned.records.size(), 6U);
  EXPECT_EQ(turned.records[0], z);
  EXPECT_EQ(turned.records[1]->kcmpnm().toStdString(), "BHR");
  EXPECT_EQ(test::copiedSamples(*turned.records[1]), (Floats{-1, -2, -3}));
  EXPECT_EQ(test::copiedSamples(*turned.records[2]), (Floats{-7, -8}));
  EXPECT_EQ(test::copiedSamples(*turned.records[3]), (Floats{-5, -6}));
  EXPECT_EQ(turned.records[4]->kcmpnm().toStdString(), "BHT");
  EXPECT_EQ(turned.records[5], other);
  EXPECT_EQ(turned.notes.join(u'\n').toStdString(),
            "II.ULN..BH?: found no components of one time to rotate, expected N and E");
}

TEST(RotatedRecords, keepsWhatItCannotRotateWithANote) {
  const SeismogramArray records{component({.component = "BHN"}, {1, 2}), component({.component = "BHE"}, {1, 2}),
                                component({.component = "BHZ"}, {1, 2}), component({.component = "HDF"}, {1, 2})};
  const RotatedRecords turned = rotatedRecords(records, WaveAxes::LQT);
  EXPECT_EQ(turned.records, records);
  EXPECT_EQ(turned.notes.join(u'\n').toStdString(),
            "II.TLY..BHN: found no back azimuth, expected the places of station and event");
}

} // namespace
} // namespace xov
