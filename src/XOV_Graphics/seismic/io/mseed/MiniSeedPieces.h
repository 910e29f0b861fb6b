#pragma once

#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <cstdint>
#include <vector>

namespace xov {

/// Where a record's samples belong in time.
struct RecordSpan {
  std::int64_t startUs = 0; ///< time of the first sample, microseconds since 1970
  double rateHz = 0;
  int sampleCount = 0;
};

/// Time-ordered records of one channel, put together to unbroken pieces: for each piece the places of its records in
/// `spans`, in the order of the pieces' starts.
///
/// A record continues a piece whose last record ends within half a sample of where this one starts, and whose rate is
/// the same to a ten-thousandth; of several, the nearest. So a gap starts another piece, and records that overlap
/// become pieces that overlap.
std::vector<std::vector<std::size_t>> joinRecords(const std::vector<RecordSpan>& spans);

/// A piece on the time axis that begins at `referenceMs`, milliseconds since 1970: b is the time of its first sample
/// and delta the interval. Where the records' own times are further from the nominal rate at the end of the piece
/// than half a sample, as when a clock drifts, delta is what their times make it.
struct PieceTimes {
  double b = 0;
  double delta = 0;
};
PieceTimes pieceTimes(const std::vector<RecordSpan>& records, std::int64_t referenceMs);

} // namespace xov
