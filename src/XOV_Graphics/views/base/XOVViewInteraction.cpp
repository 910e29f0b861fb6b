#include "XOV_Graphics/platform/Drag.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QContextMenuEvent>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// How much of a dragged picture shows under the pointer.
constexpr double kDragOpacity = 0.75;
// Timers count milliseconds; an interval of zero seconds would take the whole event loop.
constexpr double kShortestTrackMs = 1;
constexpr double kLongestTrackMs = 1e9;

QImage fadedTo(const QImage& image, double opacity) {
  QImage faded = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < faded.height(); ++y) {
    uchar* line = faded.scanLine(y);
    std::transform(line, line + 4 * qsizetype(faded.width()), line,
                   [opacity](uchar byte) { return uchar(std::lround(byte * opacity)); });
  }
  return faded;
}

} // namespace

void XOVView::buildMenu() {
  contextualMenu_ = new QMenu(QStringLiteral("test"), this);
  const auto add = [this](const char* title, void (XOVView::*action)(QObject*)) {
    QAction* item = contextualMenu_->addAction(QLatin1String(title));
    connect(item, &QAction::triggered, this, [this, action, item] { (this->*action)(item); });
  };
  add("Save To PDF", &XOVView::savePDF);
  add("Save To TIF", &XOVView::saveTIF);
  add("Save To PNG", &XOVView::savePNG);
  add("Save To JPG", &XOVView::saveJPG);
  add("Copy As PDF", &XOVView::copy);
}

void XOVView::contextMenuEvent(QContextMenuEvent* event) { contextualMenu_->popup(event->globalPos()); }

void XOVView::setController(PlotController* controller) { controller_ = PlotControllerReference(controller); }

void XOVView::mouseDown(const MouseEvent& event) {
  const QPointF point = convertPointFromWindow(event.locationInWindow);
  if (event.modifierFlags.testFlag(Qt::ShiftModifier)) {
    dragOut();
    return;
  }
  if (!containsPoint(iRect_, point) || event.clickCount != 1) return;
  if (PlotController* host = controller()) host->handleClickedMousePosition(viewToData(point, iRect_, limits()));
}

// The picture hangs centred under the pointer, wherever in the view the click was.
void XOVView::dragOut() {
  const QImage picture = snapshot();
  if (picture.isNull()) return;
  Pasteboard pasteboard;
  pasteboard.declareTypes({kTiffType});
  pasteboard.setData(encodeImage(picture, ImageFormat::TiffLzw), kTiffType);
  const QSizeF size = picture.deviceIndependentSize();
  dragPicture(this, std::move(pasteboard), fadedTo(picture, kDragOpacity), {size.width() / 2, size.height() / 2});
}

void XOVView::set_trackMouse(bool track) {
  trackMouse_ = track;
  if (track) {
    auto* timer = new QTimer(this);
    const double milliseconds = std::isfinite(mouseTrackInterval_) ? mouseTrackInterval_ * 1000 : kLongestTrackMs;
    timer->setInterval(int(std::clamp(milliseconds, kShortestTrackMs, kLongestTrackMs)));
    connect(timer, &QTimer::timeout, this, [this] { handleTrackedMousePosition(); });
    timer->start();
    set_mouseTrackTimer(timer);
    return;
  }
  if (mouseTrackTimer_) {
    mouseTrackTimer_->stop();
    mouseTrackTimer_->deleteLater();
  }
  set_mouseTrackTimer(nullptr);
}

void XOVView::handleTrackedMousePosition() {
  if (!isVisible() || window()->isMinimized()) return; // in another tab, say
  const QPointF inWindow = window()->mapFromGlobal(QPointF(QCursor::pos()));
  const QPointF point = convertPointFromWindow(inWindow);
  if (!containsPoint(iRect_, point)) return;
  if (PlotController* host = controller()) host->handleTrackedMousePosition(viewToData(point, iRect_, limits()));
}

void XOVView::resetCursorRects() { addCursorRect(pRect_, Qt::CrossCursor); }

} // namespace xov
