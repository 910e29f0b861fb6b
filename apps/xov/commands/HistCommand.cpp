#include "apps/xov/commands/HistCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/inputs/ValueRange.h"
#include "apps/xov/output/Desktop.h"
#include "apps/xov/output/TitledView.h"

#include <XOV_Graphics/views/xy/XOVHistogramView.h>
#include <algorithm>
#include <cmath>
#include <new>

namespace xov::cli {

namespace {

constexpr double kFarthestBin = 1e30; // beyond, the width of a range may be too large for single precision

void removeWhatIsNotFinite(std::vector<float>& values) {
  std::erase_if(values, [](float value) { return !std::isfinite(value); });
}

} // namespace

BinRange binRange(float lowest, float highest, std::int32_t bins, std::optional<double> min,
                  std::optional<double> max) {
  if (min && max) return {float(*min), float(*max)};
  if (max) return {std::min(lowest, nonEmptyRange(float(*max), float(*max)).min), float(*max)};
  const float lower = min ? float(*min) : lowest;
  const ValueRange values = nonEmptyRange(lower, std::max(lower, highest));
  const double binWidth = (double(values.max) - double(values.min)) / bins;
  return {min ? lower : values.min, nearestFinite(double(values.max) + binWidth)};
}

BinRange logBinRange(float lowest, float highest, std::int32_t bins, std::optional<double> min,
                     std::optional<double> max) {
  const auto logarithm = [](std::optional<double> end) -> std::optional<double> {
    if (!end) return {};
    return std::log10(*end);
  };
  const BinRange logs = binRange(std::log10(lowest), std::log10(highest), bins, logarithm(min), logarithm(max));
  return {nearestFinite(std::pow(10.0, double(logs.min))), nearestFinite(std::pow(10.0, double(logs.max)))};
}

void HistCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  logAxes_.addOptions(options);
  options.add("--bins", bins_, "Number of bins (default 20)")
      .typeName("N")
      .check(wholeNumberFromTo(1, XOVHistogramView::kMostBins));
  options.add("--min", min_, "Lower end of the range of the bins (default: the smallest value)")
      .typeName("V")
      .check(numberFromTo(-kFarthestBin, kFarthestBin));
  options.add("--max", max_, "Upper end of the range of the bins (default: one bin above the largest value)")
      .typeName("V")
      .check(numberFromTo(-kFarthestBin, kFarthestBin));
  options.addFlag("--remove-mean", removeMean_, "Subtract the mean of the values from them first");
  options.addFlag("--dump", dump_, "Print the bins as text; draw only if there is -o, too");
  lineWidth_.addOptions(options);
  output_.addOptions(options);
  options.afterParsing([this] { checkRange(); });
}

// Compared as the view will see them.
void HistCommand::checkRange() const {
  expectMinBelowMax(min_, max_);
  if (!logAxes_.axes().x) return;
  for (const auto& [option, end] : {std::pair("--min", min_), {"--max", max_}})
    if (end && !(float(*end) > 0)) throw UsageError(option, "expected a number above 0 with --log-x");
  if (removeMean_) throw UsageError("--remove-mean", "does not go with --log-x");
}

std::unique_ptr<XOVHistogramView> HistCommand::makeView(const QRectF& frame, const ColumnData& data) const {
  const std::vector<float>& values = data.columns[0];
  auto view = std::make_unique<TitledView<XOVHistogramView>>(frame);
  // Neither fails for numbers of values and bins that come this far, unless memory runs out.
  if (!view->setValuesNPts(values.data(), std::int32_t(values.size()))) throw std::bad_alloc();
  if (removeMean_) view->removeMeanFromValues();
  logAxes_.apply(*view);
  const BinRange range = logAxes_.axes().x ? logBinRange(view->minValue(), view->maxValue(), bins_, min_, max_)
                                           : binRange(view->minValue(), view->maxValue(), bins_, min_, max_);
  view->setNBinsMinMax(bins_, range.min, range.max);
  if (!view->binValues()) throw std::bad_alloc();
  lineWidth_.apply(*view);
  view->setXLabelString(inputs_.xLabelOr(data.names[0]));
  view->setYLabelString(inputs_.yLabelOr(QStringLiteral("Count")));
  view->setTitle(output_.titleOr(inputs_.title()));
  return view;
}

ExitCode HistCommand::run() {
  std::optional<ColumnData> data = inputs_.read();
  if (!data) return ExitCode::Failed;
  logAxes_.leaveOutWhatHasNoPlace(*data, inputs_);
  removeWhatIsNotFinite(data->columns[0]);
  if (data->columns[0].empty()) {
    inputs_.complainOf(QStringLiteral("holds no finite numbers to draw"));
    return ExitCode::Failed;
  }
  if (dump_ && !output_.toFile()) {
    const Desktop desktop(DesktopUse::Files); // a view wants one, drawn or not
    print(makeView(QRectF(), *data)->description());
    return ExitCode::Ok;
  }
  return output_.deliver([&](const QRectF& frame) {
    auto view = makeView(frame, *data);
    if (dump_) print(view->description());
    return view;
  });
}

} // namespace xov::cli
