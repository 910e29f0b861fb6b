#pragma once

#include <QObject>

namespace xov::desk {

class MainWindow;
class ProcessingPanel;

/// Puts the steps of the current pane beside the panes of a window. Each change can be taken back.
class ProcessingTool : public QObject {
  Q_OBJECT
public:
  explicit ProcessingTool(MainWindow& window);

  ProcessingPanel& panel() { return *panel_; }

private:
  void showCurrent();
  void setRaw(bool isRaw);

  MainWindow& window_;
  ProcessingPanel* panel_;
};

} // namespace xov::desk
