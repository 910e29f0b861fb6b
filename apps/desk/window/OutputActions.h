#pragma once

#include <QObject>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/platform/View.h>
#include <vector>

namespace xov::desk {

class MainWindow;

/// The ways for plots out of the window: files, paper, the clipboard, and the command that draws the same.
class OutputActions : public QObject {
  Q_OBJECT
public:
  explicit OutputActions(MainWindow& window);

  /// The plots of all panes as pages of one PDF file, in the order of the panes.
  Status writePages(const QString& path) const;
  /// The plot of each pane as a file of its own in a folder, as "drum_1.png"; no file takes the place of another.
  Status writeFiles(const QString& folder, const QString& suffix) const;

  /// The line for a shell that draws what the current pane shows; empty where it shows nothing.
  QString command() const;

private:
  std::vector<View*> views() const;
  void copy(const QByteArray& data, const QString& type) const;
  void copyPicture() const;
  void tell(const Status& status, const QString& done) const;

  MainWindow& window_;
};

} // namespace xov::desk
