#pragma once

#include <cstdint>

namespace xov {

/// Where samples lie whose times are products, rounded to single precision at each step as TraceTime's uniform ones
/// are: sample i at the column (start + step · i - origin) · scale + offset, the last two operations in double
/// precision. Columns must not fall.
struct RoundedColumns {
  float start = 0;
  float step = 0;
  float origin = 0;
  double scale = 1;
  double offset = 0;
};

/// Where borders are sought: each within `reach` samples of the place guess + k · step, and between two samples, of
/// which the first lies left of all borders. Places count from sample `base`.
struct BorderPlaces {
  double guess = 0;
  double step = 0;
  std::int32_t reach = 0;
  std::int32_t base = 0;
  std::int32_t lowest = 0;
  std::int32_t highest = 0;
};

/// Finds the first sample at or right of each of `count` borders, held between the lowest and the highest, and how
/// far along the segment that ends there the border lies, 0 to 1, unless `fraction` is null. False where one lies
/// outside its reach.
///
/// Rounded times come in steps of several samples, far from a straight line: many borders are looked up together.
bool cutRounded(const RoundedColumns& columns, const BorderPlaces& places, const double* borders, int count,
                std::int32_t* cuts, float* fraction);

} // namespace xov
