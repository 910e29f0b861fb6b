#pragma once

#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QString>

#include <memory>

namespace xov::bench {

/// A table of what views of many records, fills and drums of many pieces take, as ratios to what they are to be held
/// against: the same view without its fill, a drum of one piece, QPainter's hairline through the same samples,
/// a month of samples without the index of their extremes.
/// Medians of that many rounds.
QString recordTable(int rounds);

/// A day of noise at 100 Hz, in so many records of one length and one reference time.
std::shared_ptr<const SeismogramArray> dayInPieces(int pieces);

} // namespace xov::bench
