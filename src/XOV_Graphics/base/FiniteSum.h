#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <span>

namespace xov {

/// The sum of numbers, and how many they are.
struct XOV_EXPORT FiniteSum {
  double sum = 0;         ///< of the finite numbers alone
  std::int64_t count = 0; ///< of the finite numbers

  /// Adds a sum of other numbers.
  void add(const FiniteSum& other) {
    sum += other.sum;
    count += other.count;
  }
  /// 0 of none.
  double mean() const { return count > 0 ? sum / double(count) : 0; }
};

/// Adds the finite values, in one pass. They are added up in eight sums side by side, the same on every processor:
/// exact where all are whole numbers, as counts of a digitiser are.
XOV_EXPORT void addFinite(std::span<const float> values, FiniteSum& sum);

} // namespace xov
