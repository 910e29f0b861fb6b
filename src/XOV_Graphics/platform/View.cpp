#include "XOV_Graphics/platform/View.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/MemoryReserve.h"
#include "XOV_Graphics/platform/pixels/KeptPixels.h"
#include "XOV_Graphics/platform/surface/PaperContext.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "XOV_Graphics/platform/surface/Picture.h"
#include "XOV_Graphics/platform/surface/SvgPage.h"
#include "XOV_Graphics/platform/surface/ViewAccessibility.h"

#include <QApplication>
#include <QMetaClassInfo>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QStyleHints>
#include <QStyleOption>
#include <QThread>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// A resize counts as ended when nothing has changed for this long.
constexpr int kLiveResizeMs = 150;
constexpr double kMinPixelRatio = 0.1;
constexpr double kMaxPixelRatio = 32;
constexpr int kLargestWidget = 16777215; // QWIDGETSIZE_MAX

QRect widgetGeometry(const QRectF& frame) {
  const auto whole = [](double value, int low) {
    return std::isfinite(value) ? int(std::lround(std::clamp(value, double(low), double(kLargestWidget)))) : 0;
  };
  return {whole(frame.x(), -kLargestWidget), whole(frame.y(), -kLargestWidget), whole(frame.width(), 0),
          whole(frame.height(), 0)};
}

// Qt keeps a list of all widgets that no lock protects.
QWidget* parentInOwnThread(QWidget* parent) {
  const QCoreApplication* app = QCoreApplication::instance();
  if (app == nullptr) qFatal("View::View(): a view needs a QApplication, which must be made first");
  if (QThread::currentThread() != app->thread())
    qFatal("View::View(): views are made in the thread of the QApplication, and this is another one");
  return parent;
}

} // namespace

View::View(QWidget* parent) : QWidget(parentInOwnThread(parent)), keptPixels_(std::make_unique<KeptPixels>()) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  installViewAccessibility();
  liveResizeTimer_.setSingleShot(true);
  liveResizeTimer_.setInterval(kLiveResizeMs);
  connect(&liveResizeTimer_, &QTimer::timeout, this,
          [this] { contained("after a resize", [this] { viewDidEndLiveResize(); }); });
}

View::View(const QRectF& frame, QWidget* parent) : View(parent) {
  if (frame.isNull()) return;
  const QRect geometry = widgetGeometry(frame);
  frameSize_ = geometry.size();
  resize(frameSize_);
  // Moving a window moves its title bar; its geometry would be that of what lies below it.
  const QPoint place(std::max(0, geometry.x()), std::max(0, geometry.y()));
  if (parent != nullptr) {
    move(geometry.topLeft());
  } else if (!place.isNull()) {
    move(place);
  }
}

View::~View() = default;

QSize View::sizeHint() const { return frameSize_.isValid() ? frameSize_ : usualSize(); }

QSize View::minimumSizeHint() const { return usualSize() / 3; }

QSize View::usualSize() const { return {480, 360}; }

void View::drawRect(const QRectF&) {}

void View::draw(GraphicsContext& context, const QRectF& area) {
  const GraphicsContext::Pass pass(context);
  ++drawings_;
  const auto done = qScopeGuard([this] { --drawings_; });
  drawRect(area);
}

void View::drawAll(GraphicsContext& context) {
  draw(context, bounds());
  if (!isDrawing()) didDraw();
}

void View::drawInto(GraphicsContext& context) {
  contained("drawing", [&] { drawAll(context); });
}

void View::didDraw() {}

QString View::kind() const {
  const QMetaObject* meta = metaObject();
  const int index = meta->indexOfClassInfo("shows");
  return QString::fromLatin1(meta->classInfo(index).value());
}

QString View::spokenName() const {
  const QString name = kind();
  return name.left(1).toUpper() + name.mid(1);
}

QString View::spokenDescription() const { return {}; }

void View::setNeedsDisplay(bool needed) {
  if (needed) update();
}

void View::forgetScaledImages() { keptPixels_->images.clear(); }

void View::viewDidEndLiveResize() {}

