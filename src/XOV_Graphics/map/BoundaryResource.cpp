#include "XOV_Graphics/map/BoundaryResource.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/base/TextFile.h"

namespace xov {

bool loadBoundaryResource(const QString& name, BoundaryReader read, SegmentCollector& segments) {
  const QString path = resourcePath(name);
  QString error = QStringLiteral("%1: is not among the resources").arg(name);
  const bool loaded = !path.isEmpty() && withoutThrowing(&error, [&] {
    QByteArray text;
    if (!readTextFile(path, text, &error)) return false;
    read(text, segments);
    return true;
  });
  if (!loaded) qCWarning(log, "plate boundaries: %s", qUtf8Printable(error));
  return loaded;
}

} // namespace xov
