#include "apps/desk/desktop/Painting.h"

#include <QPainter>

namespace xov::desk {

void paintInDevice(QPainter& painter, QPoint place, const QImage& image) {
  const QTransform before = painter.worldTransform();
  painter.setWorldTransform({});
  painter.drawImage(place, image);
  painter.setWorldTransform(before);
}

} // namespace xov::desk
