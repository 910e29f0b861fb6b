#include "XOV_Graphics/seismic/signal/FrequencyRows.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Along a line of their decibels, as the eye sees them.
double between(double left, double right, double share) {
  return left > 0 && right > 0 ? left * std::pow(right / left, share) : left + share * (right - left);
}

} // namespace

FrequencyRows::FrequencyRows(int rows, double lowestHz, double highestHz, bool logarithmic)
    : rows_(rows),
      edges_(std::size_t(rows) + 1),
      logarithmic_(logarithmic) {
  for (int i = 0; i <= rows; ++i) {
    const double share = double(i) / rows;
    edges_[std::size_t(i)] =
        logarithmic ? highestHz * std::pow(lowestHz / highestHz, share) : highestHz + (lowestHz - highestHz) * share;
  }
}

void FrequencyRows::setBins(std::size_t bins, double stepHz) {
  sources_.assign(std::size_t(rows_), {});
  const double last = double(bins - 1);
  for (std::size_t row = 0; row < sources_.size(); ++row) {
    const double above = edges_[row] / stepHz;
    const double below = edges_[row + 1] / stepHz;
    Source& source = sources_[row];
    const double first = std::ceil(below);
    const double end = std::min(std::ceil(above), last + 1);
    if (end > first) {
      source = {std::size_t(first), std::size_t(end - first), 0, true};
      continue;
    }
    const double middle = logarithmic_ ? std::sqrt(above * below) : (above + below) / 2;
    if (!(middle <= last)) continue;
    const double left = std::min(std::floor(middle), last - 1);
    source = {std::size_t(std::max(left, 0.0)), 0, middle - std::max(left, 0.0), true};
  }
}

void FrequencyRows::addTo(std::span<double> column, std::span<const double> density) const {
  for (std::size_t row = 0; row < sources_.size(); ++row) {
    const Source& source = sources_[row];
    if (!source.exists) continue;
    double value = 0;
    if (source.count > 0) {
      for (std::size_t i = 0; i < source.count; ++i)
        value += density[source.first + i];
      value /= double(source.count);
    } else {
      value = between(density[source.first], density[std::min(source.first + 1, density.size() - 1)], source.share);
    }
    column[row] += value;
  }
}

} // namespace xov
