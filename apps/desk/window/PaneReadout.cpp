#include "apps/desk/window/PaneReadout.h"

#include "apps/desk/window/MainWindow.h"

#include <QMouseEvent>
#include <QStatusBar>

#include <XOV_Graphics/views/map/geoMapView.h>

namespace xov::desk {

PaneReadout::PaneReadout(MainWindow& window) {
  setObjectName(QStringLiteral("readout"));
  setAccessibleName(tr("What is under the pointer"));
  setTextFormat(Qt::PlainText);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  // A long line must not widen the window.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  window.statusBar()->addWidget(this, 1);
  connect(&window, &MainWindow::paneOpened, this,
          [this](Pane* pane) { connect(pane, &Pane::viewMade, this, [this](XOVView* view) { follow(*view); }); });
}

void PaneReadout::follow(XOVView& view) {
  view.setMouseTracking(true);
  view.installEventFilter(this);
  if (auto* const map = qobject_cast<geoMapView*>(&view)) {
    connect(map, &XOVView::clicked, map, [map](QPointF position) {
      map->setReferencePlace(MapPlace{position.x(), position.y()});
    });
  }
}

bool PaneReadout::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Leave) clear();
  if (event->type() == QEvent::MouseMove) {
    const auto& move = static_cast<const QMouseEvent&>(*event);
    const auto& view = static_cast<const XOVView&>(*watched);
    setText(view.readout(view.convertPointFromWindow(move.scenePosition())).text());
  }
  return QLabel::eventFilter(watched, event);
}

} // namespace xov::desk
