#pragma once

#include "apps/desk/settings/DeskSettings.h"

#include <QObject>

namespace xov::desk {

class FileActions;
class FilesTool;
class MainWindow;
class ThemeActions;

/// Makes the window as it was when it was closed last, and remembers it when it closes.
class Memory : public QObject {
  Q_OBJECT
public:
  Memory(MainWindow& window, FileActions& files, FilesTool& list, ThemeActions& themes);

  /// What is worth remembering now.
  DeskSettings now() const;
  /// The window as it was; panes only where `withPanes`.
  void restore(const DeskSettings& settings, bool withPanes);

private:
  MainWindow& window_;
  FileActions& files_;
  FilesTool& list_;
  ThemeActions& themes_;
};

} // namespace xov::desk
