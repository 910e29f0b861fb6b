#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Pasteboard.h"

#include <QImage>
#include <QPointF>

#include <functional>
#include <memory>

class QMimeData;
class QWidget;

namespace xov {

/// A picture on its way out of a view.
struct XOV_EXPORT PictureDrag {
  QWidget* source = nullptr; ///< the view that it comes from
  /// What the receiver gets: image/tiff, and a file of the same picture as text/uri-list, which file managers take.
  std::shared_ptr<const Pasteboard> pasteboard;
  /// What is shown under the pointer.
  QImage picture;
  /// The place of the pointer in the picture, in points from its upper left corner.
  QPointF hotSpot;
};

/// Puts the picture's file beside its TIFF data and starts the drag; returns when it has ended. The file is one of a
/// few in a temporary folder that goes with the process.
XOV_EXPORT void dragPicture(QWidget* source, Pasteboard pasteboard, const QImage& picture, QPointF hotSpot);

/// Starts the platform's drag of a picture, with `data` for the receiver, such as Pasteboard::mimeData() and more of
/// a host's own; returns when it has ended.
XOV_EXPORT void startDrag(const PictureDrag& request, std::unique_ptr<QMimeData> data);

/// Replaces the platform's drag, for tests and for hosts with one of their own. An empty handler brings it back.
XOV_EXPORT void setDragHandler(std::function<void(const PictureDrag&)> handler);

} // namespace xov
