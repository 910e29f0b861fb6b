#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <string>
#include <vector>

namespace xov::cli {

/// The options --picks and --no-picks of commands that draw picks.
class PickOptions {
public:
  void addOptions(const Options& options);

  /// The records with the picks that are to be drawn: their own, unless the user wants others. Says for which ones
  /// arrivals are not known, and which names are no picks.
  SeismogramArray apply(SeismogramArray records) const;

private:
  std::vector<std::string> names_;
  bool none_ = false;
};

} // namespace xov::cli
