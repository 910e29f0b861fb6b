#pragma once

#include "XOV_Graphics/views/base/PlotPart.h"

namespace xov {

/// The rows that pages of a drum can have when it is zoomed, in seconds on the axis of its pieces.
struct DrumRows {
  int count = 0;           ///< of a page
  PlotSpan whole;          ///< the host's page
  double wholeSeconds = 0; ///< of its rows
  double midnight = 0;     ///< a midnight (UTC) on that axis, which rows of other lengths begin multiples after

  /// The length of rows nearest to a number of seconds, by their ratio; a round number or that of the host's page.
  double nearestSeconds(double seconds) const;
  /// The page of rows that long whose begin is nearest to a time.
  PlotSpan pageNear(double start, double seconds) const;
  /// The page of the shortest rows that holds a stretch of time.
  PlotSpan pageAround(const PlotSpan& stretch) const;
};

/// The shortest rows, in seconds: labels tell minutes.
inline constexpr double kShortestRow = 60;

} // namespace xov
