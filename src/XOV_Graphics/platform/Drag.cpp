#include "XOV_Graphics/platform/Drag.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/WholeFile.h"

#include <QDrag>
#include <QMimeData>
#include <QPixmap>
#include <QTemporaryDir>
#include <QUrl>
#include <QWidget>

namespace xov {

namespace {

constexpr char kUriListType[] = "text/uri-list";
// A receiver may read the file after the drop; this many drags may be under way before a name is used again.
constexpr int kKeptFiles = 16;

std::function<void(const PictureDrag&)>& dragHandler() {
  static std::function<void(const PictureDrag&)> handler;
  return handler;
}

// Writes the TIFF bytes where another program can read them; an empty path when that fails.
QString temporaryTiff(const QByteArray& tiff) {
  static const QTemporaryDir folder;
  static int count = 0;
  if (!folder.isValid() || tiff.isEmpty()) return {};
  const QString path =
      folder.filePath(QStringLiteral("plot_%1.tif").arg(count++ % kKeptFiles, 2, 10, QLatin1Char('0')));
  QString error;
  if (writeFileAtomically(path, tiff, &error)) return path;
  qCWarning(log) << "dragged picture:" << qUtf8Printable(error);
  return {};
}

} // namespace

void startDrag(const PictureDrag& request, std::unique_ptr<QMimeData> data) {
  // The drag belongs to its source and deletes itself.
  auto* drag = new QDrag(request.source);
  drag->setMimeData(data.release());
  drag->setPixmap(QPixmap::fromImage(request.picture));
  drag->setHotSpot(request.hotSpot.toPoint());
  drag->exec(Qt::CopyAction);
}

void dragPicture(QWidget* source, Pasteboard pasteboard, const QImage& picture, QPointF hotSpot) {
  const QString file = temporaryTiff(pasteboard.data(kTiffType));
  if (!file.isEmpty()) {
    Pasteboard withFile;
    withFile.declareTypes(pasteboard.types() + QStringList(kUriListType));
    for (const QString& type : pasteboard.types())
      withFile.setData(pasteboard.data(type), type);
    withFile.setData(QUrl::fromLocalFile(file).toEncoded() + "\r\n", kUriListType);
    pasteboard = std::move(withFile);
  }
  const PictureDrag request{source, std::make_shared<const Pasteboard>(std::move(pasteboard)), picture, hotSpot};
  if (const auto handler = dragHandler()) { // it may set another one
    handler(request);
  } else {
    startDrag(request, request.pasteboard->mimeData());
  }
}

void setDragHandler(std::function<void(const PictureDrag&)> handler) { dragHandler() = std::move(handler); }

} // namespace xov
