#pragma once

#include <QObject>

#include <XOV_Graphics/views/navigation/LinkedPlots.h>
#include <XOV_Graphics/views/navigation/PlotNavigator.h>

class QAction;

namespace xov::desk {

class MainWindow;
class Pane;

/// Mouse and keys move every plot over its data; seismograms show the same time where that is wanted.
class PaneHands : public QObject {
  Q_OBJECT
public:
  explicit PaneHands(MainWindow& window);

private:
  void take(const Pane& pane, XOVView& view);
  void link(const Pane& pane, PlotNavigator& navigator);
  void linkAll();
  void addStep(const char* name, const QString& text, void (PlotNavigator::*step)());
  PlotNavigator* current() const;

  MainWindow& window_;
  LinkedPlots* linked_;
  QAction* linkTimes_;
};

} // namespace xov::desk
