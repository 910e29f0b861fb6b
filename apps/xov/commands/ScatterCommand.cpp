#include "apps/xov/commands/ScatterCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/inputs/ValueRange.h"
#include "apps/xov/output/TitledView.h"

#include <XOV_Graphics/views/xy/XOV2DScatterPlotView.h>
#include <algorithm>
#include <limits>

namespace xov::cli {

namespace {

constexpr double kSmallestDiameter = 0.1;
constexpr double kLargestDiameter = 1000;
constexpr double kMargin = 0.05; // of the range, to each side: circles at the extremes are not cut by the frame

// The view draws no circle at the first of its points, yet each row of a file is one to see: the first row comes
// twice.
XOV2DScatterPlotView::Buffer withFirstRepeated(std::vector<float> values) {
  values.insert(values.begin(), values.front());
  return std::make_shared<std::vector<float>>(std::move(values));
}

} // namespace

void ScatterCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  logAxes_.addOptions(options);
  options.add("--diameter", diameter_, "Diameter of the circles in points (default 12)")
      .typeName("D")
      .check(numberFromTo(kSmallestDiameter, kLargestDiameter));
  output_.addOptions(options);
}

ExitCode ScatterCommand::run() {
  std::optional<ColumnData> data = inputs_.read();
  if (!data) return ExitCode::Failed;
  logAxes_.leaveOutWhatHasNoPlace(*data, inputs_);
  const auto extremes = logAxes_.limitsOf(*data, inputs_);
  if (!extremes) return ExitCode::Failed;
  const PlotLimits limits = widenedBy(*extremes, kMargin, logAxes_.axes());
  const auto x = withFirstRepeated(std::move(data->columns[0]));
  const auto y = withFirstRepeated(std::move(data->columns[1]));
  return output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<TitledView<XOV2DScatterPlotView>>(frame);
    logAxes_.apply(*view);
    view->setXpYpNpts(x, y, std::int32_t(std::min<std::size_t>(x->size(), std::numeric_limits<std::int32_t>::max())));
    view->setSymbolDiameter(float(diameter_));
    view->setXLimitsMinMax(limits.xmin, limits.xmax);
    view->setYLimitsMinMax(limits.ymin, limits.ymax);
    view->setXLabelString(inputs_.xLabelOr(data->names[0]));
    view->setYLabelString(inputs_.yLabelOr(data->names[1]));
    view->setTitle(output_.titleOr(inputs_.title()));
    return view;
  });
}

} // namespace xov::cli
