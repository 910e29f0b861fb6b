#pragma once

#include "apps/desk/panes/PlotRequest.h"

#include <QObject>

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/views/map/MapPlace.h>

namespace xov::desk {

class EventPanel;
class FilesPanel;
class MainWindow;

/// The events of boxes on maps in a table beside the panes. One that is opened there shows what the list of files has
/// of it as a record section from its origin time on.
class EventsTool : public QObject {
  Q_OBJECT
public:
  EventsTool(MainWindow& window, FilesPanel& files);

  /// Lists what a map has in a box, without holding up the window.
  void show(const PlotRequest& map, const MapBox& box);

private:
  void take(HypocentreArray events, const QStringList& problems);
  void open(const Hypocentre& event);

  MainWindow& window_;
  FilesPanel& files_;
  EventPanel* panel_;
  int asked_ = 0; // so that an answer that comes late is not taken for that of the last box
};

} // namespace xov::desk
