#pragma once

#include <QLabel>

#include <XOV_Graphics/views/base/XOVView.h>

namespace xov::desk {

class MainWindow;

/// Tells in the status bar what the plot under the pointer shows there. On maps, distances count from the last click.
class PaneReadout : public QLabel {
  Q_OBJECT
public:
  explicit PaneReadout(MainWindow& window);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void follow(XOVView& view);
};

} // namespace xov::desk
