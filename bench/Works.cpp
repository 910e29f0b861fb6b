#include "bench/Works.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <utility>

namespace xov::bench {

namespace {

enum class Signal { Noise, Sines, Recording };

struct Layout {
  const char* name;
  const char* description;
  QSize size;
  int rows;
  std::int64_t samplesPerRow;
  double deviation; ///< of the noise, in view points
  bool atRatios;    ///< drawn with other pixel ratios, too
  int gapEvery = 0; ///< so many samples one is missing
  Signal signal = Signal::Noise;
};

const Layout kLayouts[] = {
    {"W1", "drum: 24 h at 100 Hz in 24 rows", {1200, 900}, 24, 360000, 15, true},
    {"W2", "one panel of 10 million samples", {1200, 600}, 1, 10000000, 60, true},
    {"W3", "section: 100 traces of 36,000 samples", {1200, 900}, 100, 36000, 8, true},
    {"W8", "zoomed section: 100 traces of 240 samples", {1200, 900}, 100, 240, 8, false},
    {"W9", "section: 1,000 traces of 1,000 samples", {1200, 900}, 1000, 1000, 8, false},
    {"W10", "section: 10,000 traces of 1,000 samples", {1200, 900}, 10000, 1000, 8, false},
    {"W11", "W2 with every hundredth sample missing", {1200, 600}, 1, 10000000, 60, false, 100},
    {"W12", "W2 with every fifth sample missing", {1200, 600}, 1, 10000000, 60, false, 5},
    {"W14", "W1 of ground noise with earthquakes", {1200, 900}, 24, 360000, 0.6, false, 0, Signal::Recording},
    {"W15", "section: 100 sines of 36,000 samples", {1200, 900}, 100, 36000, 8, false, 0, Signal::Sines},
};

constexpr const char* kScatter = "S1";
constexpr std::size_t kSymbols = 1000000;

constexpr const char* kRatios[] = {"@1.5", "@2"};

struct Page {
  const char* name;
  const char* of;
};
constexpr Page kPages[] = {{"W5", "W3"}, {"W6", "W1"}, {"S2", kScatter}, {"W13", "W12"}};

// Standard deviation 1; the same numbers on every machine, which std::normal_distribution does not promise.
std::vector<float> noise(std::size_t count) {
  std::mt19937 random(2009);
  std::vector<float> values(count);
  constexpr double kScale = 1.0 / 4294967296.0;
  for (float& value : values) {
    double sum = 0;
    for (int i = 0; i < 4; ++i)
      sum += double(random()) * kScale;
    value = float((sum - 2) * std::sqrt(3.0)); // four uniform numbers have variance 1/3
  }
  return values;
}

// Sines of 30 periods, each of another phase.
std::vector<float> sines(std::size_t rows, std::size_t count) {
  constexpr double kPeriods = 30, kTurn = 6.283185307179586;
  std::vector<float> values;
  values.reserve(rows * count);
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = 0; i < count; ++i)
      values.push_back(float(std::sin(kTurn * kPeriods * double(i) / double(count) + double(row))));
  }
  return values;
}

// What a quiet station records at 100 Hz: microseisms, which swing with a period of about six seconds, under a little
// noise, and now and then an earthquake of some hertz that is up to a hundred times as large and dies away in a
// minute.
std::vector<float> recording(std::size_t count) {
  constexpr double kInterval = 0.01, kTurn = 6.283185307179586;
  constexpr double kPeriod = 6, kMemory = 0.9985; // seconds; what is left of a swing from sample to sample
  constexpr double kDecay = 15;                   // seconds
  constexpr std::size_t kEarthquakes = 12;
  std::vector<float> values = noise(count);
  const double turn = kTurn * kInterval / kPeriod;
  double before = 0, last = 0;
  for (float& value : values) {
    const double next = 2 * kMemory * std::cos(turn) * last - kMemory * kMemory * before + double(value) * 0.004;
    before = std::exchange(last, next);
    value = float(next + double(value) * 0.1);
  }
  std::mt19937 random(11);
  for (std::size_t k = 0; k < kEarthquakes; ++k) {
    const std::size_t start = random() % count;
    const double size = 100.0 / double(1 + k * k), frequency = 1 + double(random() % 500) / 100;
    for (std::size_t i = start; i < count && double(i - start) * kInterval < 8 * kDecay; ++i) {
      const double time = double(i - start) * kInterval;
      values[i] += float(size * std::exp(-time / kDecay) * std::sin(kTurn * frequency * time) *
                         std::cos(1.7 * time + 3 * std::sin(0.9 * time)));
    }
  }
  return values;
}

std::vector<float> samplesOf(const Layout& layout) {
  const auto rows = std::size_t(layout.rows), count = std::size_t(layout.samplesPerRow);
  if (layout.signal == Signal::Sines) return sines(rows, count);
  return layout.signal == Signal::Recording ? recording(rows * count) : noise(rows * count);
}

} // namespace

std::vector<std::string> workNames() {
  std::vector<std::string> names, drawings; // all, and those with other pixel ratios
  for (const Layout& layout : kLayouts) {
    names.emplace_back(layout.name);
    if (layout.atRatios) drawings.emplace_back(layout.name);
  }
  names.emplace_back(kScatter);
  drawings.emplace_back(kScatter);
  for (const Page& page : kPages)
    names.emplace_back(page.name);
  for (const char* ratio : kRatios) {
    for (const std::string& drawing : drawings)
      names.push_back(drawing + ratio);
  }
  return names;
}

namespace {

// A cloud about the middle of the view.
Work makeScatter() {
  Work work;
  work.description = "scatter: a million symbols of 12 points";
  work.size = {900, 600};
  work.diameter = 12;
  const std::vector<float> places = noise(2 * kSymbols);
  for (std::size_t i = 0; i < kSymbols; ++i) {
    work.xs.push_back(float(work.size.width()) * (0.5f + 0.12f * places[2 * i]));
    work.ys.push_back(float(work.size.height()) * (0.5f + 0.12f * places[2 * i + 1]));
  }
  return work;
}

} // namespace

Work makeWork(const std::string& name) {
  for (const Page& page : kPages) {
    if (name != page.name) continue;
    Work work = makeWork(page.of);
    work.name = name;
    work.description = std::string("PDF of ") + page.of;
    work.isPage = true;
    return work;
  }
  Work work;
  const std::string base = name.substr(0, name.find('@'));
  const double ratio = base == name ? 1 : std::atof(name.c_str() + base.size() + 1);
  if (base == kScatter) {
    work = makeScatter();
    work.name = name;
    work.ratio = ratio;
    return work;
  }
  for (const Layout& layout : kLayouts) {
    if (base != layout.name) continue;
    work.name = name;
    work.description = layout.description;
    work.size = layout.size;
    work.ratio = ratio;
    work.samples = samplesOf(layout);
    for (std::size_t i = 0; layout.gapEvery > 0 && i < work.samples.size(); ++i) {
      if (i % std::size_t(layout.gapEvery) == 0) work.samples[i] = std::numeric_limits<float>::quiet_NaN();
    }
    for (int row = 0; row < layout.rows; ++row) {
      Trace trace;
      trace.samples = work.samples.data() + row * layout.samplesPerRow;
      trace.last = layout.samplesPerRow;
      trace.time = TraceTime::accumulated(0, 0.01f);
      trace.xScale = layout.size.width() / (0.01 * double(layout.samplesPerRow));
      trace.yScale = layout.deviation;
      trace.yOffset = layout.size.height() * (row + 0.5) / layout.rows;
      work.traces.push_back(trace);
    }
  }
  return work;
}

} // namespace xov::bench
