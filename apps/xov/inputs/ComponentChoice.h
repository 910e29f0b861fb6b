#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/prepare/Components.h>
#include <string>
#include <vector>

namespace xov::cli {

/// --components: which records are the three components of a station.
class ComponentChoice {
public:
  void addOption(const Options& options, const std::string& help, const std::string& typeName);

  /// Picked by their codes, or by what records tell where none were given. An error says what chooses others.
  Result<ThreeComponents> of(const SeismogramArray& records) const;

private:
  std::vector<std::string> codes_; // not given, or three
};

} // namespace xov::cli
