#include "apps/xov/XyCommand.h"

#include "apps/xov/TitledView.h"
#include "apps/xov/ValueRange.h"
#include "views/xy/xyPlotView.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <limits>

namespace xov::cli {

void XyCommand::addOptions(CLI::App& options) {
  inputs_.addOptions(options);
  output_.addOptions(options);
}

ExitCode XyCommand::run() {
  const std::optional<ColumnData> data = inputs_.read();
  if (!data) return ExitCode::Failed;
  const std::vector<float>& x = data->columns[0];
  const std::vector<float>& y = data->columns[1];
  const auto limits = limitsOfPoints(x, y);
  if (!limits) {
    inputs_.complainOf(QStringLiteral("holds no finite numbers to draw"));
    return ExitCode::Failed;
  }
  return output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<TitledView<xyPlotView>>(frame);
    view->setDataPointersXY(x, y);
    view->setNpts(std::int32_t(std::min<std::size_t>(x.size(), std::numeric_limits<std::int32_t>::max())));
    view->setXLimitsMinMax(limits->xmin, limits->xmax);
    view->setYLimitsMinMax(limits->ymin, limits->ymax);
    view->setXLabelString(inputs_.xLabelOr(data->names[0]));
    view->setYLabelString(inputs_.yLabelOr(data->names[1]));
    view->setTitle(output_.titleOr(inputs_.title()));
    return view;
  });
}

} // namespace xov::cli
