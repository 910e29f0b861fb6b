#include "XOV_Graphics/seismic/prepare/RemoveResponse.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace xov {
namespace {

using Complex = std::complex<double>;

constexpr double kPi = std::numbers::pi;
constexpr double kInterval = 0.02;   // s
constexpr double kGain = 1500 * 4e5; // counts for 1 m/s far above the pendulum's own frequency
constexpr double kDamping = 0.7;
constexpr double kNanometre = 1e-9;

/// A short-period seismometer of 1 Hz and its digitizer.
InstrumentResponse shortPeriod() {
  const double omega = 2 * kPi;
  const double imaginary = omega * std::sqrt(1 - kDamping * kDamping);
  PolesAndZeros pendulum;
  pendulum.zeros = {0, 0};
  pendulum.poles = {{-omega * kDamping, imaginary}, {-omega * kDamping, -imaginary}};
  ResponseStage sensor;
  sensor.number = 1;
  sensor.inputUnits = QStringLiteral("M/S");
  sensor.filter = pendulum;
  sensor.gain = 1500;
  ResponseStage digitizer;
  digitizer.number = 2;
  digitizer.gain = 4e5;
  return {{sensor, digitizer}, {}, {}};
}

/// The same from the equation of motion of a pendulum, in velocity of the ground.
Complex counts(double hertz) {
  const double ratio = hertz; // its own frequency is 1 Hz
  return kGain * -ratio * ratio / Complex(1 - ratio * ratio, 2 * kDamping * ratio);
}

/// An instrument that gives 10 counts for 1 m/s at any frequency.
InstrumentResponse flat() {
  ResponseStage stage;
  stage.number = 1;
  stage.inputUnits = QStringLiteral("M/S");
  stage.gain = 10;
  return {{stage}, {}, {}};
}

SacSeismogram record(std::size_t count, const std::function<double(double)>& valueAt) {
  SacHeader header;
  header.delta = float(kInterval);
  header.b = 0;
  header.kstnm = "AA1";
  header.kcmpnm = "EHZ";
  std::vector<float> samples(count);
  for (std::size_t i = 0; i < count; ++i)
    samples[i] = float(valueAt(double(i) * kInterval));
  return SacSeismogram(header, samples);
}

/// A sine wave of that complex amplitude: its real part is that of exp(2πift).
SacSeismogram wave(double hertz, Complex amplitude, std::size_t count = 10'000) {
  return record(count, [&](double t) { return (amplitude * std::polar(1.0, 2 * kPi * hertz * t)).real(); });
}

/// How far samples are from a wave in the middle third of a record, in parts of the wave.
double misfit(const SacSeismogram& found, double hertz, Complex amplitude) {
  const SacSeismogram expected = wave(hertz, amplitude, std::size_t(found.npts()));
  double most = 0;
  for (std::size_t i = found.samples().size() / 3; i < found.samples().size() * 2 / 3; ++i)
    most = std::max(most, std::abs(double(found.samples()[i]) - double(expected.samples()[i])));
  return most / std::abs(amplitude);
}

double largestDifference(std::span<const float> a, std::span<const float> b) {
  EXPECT_EQ(a.size(), b.size());
  double most = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
    most = std::max(most, std::abs(double(a[i]) - double(b[i])));
  return most;
}

TEST(RemoveResponse, recoversASteadyWaveInAmplitudeAndPhase) {
  for (const double hertz : {0.35, 1.0, 4.0}) {
    const double velocity = 250; // nm/s
    const Complex derivative(0, 2 * kPi * hertz);
    const SacSeismogram recorded = wave(hertz, velocity * kNanometre * counts(hertz));
    ResponseRemoval removal;
    removal.preFilter = PreFilter{0.05, 0.1, 10, 20};
    for (const auto& [motion, amplitude] : {std::pair(GroundMotion::Displacement, velocity / derivative),
                                            std::pair(GroundMotion::Velocity, Complex(velocity)),
                                            std::pair(GroundMotion::Acceleration, velocity * derivative)}) {
      removal.motion = motion;
      const auto found = removeResponse(recorded, shortPeriod(), removal);
      ASSERT_TRUE(found) << found.error().toStdString();
      EXPECT_LT(misfit(**found, hertz, amplitude), 1e-3) << hertz << " Hz, motion " << int(motion);
    }
  }
}

TEST(RemoveResponse, saysWhatTheSamplesAreThen) {
  const SacSeismogram recorded = wave(1, 1000);
  const auto label = [&](GroundMotion motion) {
    ResponseRemoval removal;
    removal.motion = motion;
    return amplitudeLabel({*removeResponse(recorded, shortPeriod(), removal)});
  };
  EXPECT_EQ(label(GroundMotion::Displacement), QStringLiteral("Displacement (nm)"));
  EXPECT_EQ(label(GroundMotion::Velocity), QStringLiteral("Velocity (nm/s)"));
  EXPECT_EQ(label(GroundMotion::Acceleration), QStringLiteral("Acceleration (nm/s/s)"));
  const auto found = removeResponse(recorded, flat());
  EXPECT_EQ((*found)->kstnm(), QStringLiteral("AA1"));
  EXPECT_EQ((*found)->npts(), recorded.npts());
  EXPECT_EQ((*found)->delta(), recorded.delta());
  // 1000 counts are 100 m/s.
  EXPECT_NEAR((*found)->smax(), 1e11, 1e6);
  EXPECT_EQ((*found)->GetSacHeader()->depmax, (*found)->smax());
}

TEST(RemoveResponse, keepsTheResponseAboveTheWaterLevel) {
  // At a tenth of its own frequency the pendulum is 40 dB below its largest, so with a level of 20 dB a tenth is
  // left.
  const double hertz = 0.1;
  const SacSeismogram recorded = wave(hertz, 100 * kNanometre * counts(hertz));
  ResponseRemoval removal;
  removal.preFilter = PreFilter{0.02, 0.05, 10, 20};
  removal.waterLevelDb = 20;
  const double left = std::abs(counts(hertz)) / kGain / 0.1;
  EXPECT_NEAR(left, 0.1, 1e-3);
  EXPECT_LT(misfit(**removeResponse(recorded, shortPeriod(), removal), hertz, 100 * left), 2e-3);
  removal.waterLevelDb = {};
  EXPECT_LT(misfit(**removeResponse(recorded, shortPeriod(), removal), hertz, 100), 2e-3);
}

TEST(RemoveResponse, leavesTheFrequenciesOfThePreFilter) {
  ResponseRemoval removal;
  removal.preFilter = PreFilter{1, 2, 4, 6};
  for (const auto& [hertz, share] : {std::pair(0.8, 0.0), std::pair(1.5, 0.5), std::pair(1.25, 0.146447),
                                     std::pair(3.0, 1.0), std::pair(5.0, 0.5), std::pair(6.5, 0.0)}) {
    const auto found = removeResponse(wave(hertz, 1e-5), flat(), removal);
    // 10 counts are 1 m/s. At a quarter of the flank half of 1 - √½ is left.
    double largest = 0;
    for (int i = 4000; i < 6000; ++i)
      largest = std::max(largest, std::abs(double((*found)->samples()[std::size_t(i)])));
    EXPECT_NEAR(largest, 1000 * share, 4) << hertz;
  }
}

TEST(RemoveResponse, takesTheMeanOrTheTrendAwayAndTapersBefore) {
  ResponseRemoval removal;
  removal.taperShare = 0.1;
  removal.waterLevelDb = {};
  const SacSeismogram recorded = record(1000, [](double t) { return 5e-8 + std::sin(2 * kPi * t) * 1e-8; });
  const auto found = removeResponse(recorded, flat(), removal);
  // The ends are 0 but for the mean of the tapered samples, which no instrument of ground motion shows.
  const auto at = [&](std::size_t i) { return double((*found)->samples()[i]); };
  EXPECT_NEAR(at(0), at(999), 0.02);
  // 0.5 s into 20 s the sine is 0; a quarter of a second later 1 nm/s.
  EXPECT_NEAR(at(512) - at(500), std::sin(2 * kPi * 0.24), 2e-2);
  removal.trendOrder = {};
  removal.taperShare = 0;
  // Nothing taken away: the flat instrument gives back what it was given.
  EXPECT_NEAR(double((*removeResponse(recorded, flat(), removal))->samples()[500]), 5, 1e-3);
}

TEST(RemoveResponse, isTheReverseOfSimulation) {
  const SacSeismogram ground = record(4000, [](double t) {
    const double x = (t - 30) / 2;
    return 1e4 * std::exp(-x * x) * std::sin(2 * kPi * t);
  });
  for (const GroundMotion motion : {GroundMotion::Displacement, GroundMotion::Velocity, GroundMotion::Acceleration}) {
    const auto recorded = simulateResponse(ground, shortPeriod(), motion);
    ASSERT_TRUE(recorded) << recorded.error().toStdString();
    EXPECT_EQ((*recorded)->GetSacHeader()->idep, kSacUnknownKind);
    ResponseRemoval removal;
    removal.motion = motion;
    removal.trendOrder = {};
    removal.taperShare = 0;
    removal.waterLevelDb = {};
    const auto back = removeResponse(**recorded, shortPeriod(), removal);
    ASSERT_TRUE(back) << back.error().toStdString();
    EXPECT_LT(largestDifference((*back)->samples(), ground.samples()), 1e-3 * double(ground.smax())) << int(motion);
    const auto again = simulateResponse(**back, shortPeriod(), motion);
    EXPECT_LT(largestDifference((*again)->samples(), (*recorded)->samples()), 1e-3 * double((*recorded)->smax()));
  }
}

TEST(RemoveResponse, simulatesASteadyWave) {
  const double hertz = 0.7;
  const SacSeismogram ground = wave(hertz, 1e4);
  const auto recorded = simulateResponse(ground, shortPeriod(), GroundMotion::Velocity);
  EXPECT_LT(misfit(**recorded, hertz, 1e4 * kNanometre * counts(hertz)), 1e-3);
}

TEST(RemoveResponse, treatsThePartsBesideAGapEachByItself) {
  const SacSeismogram recorded = record(600, [](double t) { return 100 * std::sin(3 * t * t) + 20 * t; });
  std::vector<float> gappy(recorded.samples().begin(), recorded.samples().end());
  std::fill(gappy.begin() + 250, gappy.begin() + 260, std::numeric_limits<float>::quiet_NaN());
  const auto found = removeResponse(SacSeismogram(*recorded.GetSacHeader(), gappy), shortPeriod());
  ASSERT_TRUE(found);
  const auto alone = [&](std::size_t first, std::size_t count) {
    const auto part = recorded.samples().subspan(first, count);
    return *removeResponse(SacSeismogram(*recorded.GetSacHeader(), {part.begin(), part.end()}), shortPeriod());
  };
  const std::span<const float> samples = std::as_const(**found).samples();
  EXPECT_EQ(largestDifference(samples.first(250), alone(0, 250)->samples()), 0);
  EXPECT_EQ(largestDifference(samples.subspan(260), alone(260, 340)->samples()), 0);
  for (std::size_t i = 250; i < 260; ++i)
    EXPECT_TRUE(std::isnan(samples[i]));
}

TEST(RemoveResponse, findsTheResponseInAnInventory) {
  StationInventory inventory;
  inventory.name = QStringLiteral("in");
  inventory.channels.push_back({.codes = {"XX", "AA1", "", "EHZ"}, .response = flat()});
  const SacSeismogram recorded = wave(1, 1, 500);
  const auto found = removeResponse(recorded, inventory);
  ASSERT_TRUE(found) << found.error().toStdString();
  EXPECT_EQ(largestDifference((*found)->samples(), (*removeResponse(recorded, flat()))->samples()), 0);
  inventory.channels.front().codes = {"XX", "AA2", "", "EHZ"};
  EXPECT_EQ(removeResponse(recorded, inventory).error(), QStringLiteral("in: has no channel .AA1..EHZ"));
}

TEST(RemoveResponse, saysInOneLineWhatIsInTheWay) {
  const SacSeismogram recorded = wave(1, 1, 500);
  const auto problem = [&](ResponseRemoval removal) { return removeResponse(recorded, flat(), removal).error(); };
  EXPECT_EQ(removeResponse(recorded, InstrumentResponse()).error(),
            QStringLiteral(".AA1..EHZ: the response has no stages"));
  InstrumentResponse dead = flat();
  dead.stages.front().gain = 0;
  EXPECT_EQ(removeResponse(recorded, dead).error(),
            QStringLiteral(".AA1..EHZ: the response is 0 at all frequencies"));
  EXPECT_EQ(
      problem({.preFilter = PreFilter{1, 2, 20, 26}}),
      QStringLiteral(".AA1..EHZ: found a pre-filter of 1, 2, 20, 26 Hz, expected rising frequencies up to 25 Hz"));
  EXPECT_EQ(problem({.preFilter = PreFilter{1, 2, 20, 25}}), QString());
  EXPECT_EQ(
      problem({.preFilter = PreFilter{1, 1, 20, 25}}),
      QStringLiteral(".AA1..EHZ: found a pre-filter of 1, 1, 20, 25 Hz, expected rising frequencies up to 25 Hz"));
  EXPECT_EQ(problem({.taperShare = 0.6}),
            QStringLiteral(".AA1..EHZ: found a taper of 0.6 of the record, expected 0 to 0.5"));
  EXPECT_EQ(problem({.waterLevelDb = -1}),
            QStringLiteral(".AA1..EHZ: found a water level of -1 dB, expected 0 to 1000"));
  SacHeader header = *recorded.GetSacHeader();
  header.delta = 0;
  const SacSeismogram timeless(header, {1, 2, 3});
  EXPECT_EQ(removeResponse(timeless, flat()).error(),
            QStringLiteral(".AA1..EHZ: found a sample interval of 0 s, expected more than 0"));
  EXPECT_EQ(simulateResponse(timeless, flat(), GroundMotion::Velocity).error(),
            QStringLiteral(".AA1..EHZ: found a sample interval of 0 s, expected more than 0"));
  EXPECT_EQ((*removeResponse(SacSeismogram(*recorded.GetSacHeader(), {}), flat()))->npts(), 0);
}

} // namespace
} // namespace xov
