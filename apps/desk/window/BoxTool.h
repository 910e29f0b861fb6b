#pragma once

#include "apps/desk/panes/PlotRequest.h"

#include <QObject>
#include <QPointer>

#include <XOV_Graphics/views/base/XOVView.h>
#include <XOV_Graphics/views/map/MapPlace.h>
#include <optional>

class QAction;
class QMouseEvent;
class QRubberBand;

namespace xov::desk {

class MainWindow;
class Pane;

/// Boxes that are drawn with Alt and the left button, or without Alt while measuring is switched on: on seismograms
/// the status bar tells the apparent velocity from corner to corner, and the records of the box can be shown as beam
/// power; on a map the events of the box are shown in a pane of their own, and are listed.
class BoxTool : public QObject {
  Q_OBJECT
public:
  explicit BoxTool(MainWindow& window);

Q_SIGNALS:
  /// A box was drawn on a map.
  void mapBoxed(const xov::desk::PlotRequest& map, const xov::MapBox& box);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  bool press(XOVView& view, const QMouseEvent& event);
  void take(Pane& pane, XOVView& view, QPointF from, QPointF to);
  void measure(const Pane& pane, const XOVView& view, QPointF from, QPointF to);
  void showBeam();
  void tell(const QString& text);

  MainWindow& window_;
  QAction* measuring_;
  QAction* beam_;
  std::optional<PlotRequest> beamRequest_; // of the last box
  QPointer<QRubberBand> band_;             // while a box is drawn; a child of its view
  QPoint pressed_;                         // in the view's widget
};

} // namespace xov::desk
