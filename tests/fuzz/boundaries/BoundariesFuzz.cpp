// Whatever the bytes are, the readers of plate boundaries give segments that hold together, none larger than it may
// be, and no more points than the text has lines.

#include "XOV_Graphics/map/BoundaryText.h"
#include "tests/fuzz/Claims.h"

#include <QLoggingCategory>

#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

using Bounds = SegmentCollector::Bounds;

constexpr qsizetype kLongestTitle = 127;

void requireSense(const XOVPolygonArray& polygons, const QByteArray& text, std::size_t mostPoints) {
  std::size_t points = 0;
  for (const auto& polygon : polygons) {
    const std::size_t count = polygon->xp().size();
    require(count == std::size_t(polygon->npts()) && count == polygon->yp().size(), "the arrays fit the count");
    require(count <= mostPoints, "a segment holds no more points than it may");
    require(polygon->title().size() <= kLongestTitle, "a title fits the line buffer");
    require(!polygon->title().contains(QChar(0)), "a title ends at a zero byte");
    points += count;
  }
  // Each point is a byte at least, and its line end; a segment that was closed for its length repeats one.
  require(points <= std::size_t(text.size()) + polygons.size(), "there are no points beyond the text");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  QLoggingCategory::setFilterRules(QStringLiteral("xov.warning=false"));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
  XOVPolygonArray bird;
  SegmentCollector birdSegments(kBirdSegmentPoints, Bounds::NotComputed, bird);
  readBirdBoundaries(text, birdSegments);
  requireSense(bird, text, kBirdSegmentPoints);

  // Twice, as two files are: the second meets what the first one left.
  XOVPolygonArray typed;
  SegmentCollector typedSegments(kTypedSegmentPoints, Bounds::Computed, typed);
  readTypedBoundaries(text, typedSegments);
  readTypedBoundaries(text, typedSegments);
  requireSense(typed, text + text, kTypedSegmentPoints);
  return 0;
}
