#pragma once

#include <QObject>

namespace xov::desk {

class FilesPanel;
class MainWindow;

/// Puts the list of files beside the panes of a window, and what is chosen there into panes.
class FilesTool : public QObject {
  Q_OBJECT
public:
  explicit FilesTool(MainWindow& window);

  FilesPanel& panel() { return *panel_; }

private:
  FilesPanel* panel_;
};

} // namespace xov::desk
