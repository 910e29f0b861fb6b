#include "XOV_Graphics/map/BoundaryResource.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/Resources.h"

namespace xov {

namespace {

constexpr qint64 kMostBytes = 64 << 20; // full-size boundaries have some hundred kilobytes

Status load(const QString& name, BoundaryReader read, SegmentCollector& segments) {
  const QString path = resourcePath(name);
  if (path.isEmpty()) return Error{name + QStringLiteral(": is not among the resources")};
  const Result<QByteArray> text = readWholeFile(path, kMostBytes);
  if (!text) return Error{text.error()};
  read(*text, segments);
  return {};
}

} // namespace

bool loadBoundaryResource(const QString& name, BoundaryReader read, SegmentCollector& segments) {
  const Status loaded = guarded(name, [&] { return load(name, read, segments); });
  if (!loaded) qCWarning(log, "plate boundaries: %s", qUtf8Printable(loaded.error()));
  return bool(loaded);
}

} // namespace xov
