#include "XOV_Graphics/views/timeline/DrumRows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace xov {

namespace {

constexpr std::array kRoundSeconds = {kShortestRow, 120.0,  300.0,   600.0,   900.0,   1200.0,  1800.0,
                                      3600.0,       7200.0, 10800.0, 14400.0, 21600.0, 43200.0, 86400.0};

// In order, without any twice.
std::vector<double> lengthsOf(const DrumRows& rows) {
  std::vector<double> lengths(kRoundSeconds.begin(), kRoundSeconds.end());
  const auto place = std::ranges::lower_bound(lengths, rows.wholeSeconds);
  if (place == lengths.end() || *place != rows.wholeSeconds) lengths.insert(place, rows.wholeSeconds);
  return lengths;
}

} // namespace

double DrumRows::nearestSeconds(double seconds) const {
  const std::vector<double> lengths = lengthsOf(*this);
  const auto distance = [&](double length) { return std::abs(std::log(length / seconds)); };
  const auto nearest = std::ranges::min_element(lengths, {}, distance);
  return seconds > 0 ? *nearest : lengths.front();
}

PlotSpan DrumRows::pageNear(double start, double seconds) const {
  const double from = seconds == wholeSeconds ? whole.lower : midnight;
  const double begin = from + std::round((start - from) / seconds) * seconds;
  return {begin, begin + count * seconds};
}

PlotSpan DrumRows::pageAround(const PlotSpan& stretch) const {
  PlotSpan page;
  for (const double seconds : lengthsOf(*this)) {
    page = pageNear(stretch.lower, seconds);
    if (page.lower > stretch.lower) page = {page.lower - seconds, page.upper - seconds};
    if (page.upper >= stretch.upper) break;
  }
  return page;
}

} // namespace xov
