#pragma once

#include <QString>

namespace xov::bench {

/// A table of what histograms and lines of a million points take, as ratios to the same drawing by QPainter's own
/// rectangles and hairlines, and of what binning takes, as a ratio to a scan of the values for their extremes.
/// Medians of that many rounds.
QString plotTable(int rounds);

} // namespace xov::bench
