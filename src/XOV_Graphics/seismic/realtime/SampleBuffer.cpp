#include "XOV_Graphics/seismic/realtime/SampleBuffer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kNothing = std::numeric_limits<float>::quiet_NaN();

// Farther away than this, places are not exact in double precision; recordings stay well below.
constexpr double kFarthestPlace = 1e15;

// Dropped samples stay until they are this share of the capacity, so that clearing them costs little per sample.
constexpr std::int64_t kClearingShare = 4;
constexpr std::int64_t kLeastClearing = 1024;

} // namespace

SampleBuffer::SampleBuffer(double deltaSeconds, std::int64_t capacity)
    : delta_(deltaSeconds > 0 && std::isfinite(deltaSeconds) ? deltaSeconds : 1),
      capacity_(std::max<std::int64_t>(capacity, 1)) {}

std::span<const float> SampleBuffer::samples() const { return std::span(storage_).subspan(dropped_); }

double SampleBuffer::startSeconds() const { return samples().empty() ? 0 : anchor_ + double(first_) * delta_; }

void SampleBuffer::append(double startSeconds, std::span<const float> piece) {
  if (piece.empty() || !std::isfinite(startSeconds)) return;
  if (samples().empty()) startAt(startSeconds);
  if ((startSeconds - anchor_) / delta_ > kFarthestPlace) startAt(startSeconds);
  const double exact = (startSeconds - anchor_) / delta_;
  if (exact < -kFarthestPlace) return;
  const std::int64_t place = std::llround(exact);
  const std::int64_t end = first_ + std::ssize(samples());
  if (place == end) anchor_ += (exact - double(place)) * delta_;

  const std::int64_t newEnd = std::max(end, place + std::ssize(piece));
  const std::int64_t newBegin = std::max(std::min(first_, place), newEnd - capacity_);
  const std::int64_t skipped = std::max<std::int64_t>(newBegin - place, 0);
  if (skipped >= std::ssize(piece)) return;
  const std::int64_t begin = first_;
  reframe(newBegin, newEnd);
  const std::span<const float> kept = piece.subspan(std::size_t(skipped));
  std::ranges::copy(kept, storage_.begin() + std::ptrdiff_t(dropped_) + (place + skipped - newBegin));
  keepIndex(begin, end, place + skipped, place + std::ssize(piece));
}

/// Empties the buffer; the next sample has that time.
void SampleBuffer::startAt(double startSeconds) {
  storage_.clear();
  dropped_ = 0;
  first_ = 0;
  anchor_ = startSeconds;
}

/// Makes the buffer hold the places from `begin` to before `end`, at most as many as its capacity; `end` lies at or
/// behind the present one.
void SampleBuffer::reframe(std::int64_t begin, std::int64_t end) {
  const std::int64_t count = std::ssize(samples());
  if (begin >= first_ + count) {
    storage_.clear();
    dropped_ = 0;
  } else if (begin < first_) {
    storage_.erase(storage_.begin(), storage_.begin() + std::ptrdiff_t(dropped_));
    dropped_ = 0;
    storage_.insert(storage_.begin(), std::size_t(first_ - begin), kNothing);
  } else {
    dropped_ += std::size_t(begin - first_);
  }
  first_ = begin;
  if (std::int64_t(dropped_) > capacity_ / kClearingShare + kLeastClearing) {
    storage_.erase(storage_.begin(), storage_.begin() + std::ptrdiff_t(dropped_));
    dropped_ = 0;
  }
  storage_.resize(dropped_ + std::size_t(end - begin), kNothing);
}

/// Tells the index what is new: the buffer held the places from `begin` to before `end`, and those from `from` to
/// before `to` have other samples.
void SampleBuffer::keepIndex(std::int64_t begin, std::int64_t end, std::int64_t from, std::int64_t to) {
  const std::span<const float> all = samples();
  if (first_ < begin || first_ >= end) {
    index_.build(all);
    return;
  }
  index_.dropped(all, first_ - begin);
  index_.changed(all, from - first_, std::min(to, end) - first_);
  index_.appended(all, first_ + std::ssize(all) - end);
}

} // namespace xov
