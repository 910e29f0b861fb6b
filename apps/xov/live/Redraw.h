#pragma once

#include <QTimer>

#include <XOV_Graphics/views/base/XOVView.h>
#include <functional>

namespace xov::cli {

/// Calls `show` at a steady rate from the first event of the event loop on, and has the view drawn after each. The
/// timer is the view's, and may be stopped.
QTimer* redrawEvery(int milliseconds, XOVView& view, std::function<void()> show);

/// Runs the event loop for so long, or until QCoreApplication::exit(); quit() has no say outside of its exec().
void receiveFor(double seconds);

} // namespace xov::cli
