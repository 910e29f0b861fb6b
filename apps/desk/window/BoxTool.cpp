#include "apps/desk/window/BoxTool.h"

#include "apps/desk/panes/BoxRequests.h"
#include "apps/desk/window/MainWindow.h"

#include <QAction>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QRubberBand>
#include <QStatusBar>
#include <QStyleHints>

#include <XOV_Graphics/views/map/geoMapView.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <cmath>

namespace xov::desk {

namespace {

constexpr int kDigits = 4;
constexpr int kTellMs = 30000; // time to write down what was measured

QPointF toViewPoint(const XOVView& view, QPoint place) { return QPointF(place.x(), view.height() - place.y()); }

// What a box says something about.
bool takesBoxes(const XOVView& view) {
  return qobject_cast<const SeismogramView*>(&view) != nullptr || qobject_cast<const geoMapView*>(&view) != nullptr;
}

QString velocityText(const XOVView& view, QPointF from, QPointF to) {
  const auto* const section = qobject_cast<const MultiSeisView*>(&view);
  const auto found = section != nullptr ? section->apparentVelocity(from, to) : std::nullopt;
  if (!found) return {};
  if (!std::isfinite(found->kmPerSecond)) return BoxTool::tr("at all distances at one time");
  return BoxTool::tr("apparent velocity %1 km/s, slowness %2 s/°")
      .arg(QString::number(found->kmPerSecond, 'g', kDigits), QString::number(found->secondsPerDegree, 'g', kDigits));
}

} // namespace

BoxTool::BoxTool(MainWindow& window) : QObject(&window), window_(window), measuring_(nullptr), beam_(nullptr) {
  const QString menu = QStringLiteral("tools");
  measuring_ = window.addAction(menu, QStringLiteral("measureWithBoxes"), tr("&Measure with Boxes"),
                                Qt::CTRL | Qt::Key_M, [] {});
  measuring_->setCheckable(true);
  beam_ = window.addAction(menu, QStringLiteral("beamOfBox"), tr("&Beam Power of Box"), Qt::CTRL | Qt::Key_B,
                           [this] { showBeam(); });
  beam_->setEnabled(false);
  connect(&window, &MainWindow::paneOpened, this, [this](Pane* pane) {
    connect(pane, &Pane::viewMade, this, [this](XOVView* view) {
      if (takesBoxes(*view)) view->installEventFilter(this);
    });
  });
}

bool BoxTool::eventFilter(QObject* watched, QEvent* event) {
  auto* const view = qobject_cast<XOVView*>(watched);
  if (view == nullptr) return false;
  switch (event->type()) {
  case QEvent::MouseButtonPress:
    return press(*view, static_cast<const QMouseEvent&>(*event));
  case QEvent::MouseMove:
    if (!band_ || band_->parent() != view) return false;
    band_->setGeometry(QRect(pressed_, static_cast<const QMouseEvent&>(*event).position().toPoint()).normalized());
    return true;
  case QEvent::MouseButtonRelease: {
    const auto& release = static_cast<const QMouseEvent&>(*event);
    if (!band_ || band_->parent() != view || release.button() != Qt::LeftButton) return false;
    delete band_;
    const QPoint place = release.position().toPoint();
    if ((place - pressed_).manhattanLength() < QGuiApplication::styleHints()->startDragDistance()) return true;
    for (Pane* const pane : window_.panes()) {
      if (pane->view() != view) continue;
      take(*pane, *view, toViewPoint(*view, pressed_), toViewPoint(*view, place));
      break;
    }
    return true;
  }
  default:
    return false;
  }
}

bool BoxTool::press(XOVView& view, const QMouseEvent& event) {
  const bool isPlain = event.modifiers() == Qt::NoModifier && measuring_->isChecked();
  if (event.button() != Qt::LeftButton || !(isPlain || event.modifiers() == Qt::AltModifier)) return false;
  pressed_ = event.position().toPoint();
  delete band_;
  band_ = new QRubberBand(QRubberBand::Rectangle, &view);
  band_->setGeometry(QRect(pressed_, QSize()));
  band_->show();
  return true;
}

void BoxTool::take(Pane& pane, XOVView& view, QPointF from, QPointF to) {
  const auto* const map = qobject_cast<const geoMapView*>(&view);
  if (map == nullptr) return measure(pane, view, from, to);
  const QRectF area = QRectF(from, to).normalized();
  const std::optional<MapBox> box = map->mapBoxOf(area);
  if (!box) return;
  const auto events = int(map->pointsIn(area).size() + map->mechanismsIn(area).size());
  Q_EMIT mapBoxed(pane.request(), *box);
  window_.openPane(requestForRegion(pane.request(), *box));
  tell(tr("%n symbol(s) in the box", nullptr, events));
}

void BoxTool::measure(const Pane& pane, const XOVView& view, QPointF from, QPointF to) {
  const std::optional<BoxedRecords> boxed = recordsInBoxOf(view, QRectF(from, to).normalized());
  beamRequest_ = boxed ? requestForBeam(pane.request(), *boxed) : std::nullopt;
  beam_->setEnabled(beamRequest_.has_value());
  QStringList texts{velocityText(view, from, to)};
  if (boxed) {
    texts.append(tr("%1 s").arg(QString::number(boxed->seconds.end - boxed->seconds.begin, 'g', kDigits)));
    texts.append(tr("%n record(s)", nullptr, int(boxed->records.size())));
  }
  texts.removeAll(QString());
  tell(texts.join(QStringLiteral("; ")));
}

void BoxTool::showBeam() {
  if (beamRequest_) window_.openPane(*beamRequest_);
}

void BoxTool::tell(const QString& text) { window_.statusBar()->showMessage(text, kTellMs); }

} // namespace xov::desk
