#pragma once

#include "apps/xov/options/Options.h"

namespace xov::cli {

/// How live channels that are late look.
struct Lateness {
  bool isShown = false; ///< whether the latency of channels is written beside them
  double seconds = 0;   ///< that a channel may be late before it turns grey; 0 where it does not
};

/// The options --latency and --late of commands that show channels as they arrive.
class LateOptions {
public:
  void addOptions(const Options& options);

  /// What the user wants.
  const Lateness& lateness() const { return lateness_; }
  /// Whether the user gave any of them.
  bool isGiven() const { return lateness_.isShown || lateness_.seconds > 0; }

private:
  Lateness lateness_;
};

} // namespace xov::cli
