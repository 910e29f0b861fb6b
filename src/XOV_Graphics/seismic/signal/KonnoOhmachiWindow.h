#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace xov {

/// The weights [sin(bx) / bx]⁴ over x = log10(f / fc), read from a table since a spectrum asks for very many of them.
class KonnoOhmachiWindow {
public:
  explicit KonnoOhmachiWindow(double bandwidth) : bandwidth_(bandwidth), table_(kSteps + 2) {
    table_[0] = 1;
    for (std::size_t i = 1; i < table_.size(); ++i) {
      const double angle = double(i) * kFarthest / double(kSteps);
      table_[i] = std::pow(std::sin(angle) / angle, 4);
    }
  }

  /// The largest x that has a weight: the third zero.
  double reach() const { return kFarthest / bandwidth_; }
  /// For x within reach.
  double at(double x) const {
    const double place = std::min(std::abs(x * bandwidth_) / kFarthest, 1.0) * double(kSteps);
    const auto below = std::size_t(place);
    const double share = place - double(below);
    return table_[below] + share * (table_[below + 1] - table_[below]);
  }

private:
  static constexpr double kFarthest = 3 * std::numbers::pi;
  static constexpr std::size_t kSteps = 3000;
  double bandwidth_;
  std::vector<double> table_;
};

} // namespace xov
