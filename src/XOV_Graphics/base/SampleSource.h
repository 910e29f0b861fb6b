#pragma once

#include "XOV_Graphics/base/Export.h"

namespace xov {

class SampleIndex;

/// Samples that have an address each without being all in memory: those that are asked for are put where they belong.
class XOV_EXPORT SampleSource {
public:
  SampleSource() = default;
  SampleSource(const SampleSource&) = delete;
  SampleSource& operator=(const SampleSource&) = delete;
  virtual ~SampleSource();

  /// Puts the samples at begin <= p < end into their places, where they stay until as many are let go. What cannot be
  /// read any more is NaN. May be called by several threads. Addresses beyond the samples are passed over.
  virtual void hold(const float* begin, const float* end) = 0;
  /// Lets go once what hold() with the same addresses held; what nobody holds may leave memory.
  virtual void letGo(const float* begin, const float* end) noexcept = 0;
};

/// Samples that are in their places while this lives. Without a source they always are, and nothing happens.
class XOV_EXPORT HeldSamples {
public:
  /// Holds the samples from begin up to end while this lives; a source may be null.
  HeldSamples(SampleSource* source, const float* begin, const float* end)
      : source_(source),
        begin_(begin),
        end_(end) {
    if (source_ != nullptr) source_->hold(begin_, end_);
  }
  ~HeldSamples() {
    if (source_ != nullptr) source_->letGo(begin_, end_);
  }
  HeldSamples(const HeldSamples&) = delete;
  HeldSamples& operator=(const HeldSamples&) = delete;

private:
  SampleSource* source_;
  const float* begin_;
  const float* end_;
};

/// Where samples lie, and what there is to know of them.
struct XOV_EXPORT BorrowedSamples {
  /// The first of them; null where there are none.
  const float* samples = nullptr;
  const SampleIndex* index = nullptr; ///< of their extremes; null where there is none
  SampleSource* source = nullptr;     ///< that must hold those that are read; null where all are in memory
};

} // namespace xov
