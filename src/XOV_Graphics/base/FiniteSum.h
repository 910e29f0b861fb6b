#pragma once

#include <cstdint>
#include <span>

namespace xov {

/// The sum of numbers, and how many they are.
struct FiniteSum {
  double sum = 0;
  std::int64_t count = 0;

  double mean() const { return count > 0 ? sum / double(count) : 0; }
};

/// Adds the finite values, in one pass. They are added up in eight sums side by side, the same on every processor:
/// exact where all are whole numbers, as counts of a digitiser are.
void addFinite(std::span<const float> values, FiniteSum& sum);

} // namespace xov
