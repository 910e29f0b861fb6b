#include "map/plateBoundaryController.h"

#include "map/BoundaryText.h"
#include "map/TextFile.h"
#include "platform/Log.h"
#include "platform/Resources.h"

namespace xov {

namespace {

using Reader = void (*)(const QByteArray& text, SegmentCollector& segments);

/// Says in the log why it is false.
bool loadResource(const char* name, Reader read, SegmentCollector& segments) {
  const QString path = resourcePath(QString::fromLatin1(name));
  QString error = QStringLiteral("%1: is not among the resources").arg(QLatin1StringView(name));
  const bool loaded = !path.isEmpty() && withoutThrowing(&error, [&] {
    QByteArray text;
    if (!readTextFile(path, text, &error)) return false;
    read(text, segments);
    return true;
  });
  if (!loaded) qCWarning(log, "plate boundaries: %s", qUtf8Printable(error));
  return loaded;
}

} // namespace

plateBoundaryController::plateBoundaryController() : boundaries_(std::make_shared<XOVPolygonArray>()) {}

void plateBoundaryController::setBoundaries(std::shared_ptr<XOVPolygonArray> boundaries) {
  boundaries_ = boundaries ? std::move(boundaries) : std::make_shared<XOVPolygonArray>();
}

bool plateBoundaryController::loadBirdPlateBoundaries() {
  SegmentCollector segments(kBirdSegmentPoints, SegmentCollector::Bounds::NotComputed, *boundaries_);
  return loadResource("PB2002_boundaries.txt", readBirdBoundaries, segments);
}

bool plateBoundaryController::loadUTPlateBoundaries() {
  SegmentCollector segments(kTypedSegmentPoints, SegmentCollector::Bounds::Computed, *boundaries_);
  bool all = true;
  for (const char* const name : {"trench.txt", "ridge.txt", "transform.txt"})
    all = loadResource(name, readTypedBoundaries, segments) && all;
  return all;
}

} // namespace xov
