#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/platform/Drag.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPointer>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// How much of a dragged picture shows under the pointer.
constexpr double kDragOpacity = 0.75;
constexpr char kMenuKey[] = "xovMenuKey"; // an item's property
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
  contextualMenu_->setToolTipsVisible(true); // they name the keys
  const auto add = [this](const char* title, void (XOVView::*action)(QObject*), const QKeySequence& shortcut) {
    QAction* item = contextualMenu_->addAction(QLatin1String(title));
    setMenuKey(item, shortcut);
    connect(item, &QAction::triggered, this, [this, action, item] { (this->*action)(item); });
  };
  constexpr auto kSave = Qt::CTRL | Qt::SHIFT;
  add("Save To PDF", &XOVView::savePDF, kSave | Qt::Key_P);
  add("Save To TIF", &XOVView::saveTIF, kSave | Qt::Key_T);
  add("Save To PNG", &XOVView::savePNG, kSave | Qt::Key_N);
  add("Save To JPG", &XOVView::saveJPG, kSave | Qt::Key_J);
  add("Copy As PDF", &XOVView::copy, QKeySequence::Copy);
}

// The items' own shortcuts stay the host's to set: a key of ours is heard only by the view that has the focus, and
// only when nothing of the host's has taken it; see keyPressEvent().
void XOVView::setMenuKey(QAction* item, const QKeySequence& key) {
  item->setProperty(kMenuKey, key);
  item->setToolTip(key.toString(QKeySequence::NativeText));
}

QKeySequence XOVView::menuKey(const QAction* item) { return item->property(kMenuKey).value<QKeySequence>(); }

void XOVView::openMenu(QPoint globalPosition) { contextualMenu_->popup(globalPosition); }

void XOVView::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  openMenu(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

// Keys come here only when no shortcut of the host's has taken them.
void XOVView::keyPressEvent(QKeyEvent* event) {
  const bool shiftF10 = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
  if (event->key() == Qt::Key_Menu || shiftF10) {
    openMenu(mapToGlobal(rect().center()));
    return;
  }
  const QList<QAction*> items = contextualMenu_->actions();
  const QKeySequence pressed(event->keyCombination());
  const auto chosen =
      std::find_if(items.begin(), items.end(), [&](const QAction* item) { return menuKey(item) == pressed; });
  if (chosen == items.end()) {
    View::keyPressEvent(event);
  } else {
    (*chosen)->trigger();
  }
}

void XOVView::setController(PlotController* controller) { controller_ = PlotControllerReference(controller); }

void XOVView::mouseDown(const MouseEvent& event) {
  const QPointF point = convertPointFromWindow(event.locationInWindow);
  if (event.modifierFlags.testFlag(Qt::ShiftModifier)) {
    dragOut();
    return;
  }
  if (!containsPoint(iRect_, point) || event.clickCount != 1) return;
  report(dataAt(point), &PlotController::handleClickedMousePositionInView, &XOVView::clicked);
}

// The controller may close the window that the view is in.
void XOVView::report(QPointF position, void (PlotController::*message)(QPointF, XOVView&),
                     void (XOVView::*signal)(QPointF)) {
  const QPointer<XOVView> self(this);
  if (PlotController* host = controller()) contained("a controller", [&] { (host->*message)(position, *this); });
  if (self) contained("a click or the pointer", [&] { Q_EMIT(this->*signal)(position); });
}

// The picture hangs centred under the pointer, wherever in the view the click was.
void XOVView::dragOut() {
  const QPointer<XOVView> self(this); // who hears of the drawing may take the view away
  const QImage picture = snapshot();
  if (picture.isNull() || !self) return;
  Pasteboard pasteboard;
  pasteboard.declareTypes({kTiffType});
  pasteboard.setData(encodeImage(picture, ImageFormat::TiffLzw), kTiffType);
  const QSizeF size = picture.deviceIndependentSize();
  dragPicture(this, std::move(pasteboard), fadedTo(picture, kDragOpacity), {size.width() / 2, size.height() / 2});
}

void XOVView::set_trackMouse(bool track) {
  if (track) {
    auto* timer = new QTimer(this);
    const double milliseconds = std::isfinite(mouseTrackInterval_) ? mouseTrackInterval_ * 1000 : kLongestTrackMs;
    timer->setInterval(int(std::clamp(milliseconds, kShortestTrackMs, kLongestTrackMs)));
    connect(timer, &QTimer::timeout, this, [this] { handleTrackedMousePosition(); });
    timer->start();
    set_mouseTrackTimer(timer);
  } else {
    if (mouseTrackTimer_) {
      mouseTrackTimer_->stop();
      mouseTrackTimer_->deleteLater();
    }
    set_mouseTrackTimer(nullptr);
  }
  change(trackMouse_, track);
}

void XOVView::handleTrackedMousePosition() {
  if (!isVisible() || window()->isMinimized()) return; // in another tab, say
  const QPointF inWindow = window()->mapFromGlobal(QPointF(QCursor::pos()));
  const QPointF point = convertPointFromWindow(inWindow);
  if (!containsPoint(iRect_, point)) return;
  report(dataAt(point), &PlotController::handleTrackedMousePositionInView, &XOVView::tracked);
}

void XOVView::resetCursorRects() { addCursorRect(pRect_, Qt::CrossCursor); }

} // namespace xov
