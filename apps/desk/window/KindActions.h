#pragma once

#include "apps/desk/panes/PaneKinds.h"

#include <QObject>

namespace xov::desk {

class MainWindow;

/// Further panes of the files that the current one shows: those as a drum, as a spectrogram, and so on.
class KindActions : public QObject {
  Q_OBJECT
public:
  explicit KindActions(MainWindow& window);

private:
  void offer();

  MainWindow& window_;
};

} // namespace xov::desk
