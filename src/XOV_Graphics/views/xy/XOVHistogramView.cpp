#include "XOV_Graphics/views/xy/XOVHistogramView.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/xy/HistogramBars.h"
#include "XOV_Graphics/views/xy/XYAxes.h"
#include "XOV_Graphics/views/xy/XYPlotFrame.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string>

namespace xov {

namespace {

constexpr double kHeadroom = 1.05; // the Y axis ends that much above the highest bar
constexpr double kLogHeadroom = 1.5;
constexpr float kBelowOneCount = 0.5F; // where a logarithmic Y axis begins, so that a single count shows
constexpr std::int32_t kAboveAllCounts = 1000000000;

// A buffer of n values; null when memory does not allow it.
template <typename T>
std::shared_ptr<std::vector<T>> makeBuffer(std::int32_t n) {
  try {
    return std::make_shared<std::vector<T>>(std::size_t(n));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// A number of the dump, at least nine characters wide.
std::string dumped(float value) {
  constexpr std::size_t kWidth = 9;
  constexpr int kDecimals = 3;
  const std::string text = exponentText(value, kDecimals, Sign::WhenNegative);
  return std::string(kWidth - std::min(kWidth, text.size()), ' ') + text;
}

} // namespace

XOVHistogramView::XOVHistogramView(const QRectF& frame, QWidget* parent)
    : XOVView(frame, parent),
      barFillColor_(colors::lightGray) {
  lineWidth_ = HistogramBars::kOutlineWidth;
}

XOVHistogramView::~XOVHistogramView() = default;

QString XOVHistogramView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("value") : QStringLiteral("count");
}

bool XOVHistogramView::setValuesNPts(const float* values, std::int32_t count) {
  if (count < 0 || (values == nullptr && count > 0)) return false;
  const Values buffer = makeBuffer<float>(count);
  if (!buffer) return false;
  std::copy_n(values, count, buffer->begin());
  const ValueExtremes extremes = valueExtremes(*buffer);
  minValue_ = extremes.min;
  maxValue_ = extremes.max;
  nValues_ = count;
  setValues(buffer);
  return true;
}

std::span<float> XOVHistogramView::readableValues() const {
  if (!values_ || nValues_ < 1) return {};
  return std::span(*values_).first(std::min(std::size_t(nValues_), values_->size()));
}

std::span<const std::int32_t> XOVHistogramView::readableCounts() const {
  if (!counts_) return {};
  return *counts_;
}

void XOVHistogramView::removeMeanFromValues() {
  const std::span<float> values = readableValues();
  if (values.empty()) return;
  float sum = 0;
  for (const float value : values)
    sum += value;
  const float mean = sum / float(values.size());
  for (float& value : values)
    value -= mean;
  minValue_ -= mean;
  maxValue_ -= mean;
}

void XOVHistogramView::setNBinsMinMax(std::int32_t nBins, float min, float max) {
  nBins_ = nBins;
  minBinValue_ = min;
  maxBinValue_ = max;
  computebinWidth();
}

// As they lie along the axis.
HistogramBins XOVHistogramView::bins() const {
  const PlotLimits range = drawnLimits({minBinValue_, maxBinValue_, 0, 0}, {.x = logX()});
  return {nBins_, range.xmin, range.xmax, binWidth_};
}

void XOVHistogramView::computebinWidth() {
  const HistogramBins range = bins();
  binWidth_ = HistogramBins::widthFor(nBins_, range.min, range.max);
}

void XOVHistogramView::computeNBinsFor(float width) {
  if (width == 0) return;
  const HistogramBins range = bins();
  nBins_ = HistogramBins::countFor(width, range.min, range.max);
}

bool XOVHistogramView::binValues() {
  const std::span<const float> values = readableValues();
  if (values.empty()) return false;
  computebinWidth();
  if (nBins_ < 1 || nBins_ > kMostBins) return false;
  const Counts counts = makeBuffer<std::int32_t>(nBins_);
  if (!counts) return false;
  bins().countInto(PlottedValues(values, logX()), *counts);
  maxCount_ = -kAboveAllCounts;
  minCount_ = kAboveAllCounts;
  for (const std::int32_t count : *counts) {
    maxCount_ = std::max(maxCount_, count);
    minCount_ = std::min(minCount_, count);
  }
  setCounts(counts);
  return true;
}

void XOVHistogramView::drawRect(const QRectF&) {
  fillWithColorStrokeColor(colors::white, colors::darkGray);
  if (!counts_) return;
  computeRects();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  if (!fixedXAxisRange_) {
    xmin_ = minBinValue_;
    xmax_ = maxBinValue_;
  }
  if (!fixedYAxisRange_) {
    ymin_ = logY() ? kBelowOneCount : 0;
    ymax_ = logY() ? float(kLogHeadroom * std::max(1, maxCount_)) : float(kHeadroom * maxCount_);
  }
  drawHHistogram();
  drawAxes();
}

void XOVHistogramView::fillAndStroke(Path bars, const QColor& fill) {
  bars.setLineWidth(lineWidth_);
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(fill);
  context.fillPath(bars);
  context.setColor(colors::black);
  context.strokePath(bars);
}

HistogramBars XOVHistogramView::bars() const {
  return {bins(), readableCounts(), maxCount_, iRect_, drawnLimits(limits(), logAxes()), logY()};
}

PlotReadout XOVHistogramView::readout(QPointF point) const {
  PlotReadout readout;
  if (!counts_ || !isInFrame(point)) return readout;
  addAxisValue(readout, QLatin1String("x"), Qt::XAxis, point);
  const auto bar = bars().barAt(point.x());
  if (!bar) return readout;
  const auto edge = [this](std::size_t bin) {
    const auto along = double(bins().leftEdge(std::int32_t(bin)));
    return logX() ? std::pow(10.0, along) : along;
  };
  readout.add(QLatin1String("bin"), double(*bar), {});
  readout.add(QLatin1String("from"), edge(*bar), {});
  readout.add(QLatin1String("to"), edge(*bar + 1), {});
  readout.add(QLatin1String("count"), double(readableCounts()[*bar]), {});
  return readout;
}

void XOVHistogramView::drawHHistogram() {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  if (shownPart()) context.clipToRect(iRect_); // of bars beside a part there is no end
  fillAndStroke(bars().overValues(), barFillColor_);
}

void XOVHistogramView::drawVHistogram() {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  const HistogramBars bars{bins(), readableCounts(), maxCount_, iRect_, limits()};
  context.strokePath(bars.baseline());
  fillAndStroke(bars.besideFrame(), colors::gray);
}

void XOVHistogramView::drawAxes() {
  XYAxes::draw(*this, iRect_, XYAxes::axis(xmin_, xmax_, xLabelString_, logX()),
               XYAxes::axis(ymin_, ymax_, yLabelString_, logY()));
}

QString XOVHistogramView::description() const {
  std::string text = "nValues = " + std::to_string(nValues_) + ", minValue = " + dumped(minBinValue_) +
                     " maxValue = " + dumped(maxBinValue_) + "\n";
  text += "nBins = " + std::to_string(nBins_) + ", binWidth = " + dumped(binWidth_) + "\n";
  if (nBins_ > 0) text += "leftEdge rightEdge Count\n";
  const std::span<const std::int32_t> counts = readableCounts();
  const float firstRightEdge = logX() ? std::pow(10.0F, bins().leftEdge(1)) : minBinValue_ + binWidth_;
  const std::string edges = dumped(minBinValue_) + ' ' + dumped(firstRightEdge) + ' ';
  const std::size_t bins = std::size_t(std::max(0, nBins_));
  const std::size_t listed = nBins_ <= kMostBins ? bins : std::min(bins, counts.size());
  for (std::size_t bin = 0; bin < listed; ++bin) {
    text += edges + std::to_string(bin < counts.size() ? counts[bin] : 0) + '\n';
  }
  return QString::fromStdString(text);
}

} // namespace xov
