#pragma once

#include "apps/desk/panes/PlotRequest.h"

#include <QObject>
#include <QPointF>

#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <map>

namespace xov::desk {

class MainWindow;
class Pane;

/// A click in a drum shows that stretch of the recording in a pane of its own, which further clicks use again.
class DrumZoom : public QObject {
  Q_OBJECT
public:
  explicit DrumZoom(MainWindow& window);

  /// What shows a stretch of a drum as a trace; what is done to the drum's records is done here, too.
  static PlotRequest requestFor(const PlotRequest& drum, const DrumStretch& stretch);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void show(Pane& drum, const helicorderView& view, QPointF point);

  MainWindow& window_;
  QPointF pressed_;          // where the pointer was last pressed on a drum, in its view points
  std::map<int, int> zooms_; // numbers of zoom panes by those of drums
};

} // namespace xov::desk
