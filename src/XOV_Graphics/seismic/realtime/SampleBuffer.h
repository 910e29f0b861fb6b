#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/SampleIndex.h"

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// The latest samples of a channel, in one piece and evenly spaced; NaN stands where none arrived. Times are seconds
/// since 1970 (UTC).
///
/// Pieces may come in any order and overlap. Each is laid on the samples' even spacing at the nearest place; what was
/// there before is replaced, and what is older than the newest `capacity` samples is dropped. A piece that goes on
/// where the newest one ended, to half a sample, moves the spacing with it, so that a clock that runs fast or slow
/// opens no gaps.
class XOV_EXPORT SampleBuffer {
public:
  /// An interval that is not above 0 counts as 1 s, a capacity below 1 as 1.
  SampleBuffer(double deltaSeconds, std::int64_t capacity);

  /// Puts a piece where it belongs. Nothing happens for a time that is not finite. Takes no longer than the piece and
  /// the capacity warrant, whatever the time is.
  void append(double startSeconds, std::span<const float> piece);

  /// All samples from the oldest to the newest; valid until the next append().
  std::span<const float> samples() const;
  /// Their extremes, kept up as pieces arrive: what a piece does not touch is not read again.
  const SampleIndex& index() const { return index_; }
  /// Time of the oldest sample; 0 when there is none.
  double startSeconds() const;
  /// Time between samples in seconds.
  double deltaSeconds() const { return delta_; }
  /// The most samples that it holds.
  std::int64_t capacity() const { return capacity_; }

private:
  void startAt(double startSeconds);
  void reframe(std::int64_t begin, std::int64_t end);
  void keepIndex(std::int64_t begin, std::int64_t end, std::int64_t from, std::int64_t to);

  double delta_;
  std::int64_t capacity_;
  // Place i of the even spacing is at anchor_ + i · delta_; the oldest sample has place first_.
  double anchor_ = 0;
  std::int64_t first_ = 0;
  // The samples are at the end; before them are `dropped_` that the next clearing removes.
  std::vector<float> storage_;
  std::size_t dropped_ = 0;
  SampleIndex index_;
};

} // namespace xov
