#pragma once

#include <cstdint>
#include <map>

namespace xov {

/// Where a record's samples belong in time.
struct MiniSeedSpan {
  std::int64_t startUs = 0; ///< time of the first sample, microseconds since 1970
  double rateHz = 0;
  int sampleCount = 0;
};

/// Where the records of a piece lie, put in one after the other.
struct PieceExtent {
  MiniSeedSpan first;
  MiniSeedSpan last;
  std::int64_t sampleCount = 0; ///< of all records

  void add(const MiniSeedSpan& span);
  /// Adds the records of a piece that goes on with this one.
  void add(const PieceExtent& next);
};

/// Puts the records of one channel together to unbroken pieces.
///
/// A record continues a piece whose last record ends within half a sample of where this one starts, and whose rate is
/// the same to a ten-thousandth; of several, the nearest. So a gap starts another piece, and records that overlap
/// become pieces that overlap.
class PieceJoiner {
public:
  /// The number of the piece that a record belongs to. Records come in the order of their starts, and pieces are
  /// numbered in the order of theirs.
  std::size_t add(const MiniSeedSpan& span);
  /// The same of records that are one piece already.
  std::size_t add(const PieceExtent& extent);

private:
  /// A piece that further records may continue.
  struct OpenPiece {
    std::size_t number = 0;
    double rateHz = 0;
    std::int64_t sampleCount = 0;

    bool takes(const PieceExtent& extent) const;
  };
  /// Open pieces by the time at which the next record should start.
  using OpenPieces = std::multimap<std::int64_t, OpenPiece>;

  OpenPieces::iterator pieceBefore(const PieceExtent& extent);
  void forgetBefore(std::int64_t startUs);

  OpenPieces open_;
  OpenPieces::node_type spare_; ///< of a piece that is over
  std::size_t count_ = 0;
};

/// A piece on the time axis that begins at `referenceMs`, milliseconds since 1970: b is the time of its first sample
/// and delta the interval. Where the records' own times are further from the nominal rate at the end of the piece
/// than half a sample, as when a clock drifts, delta is what their times make it.
struct PieceTiming {
  double b = 0;
  double delta = 0;
};
PieceTiming pieceTiming(const PieceExtent& extent, std::int64_t referenceMs);

} // namespace xov
