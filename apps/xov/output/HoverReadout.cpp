#include "apps/xov/output/HoverReadout.h"

#include <QMouseEvent>
#include <QStringList>
#include <QTextDocument>
#include <QToolTip>

#include <XOV_Graphics/views/map/geoMapView.h>

namespace xov::cli {

namespace {

QString linesOf(const PlotReadout& readout) {
  QStringList lines;
  for (const PlotQuantity& quantity : readout.quantities)
    lines << quantity.text;
  return lines.join(QLatin1Char('\n'));
}

} // namespace

HoverReadout::HoverReadout(XOVView& view) : QObject(&view), view_(view) {
  view.setMouseTracking(true);
  view.installEventFilter(this);
  if (auto* const map = qobject_cast<geoMapView*>(&view)) {
    connect(map, &XOVView::clicked, map, [map](QPointF position) {
      map->setReferencePlace(MapPlace{position.x(), position.y()});
    });
  }
}

bool HoverReadout::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Leave) QToolTip::hideText();
  if (event->type() == QEvent::MouseMove) {
    const auto& move = static_cast<const QMouseEvent&>(*event);
    const QString text = linesOf(view_.readout(view_.convertPointFromWindow(move.scenePosition())));
    if (move.buttons() != Qt::NoButton || text.isEmpty())
      QToolTip::hideText();
    else
      QToolTip::showText(move.globalPosition().toPoint(), Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text,
                         &view_);
  }
  return QObject::eventFilter(watched, event);
}

} // namespace xov::cli
