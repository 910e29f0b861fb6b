#pragma once

#include <QObject>
#include <QStringList>

class QMenu;
class QMimeData;

namespace xov::desk {

class MainWindow;

/// The ways for files into the window: dialogs, those opened last, the clipboard, and what is dropped.
class FileActions : public QObject {
  Q_OBJECT
public:
  explicit FileActions(MainWindow& window);

  QStringList recent() const { return recent_; }
  void setRecent(const QStringList& paths);
  void addRecent(const QStringList& paths);

  /// The files and folders that data name, as addresses or as lines of text; those that are there.
  static QStringList pathsIn(const QByteArray& addresses, const QByteArray& text);

private:
  void fillRecentMenu();
  void paste();

  MainWindow& window_;
  QMenu* recentMenu_;
  QStringList recent_;
};

} // namespace xov::desk
