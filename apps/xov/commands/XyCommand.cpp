#include "apps/xov/commands/XyCommand.h"

#include "apps/xov/output/TitledView.h"

#include <XOV_Graphics/views/xy/xyPlotView.h>
#include <algorithm>
#include <limits>

namespace xov::cli {

void XyCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  logAxes_.addOptions(options);
  lineWidth_.addOptions(options);
  output_.addOptions(options);
}

ExitCode XyCommand::run() {
  std::optional<ColumnData> read = inputs_.read();
  if (!read) return ExitCode::Failed;
  const auto data = std::make_shared<ColumnData>(*std::move(read));
  logAxes_.leaveOutWhatHasNoPlace(*data, inputs_);
  const std::vector<float>& x = data->columns[0];
  const std::vector<float>& y = data->columns[1];
  const auto limits = logAxes_.limitsOf(*data, inputs_);
  if (!limits) return ExitCode::Failed;
  return output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<TitledView<xyPlotView>>(frame);
    logAxes_.apply(*view);
    view->setDataPointersXY(x, y);
    Output::keep(data);
    view->setNpts(std::int32_t(std::min<std::size_t>(x.size(), std::numeric_limits<std::int32_t>::max())));
    view->setXLimitsMinMax(limits->xmin, limits->xmax);
    view->setYLimitsMinMax(limits->ymin, limits->ymax);
    lineWidth_.apply(*view);
    view->setXLabelString(inputs_.xLabelOr(data->names[0]));
    view->setYLabelString(inputs_.yLabelOr(data->names[1]));
    view->setTitle(output_.titleOr(inputs_.title()));
    return view;
  });
}

} // namespace xov::cli
