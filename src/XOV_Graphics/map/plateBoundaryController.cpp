#include "XOV_Graphics/map/plateBoundaryController.h"

#include "XOV_Graphics/map/BoundaryResource.h"

namespace xov {

plateBoundaryController::plateBoundaryController() : boundaries_(std::make_shared<XOVPolygonArray>()) {}

void plateBoundaryController::setBoundaries(std::shared_ptr<XOVPolygonArray> boundaries) {
  boundaries_ = boundaries ? std::move(boundaries) : std::make_shared<XOVPolygonArray>();
}

bool plateBoundaryController::loadBirdPlateBoundaries() {
  SegmentCollector segments(kBirdSegmentPoints, SegmentCollector::Bounds::NotComputed, *boundaries_);
  return loadBoundaryResource(QStringLiteral("PB2002_boundaries.txt"), readBirdBoundaries, segments);
}

bool plateBoundaryController::loadUTPlateBoundaries() {
  SegmentCollector segments(kTypedSegmentPoints, SegmentCollector::Bounds::Computed, *boundaries_);
  bool all = true;
  for (const char* const name : {"trench.txt", "ridge.txt", "transform.txt"})
    all = loadBoundaryResource(QLatin1StringView(name), readTypedBoundaries, segments) && all;
  return all;
}

} // namespace xov
