#pragma once

#include "apps/desk/panes/LiveRequests.h"

#include <QObject>

namespace xov::desk {

class MainWindow;

/// The way of live seismograms into the window: a dialog that asks for a server, and a pane of what it sends.
class LiveActions : public QObject {
  Q_OBJECT
public:
  explicit LiveActions(MainWindow& window);

private:
  void ask();

  MainWindow& window_;
  LiveSource last_; // that was connected to
};

} // namespace xov::desk
