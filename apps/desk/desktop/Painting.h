#pragma once

#include <QImage>
#include <QPoint>

class QPainter;

namespace xov::desk {

/// Puts an image on the painter's device, in the device's own coordinates.
void paintInDevice(QPainter& painter, QPoint place, const QImage& image);

} // namespace xov::desk
