#pragma once

#include "bench/Report.h"

#include <functional>
#include <string>
#include <vector>

namespace xov::bench {

/// Names of the works of this file: "W7-12" and "W7-36", real-time displays of that many channels.
std::vector<std::string> liveDisplayNames();

/// Whether makeLiveDisplay() knows the name.
bool isLiveDisplay(const std::string& name);

/// Redraws the next frame of a display each time it is called; empty for an unknown name.
std::function<void()> liveRedraws(const std::string& name);

/// Times redraws of a display of an hour at 100 Hz on 1600 x 900 points that scrolls: before each, the samples of a
/// sixtieth of a second arrive at every channel. A redraw is everything from the new time span to the finished
/// picture.
Measurement measureLiveDisplay(const std::string& name, int redraws);

/// What share of a frame at 60 frames a second the redraws of displays take; empty when none was measured.
QString frameShares(const std::vector<Measurement>& measurements);

} // namespace xov::bench
