#include "examples/synthetic/EventSection.h"

#include "XOV_Graphics/seismic/io/sac/SacReader.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "tests/examples/Measures.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <algorithm>
#include <map>
#include <numbers>
#include <set>
#include <string>

namespace xov::synthetic {
namespace {

using Traces = std::vector<std::shared_ptr<SacSeismogram>>;

const SyntheticEvent& event() {
  static const SyntheticEvent kEvent = sectionEvent();
  return kEvent;
}

/// The traces of one station, made once.
const Traces& station(std::size_t index) {
  static std::map<std::size_t, Traces> made;
  const auto [place, isNew] = made.try_emplace(index);
  if (isNew) place->second = stationTraces(event(), sectionStations()[index]);
  return place->second;
}

/// The traces of every station.
std::vector<Traces> section() {
  std::vector<Traces> all;
  for (std::size_t i = 0; i < sectionStations().size(); ++i)
    all.push_back(station(i));
  return all;
}

const SacSeismogram& component(const Traces& traces, const char* name) {
  return **std::find_if(traces.begin(), traces.end(),
                        [name](const auto& trace) { return trace->kcmpnm() == QLatin1String(name); });
}

double strengthBetween(const SacSeismogram& trace, double fromS, double toS) {
  const auto first = std::size_t((fromS - trace.b()) / trace.delta());
  const auto count = std::size_t((toS - fromS) / trace.delta());
  return strength(trace.samples().subspan(first, count));
}

/// Distance in degrees by the haversine formula on the sphere of geocentric latitudes.
double haversineDeg(const SacHeader& header) {
  constexpr double kRadians = std::numbers::pi / 180.0;
  constexpr double kFlattening = 1.0 / 298.257223563;
  const auto geocentric = [](double latitude) {
    return std::atan((1 - kFlattening) * (1 - kFlattening) * std::tan(latitude * kRadians));
  };
  const double from = geocentric(header.evla);
  const double to = geocentric(header.stla);
  const double sinLatitude = std::sin((to - from) / 2);
  const double sinLongitude = std::sin((header.stlo - header.evlo) * kRadians / 2);
  const double h = sinLatitude * sinLatitude + std::cos(from) * std::cos(to) * sinLongitude * sinLongitude;
  return 2 * std::asin(std::sqrt(h)) / kRadians;
}

TEST(EventSection, hasTwelveStationsFromFourToNinetyFiveDegrees) {
  ASSERT_EQ(section().size(), 12U);
  float last = 0;
  for (const Traces& traces : section()) {
    EXPECT_GT(traces.front()->gcarc(), last) << "stations are listed by distance";
    last = traces.front()->gcarc();
  }
  EXPECT_NEAR(section().front().front()->gcarc(), 4, 0.5);
  EXPECT_NEAR(last, 95, 0.5);
}

TEST(EventSection, everyStationHasThreeComponentsAndTwoHaveRotatedOnes) {
  std::set<std::string> labels;
  int rotated = 0;
  for (const Traces& traces : section()) {
    ASSERT_GE(traces.size(), 3U);
    EXPECT_EQ(traces[0]->kcmpnm(), "BHZ");
    EXPECT_EQ(traces[1]->kcmpnm(), "BHN");
    EXPECT_EQ(traces[2]->kcmpnm(), "BHE");
    rotated += traces.size() == 5 ? 1 : 0;
    for (const auto& trace : traces)
      labels.insert(trace->labelString().toStdString());
  }
  EXPECT_EQ(rotated, 2);
  EXPECT_EQ(labels.size(), 40U) << "each trace has a name of its own";
  EXPECT_EQ(labels.count("XX.SKUA.00.BHT"), 1U);
}

TEST(EventSection, distancesAgreeWithTheHaversineFormula) {
  for (const Traces& traces : section())
    EXPECT_NEAR(traces.front()->gcarc(), haversineDeg(*traces.front()->GetSacHeader()), 1e-3)
        << traces.front()->kstnm().toStdString();
}

TEST(EventSection, headersHoldTheEventAndThePicks) {
  const SacSeismogram& trace = component(station(7), "BHZ");
  EXPECT_EQ(trace.oTimeString(), "2025/03/09 04:17:36.4");
  EXPECT_FLOAT_EQ(trace.evdp(), 24);
  EXPECT_FLOAT_EQ(trace.b(), -60);
  EXPECT_FLOAT_EQ(trace.delta(), 0.05F);
  EXPECT_EQ(trace.npts(), 79200); // 3960 s at 20 Hz
  EXPECT_FLOAT_EQ(trace.originTimeOffset(), 0);
  EXPECT_EQ(trace.pickLabelWithKey(10), "P");
  EXPECT_EQ(trace.pickLabelWithKey(0), "S");
  EXPECT_EQ(trace.pickLabelWithKey(1), "LR");
  EXPECT_EQ(component(station(7), "BHT").pickLabelWithKey(1), "LQ");
  for (const Traces& traces : section()) {
    for (const auto& each : traces) {
      EXPECT_LT(0, each->a());
      EXPECT_LT(each->a(), each->timePickKey(0));
      EXPECT_LT(each->timePickKey(0), each->timePickKey(1));
      EXPECT_LT(each->timePickKey(1), each->e());
    }
  }
}

TEST(EventSection, theEnergyOfPArrivesAtThePick) {
  for (const Traces& traces : section()) {
    const SacSeismogram& up = component(traces, "BHZ");
    const double before = strengthBetween(up, up.a() - 30, up.a());
    EXPECT_GT(strengthBetween(up, up.a(), up.a() + 15), 3 * before) << up.kstnm().toStdString();
    // The noise has not grown yet shortly before the pick.
    EXPECT_LT(strengthBetween(up, up.a() - 10, up.a()), 1.7 * before) << up.kstnm().toStdString();
  }
}

TEST(EventSection, theEnergyOfSArrivesAtThePickOnAHorizontal) {
  for (const Traces& traces : section()) {
    double ratio = 0;
    for (const char* name : {"BHN", "BHE"}) {
      const SacSeismogram& trace = component(traces, name);
      const float s = trace.timePickKey(0);
      ratio = std::max(ratio, strengthBetween(trace, s, s + 15) / strengthBetween(trace, s - 25, s));
    }
    EXPECT_GT(ratio, 3) << traces.front()->kstnm().toStdString();
  }
}

TEST(EventSection, surfaceWavesAreTheLargestOfAShallowEvent) {
  for (const Traces& traces : section()) {
    const SacSeismogram& up = component(traces, "BHZ");
    const float rayleigh = up.timePickKey(1);
    EXPECT_GT(strengthBetween(up, rayleigh, rayleigh + 100), 2 * strengthBetween(up, up.a(), up.a() + 15))
        << up.kstnm().toStdString();
  }
}

TEST(EventSection, amplitudesOfAllStationsFitOneScale) {
  double smallest = 1e30, largest = 0;
  for (const Traces& traces : section()) {
    smallest = std::min(smallest, double(traces.front()->absMax()));
    largest = std::max(largest, double(traces.front()->absMax()));
  }
  EXPECT_LT(largest, 3 * smallest);
}

TEST(EventSection, rotatedComponentsHoldTheSameMotion) {
  const Traces& traces = station(7);
  const SacSeismogram& north = component(traces, "BHN");
  const SacSeismogram& east = component(traces, "BHE");
  const SacSeismogram& away = component(traces, "BHR");
  const SacSeismogram& across = component(traces, "BHT");
  // North is the part of "away from the source" and of "clockwise of that" that points north.
  const double towardsDeg = north.backazimuth() + 180.0;
  const double cosine = std::cos(towardsDeg * std::numbers::pi / 180);
  const double sine = std::sin(towardsDeg * std::numbers::pi / 180);
  for (std::size_t i = 0; i < north.samples().size(); i += 97) {
    const double r = away.samples()[i];
    const double t = across.samples()[i];
    EXPECT_NEAR(north.samples()[i], r * cosine - t * sine, 0.02) << i;
    EXPECT_NEAR(east.samples()[i], r * sine + t * cosine, 0.02) << i;
  }
}

TEST(EventSection, pSwingsUpAndAwayButNotAcross) {
  const Traces& traces = station(4);
  const SacSeismogram& across = component(traces, "BHT");
  const float p = across.a();
  const double clutter = strengthBetween(across, p, p + 15);
  EXPECT_GT(strengthBetween(component(traces, "BHZ"), p, p + 15), 2 * clutter);
  EXPECT_GT(strengthBetween(component(traces, "BHR"), p, p + 15), clutter);
}

TEST(EventSection, isTheSameEveryTime) {
  const Traces again = stationTraces(sectionEvent(), sectionStations()[4]);
  ASSERT_EQ(again.size(), station(4).size());
  for (std::size_t i = 0; i < again.size(); ++i)
    EXPECT_TRUE(std::ranges::equal(again[i]->samples(), station(4)[i]->samples())) << i;
}

TEST(EventSection, aStationInTheShadowOfTheCoreGetsNoTraces) {
  // The antipode of the epicentre.
  const Epicentre epicentre = sectionEpicentre();
  const Station antipode = {"FAR", -epicentre.latitudeDeg, epicentre.longitudeDeg - 180, 1, 100, false};
  EXPECT_TRUE(stationTraces(event(), antipode).empty());
}

TEST(EventSection, survivesTheWayThroughAFile) {
  const SacSeismogram& trace = component(station(0), "BHZ");
  QBuffer file;
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_TRUE(writeSac(trace, file, QStringLiteral("trace")));
  const Result<std::shared_ptr<SacSeismogram>> read = parseSac(file.data(), QStringLiteral("trace"));
  ASSERT_TRUE(read) << read.error().toStdString();
  const SacSeismogram& back = **read;
  EXPECT_TRUE(std::ranges::equal(back.samples(), trace.samples()));
  EXPECT_EQ(back.a(), trace.a());
  EXPECT_EQ(back.gcarc(), trace.gcarc());
  EXPECT_EQ(back.labelString(), "XX.TERN.00.BHZ");
  EXPECT_EQ(back.oTimeString(), trace.oTimeString());
}

TEST(ModelComparison, showsDataAndModelOfOneWindowThatDiffer) {
  const Station& nearest = sectionStations()[0];
  const std::optional<ModelComparison> compared = modelComparison(event(), nearest);
  ASSERT_TRUE(compared);
  const SacSeismogram& data = *compared->data;
  const SacSeismogram& model = *compared->model;
  EXPECT_EQ(data.npts(), 18000) << "15 min at 20 Hz";
  EXPECT_EQ(model.npts(), data.npts());
  EXPECT_EQ(model.b(), data.b());
  EXPECT_NEAR(data.a() - data.b(), 60, 0.05 + 1e-3);
  EXPECT_EQ(model.kuser0(), "P");
  EXPECT_NE(data.smax(), model.smax());
}

} // namespace
} // namespace xov::synthetic
