#include "bench/Works.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace xov::bench {

namespace {

struct Layout {
  const char* name;
  const char* description;
  QSize size;
  int rows;
  std::int64_t samplesPerRow;
  double deviation; ///< of the noise, in view points
  bool atRatios;    ///< drawn with other pixel ratios, too
  int gapEvery = 0; ///< so many samples one is missing
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
    work.samples = noise(std::size_t(layout.rows * layout.samplesPerRow));
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