// What is made of the view for others, or nothing of it when that throws. Who hears that a drawing is over may take
// the view away, so that comes last.
template <typename Made>
Made View::madeOfView(
    const std::function<Made(const std::function<void(GraphicsContext&)>& drawing)>& make) noexcept {
  bool isDrawn = false;
  const auto made = guarded(QString(), [&]() -> Result<Made> {
    needMemory(kMemoryToDraw);
    return make([&](GraphicsContext& context) {
      draw(context, bounds());
      isDrawn = true;
    });
  });
  exportError_ = made.error();
  if (isDrawn && !isDrawing()) contained("after a drawing", [this] { didDraw(); });
  return made.value();
}

QByteArray View::dataWithPDFInsideRect(const QRectF& rect) {
  return madeOfView<QByteArray>([&](const auto& drawing) { return pdfPage(rect, drawing); });
}

QByteArray View::dataWithSVGInsideRect(const QRectF& rect) {
  return madeOfView<QByteArray>([&](const auto& drawing) { return svgPage(rect, drawing); });
}

void View::paint(QPainter& painter, const QRectF& target) {
  const QRectF view = bounds();
  if (!painter.isActive() || view.isEmpty() || !(target.width() > 0 && target.height() > 0)) return;
  const PainterState before(painter);
  painter.setClipRect(target, Qt::IntersectClip);
  const QTransform toTarget(target.width() / view.width(), 0, 0, -target.height() / view.height(), target.left(),
                            target.top() + target.height());
  contained("drawing", [&] {
    PaperContext context(painter, toTarget * painter.worldTransform(), view, nullptr);
    draw(context, view);
    if (!isDrawing()) didDraw();
  });
}

QImage View::pictureOfRect(const QRectF& rect) {
  return madeOfView<QImage>([&](const auto& drawing) {
    return pictureOfPart(rect, bounds(), exportPixelRatio(), drawing, keptPixels_.get());
  });
}

double View::exportPixelRatio() const {
  const double ratio = exportPixelRatio_ > 0 ? exportPixelRatio_ : devicePixelRatioF();
  return std::clamp(ratio, kMinPixelRatio, kMaxPixelRatio);
}

void View::setExportPixelRatio(double ratio) { exportPixelRatio_ = std::isfinite(ratio) ? std::max(0.0, ratio) : 0; }

QPointF View::convertPointFromWindow(QPointF locationInWindow) const {
  const QPointF local = mapFrom(window(), locationInWindow);
  return {local.x(), height() - local.y()};
}

QPointF View::convertPointToWindow(QPointF viewPoint) const {
  return mapTo(window(), QPointF(viewPoint.x(), height() - viewPoint.y()));
}

void View::resetCursorRects() {}

void View::addCursorRect(const QRectF& rect, const QCursor& cursor) { cursorRects_.push_back({rect, cursor}); }

// The cursor itself waits for the next movement, so that setting rectangles up anew does not make it flicker.
void View::discardCursorRects() { cursorRects_.clear(); }

void View::renewCursorRects() {
  discardCursorRects();
  resetCursorRects();
}

// Qt's loop of events does not bear what is thrown into it, by handlers of ours, of a host or for want of memory.
bool View::event(QEvent* event) {
  bool taken = true;
  contained("an event", [&] { taken = takeEvent(event); });
  return taken;
}

// Qt keeps one cursor a widget, so the host's own must be told from those of rectangles: by who changes it.
bool View::takeEvent(QEvent* event) {
  if (event->type() == QEvent::CursorChange && !changesCursor_) {
    const bool isUnset = !testAttribute(Qt::WA_SetCursor) || (isWindow() && cursor().shape() == Qt::ArrowCursor);
    hasHostsCursor_ = !isUnset; // a window keeps the attribute when its cursor is unset
  }
  return QWidget::event(event);
}

// The cursor of a rectangle, or none.
void View::showCursor(const QCursor* cursor) {
  if (hasHostsCursor_) return;
  changesCursor_ = true;
  if (cursor != nullptr) {
    setCursor(*cursor);
  } else {
    unsetCursor();
  }
  changesCursor_ = false;
}

void View::mouseDown(const MouseEvent&) {}

