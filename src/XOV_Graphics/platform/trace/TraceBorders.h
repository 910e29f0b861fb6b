#pragma once

#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xov {

/// The curve through samples of an unbroken line, of which there must be some: sub-columns of a strip are blocks of
/// its samples. Border k, 1 <= k < blocks, is the left one of sub-column firstSub + k.
struct TraceCurve {
  const TraceProjection& projection;
  SampleRange samples;
  int firstSub = 0;
  int blocks = 0;
  bool dense = false; ///< so many samples that where the curve crosses a border makes no difference

  const float* values() const { return projection.samples() + samples.begin; }
  std::int32_t count() const { return static_cast<std::int32_t>(samples.size()); }
  double borderColumn(const TraceStrip& strip, int border) const { return strip.curveBorder(firstSub + border); }
};

/// Where a curve crosses the borders between sub-columns.
class TraceBorders {
public:
  /// Room for curves of fewer blocks than this.
  void reserve(std::size_t borders);

  /// Finds the sample at which the segment ends that crosses each border, and, unless the curve is dense, how far
  /// along that segment the border lies. All borders must lie between the curve's first sample and its last.
  void find(const TraceCurve& curve, const TraceStrip& strip);

  /// By border, counted from the curve's first sample, so that it is at least 1; see BlockBorders.h.
  const std::int32_t* cuts() const { return cuts_.data(); }
  const float* fraction() const { return fraction_.data(); }

private:
  bool cutTogether(const TraceCurve& curve, const TraceStrip& strip);
  void cutOneByOne(const TraceCurve& curve, const TraceStrip& strip);
  void cutStraight(const TraceCurve& curve, const TraceStrip& strip, int from, int count, const TimePiece& piece);
  void cutBetween(const TraceCurve& curve, const TraceStrip& strip, int border, std::int64_t sample);

  std::vector<std::int32_t> cuts_;
  std::vector<float> fraction_;
  std::vector<double> columns_; // of borders
};

} // namespace xov
