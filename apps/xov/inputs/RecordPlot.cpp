#include "apps/xov/inputs/RecordPlot.h"

#include "apps/xov/terminal/Messages.h"

#include <XOV_Graphics/seismic/prepare/Amplitudes.h>
#include <XOV_Graphics/seismic/prepare/CommonAxis.h>

namespace xov::cli {

void RecordPlot::addOptions(const Options& options) {
  options.addFlag("--raw", raw_, "Draw samples as they are; else the mean of each record is taken away");
}

SeismogramArray RecordPlot::prepare(SeismogramArray records, TimeAxes axes) const {
  if (axes == TimeAxes::Common) records = onOneAxis(std::move(records));
  return raw_ ? records : withoutMeans(std::move(records), MeanOf::Record);
}

SeismogramArray onOneAxis(SeismogramArray records) {
  SeismogramArray aligned = onCommonAxis(std::move(records));
  if (const std::size_t axes = countTimeAxes(aligned); axes > 1)
    note(QStringLiteral("the records lie far apart in time or have no reference time: seconds count from %1 moments")
             .arg(axes));
  return aligned;
}

} // namespace xov::cli
