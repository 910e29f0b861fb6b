#include "examples/synthetic/SyntheticDay.h"

#include "XOV_Graphics/seismic/Geodesy.h"
#include "examples/synthetic/LocalEvent.h"
#include "examples/synthetic/SyntheticEvent.h"
#include "tests/examples/Measures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace xov::synthetic {
namespace {

constexpr double kHourS = 3600.0;

const std::vector<std::shared_ptr<SacSeismogram>>& day() {
  static const std::vector<std::shared_ptr<SacSeismogram>> kDay = dayTraces();
  return kDay;
}

/// The samples between two times of the day, which must lie in one piece.
std::span<const float> between(double fromS, double toS) {
  const SacSeismogram& piece = fromS < day()[1]->b() ? *day()[0] : *day()[1];
  return std::as_const(piece).samples().subspan(std::size_t((fromS - piece.b()) * 20.0),
                                                std::size_t((toS - fromS) * 20.0));
}

/// What varies from one sample to the next: a simple filter for what is above some Hz.
double shortPeriodStrength(double fromS, double toS) {
  const std::span<const float> samples = between(fromS, toS);
  std::vector<double> steps;
  for (std::size_t i = 1; i < samples.size(); ++i)
    steps.push_back(double(samples[i]) - double(samples[i - 1]));
  return strength<double>(steps);
}

GreatCircle wayTo(const DayEvent& event) {
  const SacHeader& header = *day()[0]->GetSacHeader();
  return greatCircle(event.latitudeDeg, event.longitudeDeg, header.stla, header.stlo);
}

bool isLocal(const DayEvent& event) { return std::string_view(event.magnitudeType) != "mww"; }

TEST(LocalEvent, amplitudesFollowTheLocalMagnitudeScale) {
  // At 100 km magnitude 3 writes 1 mm: 1/2080 mm of ground at 4 Hz, times 8π, 12083 nm/s.
  EXPECT_NEAR(localVelocity(3.0, 100), 12083, 1);
  EXPECT_NEAR(localVelocity(4.0, 100) / localVelocity(3.0, 100), 10, 1e-9);
  EXPECT_NEAR(localPTimeS(60), 10, 1e-12);
  EXPECT_NEAR(localSTimeS(70), 20, 1e-12);
}

TEST(SyntheticDay, consistsOfTwoPiecesOfOneChannelWithAGapOfTwelveMinutes) {
  ASSERT_EQ(day().size(), 2U);
  const SacSeismogram& first = *day()[0];
  const SacSeismogram& second = *day()[1];
  EXPECT_EQ(first.labelString(), "XX.DRUM..BHZ");
  EXPECT_EQ(second.labelString(), "XX.DRUM..BHZ");
  EXPECT_FLOAT_EQ(first.b(), 0);
  EXPECT_EQ(first.npts(), 20 * 34260);            // until 09:31:00
  EXPECT_FLOAT_EQ(second.b(), 34260 + 740);       // 12 min 20 s later
  EXPECT_EQ(second.npts(), 20 * (86400 - 35000)); // until midnight
  EXPECT_EQ(referenceTime(*first.GetSacHeader()), dayMidnight());
  EXPECT_EQ(referenceTime(*second.GetSacHeader()), dayMidnight());
}

TEST(SyntheticDay, localEventsRingShortlyAndAtShortPeriods) {
  int count = 0;
  for (const DayEvent& event : dayEvents()) {
    if (!isLocal(event)) continue;
    ++count;
    const double distanceKm = std::hypot(wayTo(event).distanceDeg * kKmPerDegree, event.depthKm);
    const double p = event.timeS + localPTimeS(distanceKm);
    const double s = event.timeS + localSTimeS(distanceKm);
    const double before = shortPeriodStrength(p - 30, p - 1);
    EXPECT_GT(shortPeriodStrength(p, p + 2), 3 * before) << event.timeS;
    EXPECT_GT(shortPeriodStrength(s, s + 2), 8 * before) << event.timeS;
    EXPECT_LT(shortPeriodStrength(s + 400, s + 430), 2 * before) << event.timeS;
  }
  EXPECT_GE(count, 6);
}

TEST(SyntheticDay, theDistantEventArrivesWhenTheEarthModelSays) {
  const DayEvent& event = *std::find_if_not(dayEvents().begin(), dayEvents().end(), isLocal);
  const double distanceDeg = wayTo(event).distanceDeg;
  const SyntheticEvent source(Source(event.magnitude, event.depthKm, 0, 1));
  const std::optional<ArrivalTimes> arrivals = source.arrivals(distanceDeg);
  ASSERT_TRUE(arrivals);
  const double p = event.timeS + arrivals->p;
  const double rayleigh = event.timeS + arrivals->rayleigh;
  EXPECT_GT(strength(between(p, p + 20)), 3 * strength(between(p - 30, p)));
  EXPECT_GT(strength(between(rayleigh, rayleigh + 200)), 3 * strength(between(p, p + 20)));
}

TEST(SyntheticDay, noiseIsStrongerByDayThanAtNight) {
  // 14:00 and 02:00 local time, two hours ahead of UTC; neither quarter of an hour holds an event.
  EXPECT_GT(shortPeriodStrength(12 * kHourS, 12.25 * kHourS), 2 * shortPeriodStrength(0, 0.25 * kHourS));
}

TEST(SyntheticDay, theCatalogueHasALineForEachEvent) {
  const QByteArrayList lines = dayCatalogue().split('\n');
  ASSERT_EQ(lines.size(), qsizetype(dayEvents().size()) + 2); // the column names, and the end of the last line
  EXPECT_EQ(lines.first(), "time,latitude,longitude,depth,magnitude,type");
  EXPECT_EQ(lines[1], "2025-03-12T01:12:44.210Z,38.42,22.07,9.3,2.6,ml");
  EXPECT_TRUE(lines.last().isEmpty());
  EXPECT_TRUE(std::ranges::is_sorted(dayEvents(), {}, &DayEvent::timeS));
}

TEST(SyntheticDay, noEventFallsIntoTheGap) {
  for (const DayEvent& event : dayEvents())
    EXPECT_TRUE(event.timeS < 34260 - 300 || event.timeS > 35000) << event.timeS;
}

TEST(SyntheticDay, isTheSameEveryTime) {
  const std::vector<std::shared_ptr<SacSeismogram>> again = dayTraces();
  ASSERT_EQ(again.size(), day().size());
  for (std::size_t i = 0; i < again.size(); ++i)
    EXPECT_TRUE(std::ranges::equal(again[i]->samples(), day()[i]->samples())) << i;
}

} // namespace
} // namespace xov::synthetic
