#pragma once

#include <QString>

namespace xov::bench {

/// A table of what views of many records, fills and drums of many pieces take, as ratios to what they are to be held
/// against: the same view without its fill, a drum of one piece, QPainter's hairline through the same samples,
/// a month of samples without the index of their extremes.
/// Medians of that many rounds.
QString recordTable(int rounds);

} // namespace xov::bench
