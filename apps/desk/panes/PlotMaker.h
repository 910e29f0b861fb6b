#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <XOV_Graphics/views/base/XOVView.h>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace xov::desk {

class PlotWork;

/// Runs words behind the name of xov, in the thread that it is called in, and returns the exit status.
using CommandRunner = std::function<int(const std::vector<std::string>& words)>;

/// Runs a command in a thread of its own, which reads and prepares what it draws, and makes its views in the main
/// thread. What the views refer to is there as long as this object.
///
/// Destroying it stops the reading at the next file and waits for nothing; waitForAll() does, before the program
/// ends.
class PlotMaker : public QObject {
  Q_OBJECT
public:
  PlotMaker(const CommandRunner& run, const QStringList& words, QObject* parent = nullptr);
  ~PlotMaker() override;

  /// Pages that can be made; 0 until ready().
  std::size_t pages() const;
  /// The view of a page, of that size or the command's own where it is empty; nullptr when it cannot be made, which
  /// said() tells. The caller destroys it before this object.
  std::unique_ptr<XOVView> make(std::size_t page, const QSize& size);

  /// Waits for the threads of all makers that are no more.
  static void waitForAll();

Q_SIGNALS:
  /// A complaint or a note of the command, one line.
  void said(const QString& text);
  void advanced(const QString& what, qint64 done, qint64 total);
  void ready();
  /// The command has nothing to show; said() told why.
  void failed();

private:
  std::shared_ptr<PlotWork> work_;
};

} // namespace xov::desk