// Draws into a picture whose pixels are those of the screen, and puts that on the window: the window shows exactly
// what an export of the same pixel ratio holds. All of the view is drawn, even where less is shown: lines on its
// edges and dense traces depend on where it ends.
void View::paintEvent(QPaintEvent* event) {
  const double ratio = devicePixelRatioF();
  const QRectF dirty = event->rect();
  const QRectF area(dirty.x(), height() - dirty.y() - dirty.height(), dirty.width(), dirty.height());
  const QPointF corner = QPointF(mapTo(window(), QPoint(0, 0))) * ratio;
  const QPointF fraction(corner.x() - std::floor(corner.x()), corner.y() - std::floor(corner.y()));
  const KeptDrawing wanted{{}, {}, size(), fraction, ratio};
  const bool overlayOnly = renewsOverlayOnly(event->region(), wanted);
  overlayArea_ = {};
  QPainter painter(this);
  if (!overlayOnly) {
    const AlignedPicture drawn = alignedPicture(
        size(), ratio, fraction, [&](GraphicsContext& context) { draw(context, area); }, keptPixels_.get());
    kept_ = wanted;
    kept_.image = drawn.image;
    kept_.topLeft = drawn.topLeft;
  }
  painter.drawImage(kept_.topLeft, kept_.image);
  paintOverlay(painter, overlay_, height());
  if (overlay_.isEmpty()) kept_ = {};
  if (focusShown_) {
    QStyleOptionFocusRect mark;
    mark.initFrom(this);
    mark.rect = rect().adjusted(1, 1, -1, -1);
    mark.backgroundColor = Qt::white;
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &mark, &painter, this);
  }
  painter.end();
  if (overlayOnly) return;
  renewCursorRects();
  // Qt goes on with the widget when it is painted: who takes it away does so later.
  if (!isDrawing())
    QMetaObject::invokeMethod(
        this, [this] { didDraw(); }, Qt::QueuedConnection);
}

void View::setOverlay(const ViewOverlay& overlay) {
  if (overlay == overlay_) return;
  const QRegion touched = overlayRegion(overlay_, size()) + overlayRegion(overlay, size());
  overlay_ = overlay;
  overlayArea_ += touched;
  update(touched);
}

// What asks for more than the marks is a drawing that the host, or the window system, wants.
bool View::renewsOverlayOnly(const QRegion& region, const KeptDrawing& wanted) const {
  const bool keeps = !kept_.image.isNull() && kept_.size == wanted.size && kept_.corner == wanted.corner &&
                     kept_.ratio == wanted.ratio;
  return keeps && (region - overlayArea_).isEmpty();
}

// Who goes through a window with the keyboard sees where it is. A click shows nothing, and draws nothing anew.
void View::setFocusShown(bool shown) {
  if (shown == focusShown_) return;
  focusShown_ = shown;
  update();
}

void View::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason) {
    setFocusShown(true);
  }
}

void View::focusOutEvent(QFocusEvent* event) {
  if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) setFocusShown(false);
}

void View::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isVisible()) liveResizeTimer_.start();
}

void View::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  renewCursorRects();
}

void View::mousePressEvent(QMouseEvent* event) { press(event); }

void View::mouseDoubleClickEvent(QMouseEvent* event) { press(event); }

void View::press(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  const QPointF inWindow = mapTo(window(), event->position());
  mouseDown({inWindow, event->modifiers(), countClick(event->position())});
}

// Presses near each other within the double click time count up; the window system only knows single and double.
int View::countClick(QPointF position) {
  const QStyleHints* hints = QGuiApplication::styleHints();
  const bool near = (position - lastClick_).manhattanLength() <= hints->mouseDoubleClickDistance();
  const bool soon = sinceLastClick_.isValid() && sinceLastClick_.elapsed() <= hints->mouseDoubleClickInterval();
  clickCount_ = near && soon ? clickCount_ + 1 : 1;
  lastClick_ = position;
  sinceLastClick_.start();
  return clickCount_;
}

void View::mouseMoveEvent(QMouseEvent* event) {
  const QPointF point(event->position().x(), height() - event->position().y());
  const auto hit = std::find_if(cursorRects_.begin(), cursorRects_.end(),
                                [&](const CursorRect& area) { return area.rect.contains(point); });
  showCursor(hit == cursorRects_.end() ? nullptr : &hit->cursor);
  event->ignore();
}

void View::leaveEvent(QEvent* event) {
  showCursor(nullptr);
  QWidget::leaveEvent(event);
}

} // namespace xov
