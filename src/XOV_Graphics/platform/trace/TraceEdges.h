#pragma once

#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstdint>

namespace xov {

/// Samples in a row that one unbroken line runs through, begin <= i < end.
struct SampleRange {
  std::int64_t begin = 0;
  std::int64_t end = 0;

  std::int64_t size() const { return end - begin; }
};

/// For the edges between sub-columns firstEdge <= j < firstEdge + count, which must lie right of the range's first
/// sample and not right of its last: writes to `index` the sample at which the segment ends that crosses the edge,
/// counted from range.begin (so it is at least 1), and to `fraction`, unless it is null, how far along that segment
/// the edge lies, 0 to 1.
void findEdges(const TraceProjection& projection, const TraceStrip& strip, SampleRange range, int firstEdge,
               int count, std::int32_t* index, float* fraction);

} // namespace xov
