#pragma once

#include "apps/desk/panes/PlotMaker.h"
#include "apps/xov/output/PlotReceiver.h"
#include "apps/xov/terminal/Listener.h"

#include <QMutex>
#include <QObject>
#include <QSemaphore>

#include <atomic>

namespace xov::desk {

/// The command that a PlotMaker runs, shared by the maker and the thread.
class PlotWork : public QObject, private cli::Listener, private cli::PlotReceiver {
  Q_OBJECT
public:
  PlotWork(CommandRunner run, const QStringList& words);

  /// In the thread of the work.
  void run();

  // In the main thread.

  std::size_t pages() const;
  std::unique_ptr<XOVView> make(std::size_t page, const QSize& size);
  /// Ends the work: the views are no more.
  void release();

Q_SIGNALS:
  void heard(const QString& text);
  void advancedTo(const QString& what, qint64 done, qint64 total);
  void offered();
  void ended();

private:
  void said(const QString& text) override;
  void advanced(const QString& what, std::int64_t done, std::int64_t total) override;
  void take(const cli::OfferedPlots& plots) override;

  CommandRunner run_;
  std::vector<std::string> words_;
  std::atomic<bool> isReleased_ = false;
  std::atomic<const cli::OfferedPlots*> offered_ = nullptr;
  QSemaphore released_;
};

} // namespace xov::desk
