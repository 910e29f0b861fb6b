#pragma once

#include <QString>

namespace xov::bench {

/// A table of what colouring a grid of 2160 × 4320 elevations takes, as ratios to copying its output, and of what a
/// redraw of a view of 401 × 401 beam powers takes of a frame of 1/60 s. Medians of that many rounds.
QString gridTable(int rounds);

} // namespace xov::bench
