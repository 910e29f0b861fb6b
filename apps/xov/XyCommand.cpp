#include "apps/xov/XyCommand.h"

#include "apps/xov/ColumnFile.h"
#include "apps/xov/ValueRange.h"
#include "views/xy/xyPlotView.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace xov::cli {

namespace {

/// The line plot under a title, which the view leaves to its host.
class TitledXyPlot : public xyPlotView {
public:
  using xyPlotView::xyPlotView;

  void drawRect(const QRectF& dirty) override {
    xyPlotView::drawRect(dirty);
    drawTitleTopCentered();
  }
};

QString labelOr(const std::optional<std::string>& given, const QString& fallback) {
  return given ? QString::fromStdString(*given) : fallback;
}

} // namespace

void XyCommand::addOptions(CLI::App& options) {
  options.add_option("FILE", file_, "Text or CSV file of columns, or - for standard input")
      ->required()
      ->type_name("");
  options.add_option("--columns", columns_, "Columns to draw, by number or heading (default 1 2)")->type_name("X Y");
  options.add_option("--xlabel", xLabel_, "Label of the X axis (default: the column's heading)")->type_name("TEXT");
  options.add_option("--ylabel", yLabel_, "Label of the Y axis (default: the column's heading)")->type_name("TEXT");
  output_.addOptions(options);
}

ExitCode XyCommand::run() {
  const QString file = QString::fromStdString(file_);
  const QStringList wanted = {QString::fromStdString(columns_[0]), QString::fromStdString(columns_[1])};
  const Result<ColumnData> data = readColumns(file, wanted);
  if (!data) {
    complain(data.error());
    return ExitCode::Failed;
  }
  const std::vector<float>& x = data->columns[0];
  const std::vector<float>& y = data->columns[1];
  const auto limits = limitsOfPoints(x, y);
  if (!limits) {
    complain(file + QStringLiteral(": holds no finite numbers to draw"));
    return ExitCode::Failed;
  }
  const QString fallbackTitle = file == QLatin1String("-") ? QString() : QFileInfo(file).completeBaseName();
  return output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<TitledXyPlot>(frame);
    view->setDataPointersXY(x, y);
    view->setNpts(std::int32_t(std::min<std::size_t>(x.size(), std::numeric_limits<std::int32_t>::max())));
    view->setXLimitsMinMax(limits->xmin, limits->xmax);
    view->setYLimitsMinMax(limits->ymin, limits->ymax);
    view->setXLabelString(labelOr(xLabel_, data->names[0]));
    view->setYLabelString(labelOr(yLabel_, data->names[1]));
    view->setTitle(output_.titleOr(fallbackTitle));
    return view;
  });
}

} // namespace xov::cli
