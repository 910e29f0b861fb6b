#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/seismic/SeismogramRecord.h>

namespace xov::cli {

/// Whether records that belong together are put on one time axis.
enum class TimeAxes { Common, AsTheyAre };

/// What the commands do to records before they draw them on one time axis, and the option --raw.
class RecordPlot {
public:
  void addOptions(const Options& options);

  /// The records on a common time axis, if wanted, each without its mean unless the user wants it raw. Says when they
  /// keep several time axes.
  SeismogramArray prepare(SeismogramArray records, TimeAxes axes = TimeAxes::Common) const;

private:
  bool raw_ = false;
};

/// The records on a common time axis; says when they keep several.
SeismogramArray onOneAxis(SeismogramArray records);

} // namespace xov::cli
