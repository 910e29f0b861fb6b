#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <string>
#include <vector>

namespace xov {
class MultiSeisView;
}

namespace xov::cli {

/// The options of `xov section` that say where strips stand, how high traces are, and what of them is filled.
class SectionStyle {
public:
  void addOptions(const Options& options);

  /// Throws where values do not fit each other; for the parser.
  void check() const;

  /// The records that can be drawn so: without those that do not know where they stand along the axis that the user
  /// wants, unless none does. Says so.
  SeismogramArray placed(SeismogramArray records) const;

  /// Settles the view.
  void apply(MultiSeisView& view) const;

private:
  std::string distanceAxis_;
  bool azimuthAxis_ = false;
  std::string scaling_;
  std::string wiggleFill_;
  std::vector<std::string> wiggleColors_;
};

} // namespace xov::cli
