#include "apps/xov/commands/GridCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/inputs/ValueRange.h"

#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/grid/GridCell.h>
#include <XOV_Graphics/grid/RawGrid.h>
#include <XOV_Graphics/grid/XyzGrid.h>
#include <XOV_Graphics/platform/Colors.h>
#include <XOV_Graphics/platform/GraphicsContext.h>
#include <XOV_Graphics/seismic/Extrema.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace xov::cli {

namespace {

constexpr double kLargestCoordinate = 1e30; // the span of two still fits into single precision
// What axes take of the default size, and the bounds of what they leave.
constexpr double kAxesWidth = 96;
constexpr double kAxesHeight = 80;
constexpr double kDataWidth = 624;
constexpr double kLeastHeight = 220;
constexpr double kMostHeight = 720;

/// The grid on white paper under its title, with its peak where that is wanted.
class GridPlot : public XOVImageView {
public:
  using XOVImageView::XOVImageView;
  bool showPeak = false;

  void drawRect(const QRectF& dirty) override {
    GraphicsContext::current().setColor(colors::white);
    fillBounds();
    XOVImageView::drawRect(dirty);
    if (inLiveResize()) return;
    if (showPeak) drawMaxLocation();
    drawTitleTopCentered();
  }
};

// The view's own search is exact for square grids only.
void markPeak(GridPlot& view, const Grid& grid) {
  const std::optional<GridCell> peak = largestCell(grid.values, grid.columns);
  view.showPeak = peak.has_value();
  if (!peak) return;
  const auto along = [](float min, float max, std::int32_t cell, std::int32_t count) {
    return count == 1 ? min : min + (max - min) * float(cell) / float(count - 1);
  };
  view.setMaxPointXY(along(view.xmin(), view.xmax(), peak->column, grid.columns),
                     along(view.ymax(), view.ymin(), peak->row, grid.rows));
}

// Colours run from `min` to `max`, or symmetrically about zero where it lies between them and nobody says otherwise.
void setColorRange(XOVImageView& view, const Grid& grid, std::optional<double> min, std::optional<double> max) {
  const Extrema ends = finiteExtrema(grid.values);
  const float low = min ? float(*min) : ends.min;
  const float high = max ? float(*max) : ends.max;
  view.setMinMax(low, high);
  if (!min && !max && low < 0 && high > 0) return;
  const ValueRange range = nonEmptyRange(low, std::max(low, high));
  view.setMinMax(range.min, range.max);
  if (view.minValue() == range.min && view.maxValue() == range.max) view.setScaleFactor(range.max - range.min);
}

} // namespace

QSizeF sizeForCells(int rows, int columns) {
  const double height = std::clamp(kDataWidth * rows / columns, kLeastHeight, kMostHeight);
  return {kDataWidth + kAxesWidth, std::round(height) + kAxesHeight};
}

void GridCommand::addOptions(const Options& options) {
  options.add("FILE", file_, "Lines of x, y and value, or a headerless grid with --rows and --columns")
      .required()
      .typeName("");
  options.add("--rows", rows_, "Rows of a headerless grid")
      .typeName("N")
      .check(wholeNumberFromTo(1, std::numeric_limits<int>::max()));
  options.add("--columns", columns_, "Columns of a headerless grid")
      .typeName("N")
      .check(wholeNumberFromTo(1, std::numeric_limits<int>::max()));
  options.add("--type", cell_, "Cells of a headerless grid: int16 or float32 (default int16)")
      .typeName("TYPE")
      .check(oneOf({"int16", "float32"}));
  options.add("--byte-order", order_, "Byte order of a headerless grid: little or big (default little)")
      .typeName("ORDER")
      .check(oneOf({"little", "big"}));
  options.add("--extent", extent_, "Limits of the axes: left, right, lower and upper (default: of the file)")
      .typeName("L R B T")
      .check(numberFromTo(-kLargestCoordinate, kLargestCoordinate))
      .takesExactly(4);
  options.add("--min", min_, "Value at the first colour (default: the smallest value)")
      .typeName("V")
      .check(numberFromTo(-kLargestCoordinate, kLargestCoordinate));
  options.add("--max", max_, "Value at the last colour (default: the largest value)")
      .typeName("V")
      .check(numberFromTo(-kLargestCoordinate, kLargestCoordinate));
  options.addFlag("--topo", topo_, "Colour values as elevations in metres");
  options.addFlag("--peak", peak_, "Mark the largest value");
  options.add("--xlabel", xLabel_, "Label of the X axis").typeName("TEXT");
  options.add("--ylabel", yLabel_, "Label of the Y axis").typeName("TEXT");
  image_.addOptions(options);
  output_.addOptions(options);
  options.afterParsing([this] { checkOptions(); });
}

void GridCommand::checkOptions() const {
  if ((rows_ > 0) != (columns_ > 0)) throw UsageError("--rows", "expected --rows and --columns together");
  expectMinBelowMax(min_, max_);
  if (!extent_.empty() && !(float(extent_[0]) < float(extent_[1]) && float(extent_[2]) < float(extent_[3])))
    throw UsageError("--extent", "expected left below right and lower below upper");
}

Result<Grid> GridCommand::read() const {
  const QString path = fileNameFromBytes(file_);
  if (rows_ == 0) return readXyzGrid(path);
  RawGridLayout layout;
  layout.rows = rows_;
  layout.columns = columns_;
  layout.cell = cell_ == "int16" ? RawCell::Int16 : RawCell::Float32;
  layout.order = order_ == "little" ? ByteOrder::Little : ByteOrder::Big;
  return readRawGrid(path, layout);
}

std::unique_ptr<XOVView> GridCommand::makeView(const QRectF& frame, const Grid& grid,
                                               const GridFloats& values) const {
  auto view = std::make_unique<GridPlot>(frame);
  const std::vector<double> extent =
      extent_.empty() ? std::vector<double>{grid.xmin, grid.xmax, grid.ymin, grid.ymax} : extent_;
  const ValueRange x = nonEmptyRange(nearestFinite(extent[0]), nearestFinite(extent[1]));
  const ValueRange y = nonEmptyRange(nearestFinite(extent[2]), nearestFinite(extent[3]));
  view->setXLimitsMinMax(x.min, x.max);
  view->setYLimitsMinMax(y.min, y.max);
  view->setUseTopoValues(topo_);
  view->setMissingCellsTransparent(true);
  image_.apply(*view);
  view->setupImageDataNROWSNCOLS(values, grid.rows, grid.columns);
  if (peak_) markPeak(*view, grid);
  setColorRange(*view, grid, min_, max_);
  view->updateImagePlanes();
  view->setXLabelString(QString::fromStdString(xLabel_));
  view->setYLabelString(QString::fromStdString(yLabel_));
  view->setTitle(output_.titleOr(QFileInfo(fileNameFromBytes(file_)).fileName()));
  return view;
}

ExitCode GridCommand::run() {
  Result<Grid> grid = read();
  if (!grid) {
    complain(grid.error());
    return ExitCode::Failed;
  }
  const auto held = std::make_shared<const Grid>(std::move(grid).value());
  const GridFloats values(held, &held->values);
  output_.setDefaultSize(sizeForCells(held->rows, held->columns));
  return output_.deliver([&](const QRectF& frame) { return makeView(frame, *held, values); });
}

} // namespace xov::cli
