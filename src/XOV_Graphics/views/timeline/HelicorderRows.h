#pragma once

#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace xov {

/// When the samples of a piece were taken, in seconds since the page began: sample i, 0 <= i < count, at
/// start + i · step, the product and the sum each rounded to single precision.
struct PieceTimes {
  float start = 0;
  float step = 0;
  std::int64_t count = 0;
};

/// The samples first <= i < last of a piece that lie in one row of a page.
struct HelicorderRow {
  std::int64_t first = 0;
  std::int64_t last = 0;
  float begin = 0; ///< when the row begins, in seconds since the page did
  float row = 0;   ///< which row it is: `begin` / rowDuration, a whole number up to rounding

  bool operator==(const HelicorderRow&) const = default;
};

/// Cuts a piece where floor(t / rowDuration) changes, in single precision: at the cost of the number of rows,
/// whatever the number of samples. A piece of more than kMostRows rows is cut into those in view, and no more than
/// kMostRows of them. Nothing for times that run backwards or are not finite, and for a rowDuration that is not
/// positive.
std::vector<HelicorderRow> splitIntoRows(const PieceTimes& times, float rowDuration, const PageRows& inView);

/// Points a count: gain · h / (2 · maxAmplitude). A maximum of 0 gives 0: all samples lie on their zero lines.
/// Nothing when the result would not be finite.
std::optional<double> amplitudeScale(float gain, double rowHeight, float maxAmplitude);

/// The traces of a piece, one a row. `samples` are borrowed, as Trace says; none of them lies further than `reach`
/// row heights from its zero line. The page must hold traces.
std::vector<Trace> rowTraces(const HelicorderPage& page, const PieceTimes& times, const float* samples,
                             double pointsPerCount, double reach);

} // namespace xov
