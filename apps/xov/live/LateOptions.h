#pragma once

#include "apps/xov/options/Options.h"

namespace xov::cli {

/// The options --latency and --late of commands that show channels as they arrive.
class LateOptions {
public:
  void addOptions(const Options& options);

  /// Whether the latency of channels is written beside them.
  bool isShown() const { return isShown_; }
  /// The seconds that a channel may be late before it turns grey; 0 where it does not.
  double seconds() const { return seconds_; }
  /// Whether the user gave any of them.
  bool isGiven() const { return isShown_ || seconds_ > 0; }

private:
  bool isShown_ = false;
  double seconds_ = 0;
};

} // namespace xov::cli
