#pragma once

#include "apps/xov/terminal/ThreadScope.h"

#include <QSizeF>

#include <XOV_Graphics/views/base/XOVView.h>
#include <cstddef>
#include <functional>
#include <memory>

namespace xov::cli {

/// The plots of a command that somebody else shows.
struct OfferedPlots {
  std::size_t pages = 0;
  /// Makes the view of a page, counted from 0, of that size; of the command's own where it is empty. In the main
  /// thread only. What the view shows is there until the receiver returns.
  std::function<std::unique_ptr<XOVView>(std::size_t page, const QSizeF& size)> make;
};

/// Takes the plots of a command in place of files and windows.
class PlotReceiver {
public:
  PlotReceiver() = default;
  PlotReceiver(const PlotReceiver&) = delete;
  PlotReceiver& operator=(const PlotReceiver&) = delete;
  virtual ~PlotReceiver() = default;

  /// Returns when no view of these plots is there any more. Called in the thread of the command, which need not be
  /// the main thread.
  virtual void take(const OfferedPlots& plots) = 0;
  /// What the view that is being made shows and does not hold itself, for a receiver that keeps it and returns before
  /// its views are gone.
  virtual void keep(std::shared_ptr<const void> /*shown*/) {}
};

/// While this lives, plots of commands that run in the thread that it was made in go to this receiver.
using PlotReceiverScope = ThreadScope<PlotReceiver*>;

/// The receiver of this thread; nullptr where plots go to files and windows.
inline PlotReceiver* currentPlotReceiver() { return PlotReceiverScope::current(); }

} // namespace xov::cli
