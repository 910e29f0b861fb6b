#include "XOV_Graphics/views/image/SpectrogramView.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"
#include "XOV_Graphics/seismic/prepare/RecordTexts.h"
#include "XOV_Graphics/seismic/prepare/SpectrumPieces.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/views/base/HeldCopy.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/base/TitledAxes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace xov {

namespace {

// Above the picture, in points:
//
//    +-------------------+
//    |    seismogram     |
//    +-------------------+
//             12
//    +-------------------+
//    |      picture      |
constexpr double kLeft = 76;
constexpr double kGap = 12;
constexpr double kSeismogramShare = 0.2;

constexpr double kTraceWidth = 0.5;
constexpr double kCellsPerPoint = 2;   // columns and rows, for sharp screens and paper
constexpr double kMostCells = 1 << 25; // those of 3840 x 2160 points: 134 MB
constexpr int kShades = 256;
// Of the axis of amplitudes.
constexpr float kAmplitudeFontSize = 12;
constexpr double kAmplitudeTick = 4;
constexpr double kAmplitudeLabelGap = 2;
constexpr int kAmplitudeDigits = 6;

int cellsAlong(double points, double cellsPerPoint) {
  return int(std::clamp(std::ceil(points * cellsPerPoint), 1.0, double(kMostSpectrogramCells)));
}

// The extremes of all samples.
struct AmplitudeRange {
  float lowest = std::numeric_limits<float>::infinity();
  float highest = -std::numeric_limits<float>::infinity();
};

AmplitudeRange amplitudesOf(const SeismogramArray& records) {
  AmplitudeRange range;
  for (const auto& record : records) {
    if (!record || record->npts() <= 0) continue;
    range.lowest = std::min(range.lowest, record->smin());
    range.highest = std::max(range.highest, record->smax());
  }
  return range;
}

// The multiples of the largest step of 1, 2 or 5 times a power of ten that has at least two in the range: mostly no
// more than three. None where it is no range.
std::vector<double> ticksOf(const AmplitudeRange& range) {
  const double width = double(range.highest) - double(range.lowest);
  if (!(width > 0) || !std::isfinite(width)) return {};
  const double power = std::pow(10.0, std::floor(std::log10(width)));
  for (const double step : {5 * power, 2 * power, power, power / 2}) {
    const double first = std::ceil(double(range.lowest) / step);
    const double last = std::floor(double(range.highest) / step);
    if (!(last > first)) continue;
    std::vector<double> ticks;
    for (int i = 0; i <= int(last - first); ++i)
      ticks.push_back((first + i) * step);
    return ticks;
  }
  return {};
}

// In decibels about `offset`; what is silent stays so.
Spectrogram spectrogramOf(const SeismogramArray& records, const SpectrogramSettings& settings, double offset) {
  Spectrogram picture = spectrogram(spectrogramPieces(records), settings);
  for (float& value : picture.decibels)
    if (value > kNoPowerDb) value += float(offset);
  return picture;
}

// "nm/s" of "Velocity (nm/s)"; what says nothing about the ground counts.
QString amplitudeUnitOf(const SeismogramArray& records) {
  const QString title = amplitudeLabel(records);
  const qsizetype open = title.indexOf(QLatin1Char('('));
  return open < 0 ? QStringLiteral("counts") : title.mid(open + 1).chopped(1);
}

} // namespace

SpectrogramView::SpectrogramView(const QRectF& frame, QWidget* parent) : XOVImageView(frame, parent) {
  useTopoValues_ = false;
  missingCellsTransparent_ = true;
  showColorBar_ = true;
  palette_ = Viridis;
  nShades_ = kShades;
  setPlacesCellsExactly(true);
}

SpectrogramView::~SpectrogramView() = default;

QString SpectrogramView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("time (s)") : QStringLiteral("frequency (Hz)");
}

void SpectrogramView::setRecords(const std::shared_ptr<const SeismogramArray>& records) { records_ = records; }

void SpectrogramView::computeRects() {
  pRect_ = bounds();
  iRect_ = titledFrame(bounds(), kLeft);
  leaveRoomForColorBar();
  seismogramRect_ = {};
  if (!showSeismogram_) return;
  const double height = kSeismogramShare * iRect_.height();
  seismogramRect_ = {iRect_.x(), iRect_.y() + iRect_.height() - height, iRect_.width(), height};
  iRect_.setHeight(iRect_.height() - height - kGap);
}

PlotReach SpectrogramView::reach() const {
  PlotReach reach = XOVImageView::reach();
  reach.wheelZoomsY = false;
  return reach;
}

QRectF SpectrogramView::partFrame(QPointF viewPoint) const {
  return containsPoint(seismogramRect_, viewPoint) ? seismogramRect_ : XOVImageView::partFrame(viewPoint);
}

QDateTime SpectrogramView::momentOfZero() const {
  const auto records = heldCopy(records_);
  if (timeReference_.isValid() || !records) return timeReference_;
  for (const auto& record : *records) {
    const QDateTime reference = record ? referenceTimeOf(*record) : QDateTime();
    if (reference.isValid()) return reference;
  }
  return {};
}

SpectrogramView::PictureKey SpectrogramView::wantedPicture() const {
  SpectrogramSettings settings;
  settings.windowSeconds = windowSeconds_;
  settings.overlap = overlap_;
  const double cellsPerPoint = std::min(kCellsPerPoint, std::sqrt(kMostCells / (iRect_.width() * iRect_.height())));
  settings.columns = cellsAlong(iRect_.width(), cellsPerPoint);
  settings.rows = cellsAlong(iRect_.height(), cellsPerPoint);
  settings.lowestHz = lowestHz_;
  settings.highestHz = highestHz_;
  settings.logFrequency = logFrequency_;
  return {records_, settings, decibelOffset_};
}

void SpectrogramView::computePicture() {
  PictureKey wanted = wantedPicture();
  if (computed_ == wanted) return;
  forgetPicture(); // before there is another, which may be as large
  try {
    const auto records = heldCopy(records_);
    if (records)
      picture_ = std::make_shared<const Spectrogram>(spectrogramOf(*records, wanted.settings, decibelOffset_));
    robust_ = robustRange(picture_->decibels);
    setImageFloats({picture_, &picture_->decibels});
  } catch (const std::bad_alloc&) {
    qCWarning(log, "no memory for the spectrogram");
    forgetPicture();
  }
  computed_ = std::move(wanted);
  nr_ = picture_->rows;
  nc_ = picture_->columns;
  xminImage_ = float(picture_->startSeconds);
  xmaxImage_ = float(picture_->endSeconds);
  yminImage_ = float(picture_->lowestHz);
  ymaxImage_ = float(picture_->highestHz);
  isColored_ = false;
}

void SpectrogramView::forgetPicture() {
  static const auto none = std::make_shared<const Spectrogram>();
  setImageFloats(nullptr);
  picture_ = none;
  robust_ = {};
}

void SpectrogramView::colorPicture() {
  if (picture_->isEmpty()) return;
  if (!fixedXAxisRange_) {
    xmin_ = xminImage_;
    xmax_ = xmaxImage_;
  }
  if (!fixedYAxisRange_) {
    ymin_ = yminImage_;
    ymax_ = ymaxImage_;
  }
  const DecibelRange range =
      lowestDecibel_ < highestDecibel_ ? DecibelRange{lowestDecibel_, highestDecibel_} : robust_;
  isColored_ = isColored_ && range == range_;
  range_ = range;
  computeScaleFactor();
  if (!isColored_) setupNSImage();
  isColored_ = true;
}

void SpectrogramView::computeScaleFactor() {
  minValue_ = float(range_.lowest);
  maxValue_ = float(range_.highest);
  scaleFactor_ = maxValue_ - minValue_;
  if (!(scaleFactor_ != 0)) scaleFactor_ = 1;
}

void SpectrogramView::drawContents() {
  drawPaper();
  computePicture();
  colorPicture();
  if (picture_->isEmpty()) return drawHeading();
  drawImage();
  drawSeismogram();
  drawAmplitudeAxis();
  drawAxes();
  drawColorBar();
  drawHeading();
}

void SpectrogramView::drawSeismogram() {
  if (!records_ || !(seismogramRect_.width() > 0) || !(seismogramRect_.height() > 0)) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  context.strokeRect(seismogramRect_);
  context.clipToRect(seismogramRect_);
  Path traces;
  traces.setLineWidth(kTraceWidth);
  const std::vector<RecordTrace> borrowed = seismogramTraces();
  for (const RecordTrace& drawn : borrowed)
    traces.appendTrace(drawn.trace);
  context.strokePath(traces);
}

std::vector<RecordTrace> SpectrogramView::seismogramTraces() const {
  std::vector<RecordTrace> traces;
  const auto records = heldCopy(records_);
  if (!records || !(seismogramRect_.width() > 0) || !(seismogramRect_.height() > 0)) return traces;
  const AmplitudeRange range = amplitudesOf(*records);
  const double height = double(range.highest) - double(range.lowest);
  for (std::size_t i = 0; i < records->size(); ++i) {
    const auto& record = (*records)[i];
    if (!record || record->npts() <= 0) continue;
    Trace trace;
    trace.borrow(record->borrowedSamples());
    trace.last = record->npts();
    trace.tOrigin = xmin_;
    trace.xScale = seismogramRect_.width() / double(xmax_ - xmin_);
    trace.xOffset = seismogramRect_.x();
    trace.vOrigin = float((double(range.highest) + double(range.lowest)) / 2);
    trace.yScale = height > 0 ? seismogramRect_.height() / height : 0;
    trace.yOffset = seismogramRect_.center().y();
    if (!std::isfinite(trace.xScale) || !std::isfinite(trace.yScale) || !std::isfinite(trace.vOrigin)) continue;
    trace.settleTimes(record->b(), TraceTime::even(record->b(), record->delta()));
    traces.push_back({i, record, trace, seismogramRect_});
  }
  return traces;
}

PlotReadout SpectrogramView::readout(QPointF point) const {
  PlotReadout readout;
  const bool isSeismogram =
      seismogramRect_.width() > 0 && seismogramRect_.height() > 0 && containsPoint(seismogramRect_, point);
  if (picture_->isEmpty() || (!isSeismogram && !isInFrame(point))) return readout;
  const double perPoint = double(xmax_ - xmin_) / iRect_.width();
  const double seconds = viewToData({point.x(), iRect_.y()}, iRect_, limits()).x();
  readout.add(QLatin1String("time"), seconds, QStringLiteral("s"), perPoint);
  readout.addMoment(momentAfter(momentOfZero(), seconds), perPoint);
  if (isSeismogram) {
    const std::vector<RecordTrace> traces = seismogramTraces();
    if (const RecordTrace* const found = traceAt(traces, point)) addAmplitude(readout, *found, point, {});
    return readout;
  }
  const QPointF at = viewToData(point, iRect_, limits(), logAxes());
  readout.add(QLatin1String("frequency"), at.y(), QStringLiteral("Hz"));
  if (const auto power = cellValueAt(point))
    readout.add(QLatin1String("power"), double(*power), QStringLiteral("dB"));
  return readout;
}

void SpectrogramView::drawAmplitudeAxis() {
  const auto records = heldCopy(records_);
  if (!showAxes_ || !records || !(seismogramRect_.width() > 0) || !(seismogramRect_.height() > 0)) return;
  const AmplitudeRange range = amplitudesOf(*records);
  const std::vector<double> ticks = ticksOf(range);
  if (ticks.empty()) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  const TextAttributes attributes = TextAttributes::helvetica(kAmplitudeFontSize);
  const double perUnit = seismogramRect_.height() / (double(range.highest) - double(range.lowest));
  Path marks;
  for (const double tick : ticks) {
    const double y = seismogramRect_.y() + (tick - double(range.lowest)) * perUnit;
    marks.moveTo({seismogramRect_.x() - kAmplitudeTick, y});
    marks.lineTo({seismogramRect_.x(), y});
    const QString text = QString::number(tick, 'g', kAmplitudeDigits);
    const QSizeF size = attributes.size(text);
    context.drawText(
        text, {seismogramRect_.x() - kAmplitudeTick - kAmplitudeLabelGap - size.width(), y - size.height() / 2},
        attributes);
  }
  context.strokePath(marks);
  beginAxes(iRect_);
  setLabelFontSize(kAmplitudeFontSize);
  drawRotatedStringXYHJustVJustAngle(amplitudeUnitOf(*records), kLeftTitlePlace, float(seismogramRect_.center().y()),
                                     HJust::Center, VJust::Center, 90);
}

void SpectrogramView::drawAxes() {
  if (!showAxes_) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  beginAxes(iRect_);
  setLabelFontSize(kTitledAxesFontSize);
  QString time = xLabelString_.isEmpty() ? QStringLiteral("Time (s)") : xLabelString_;
  if (timeReference_.isValid())
    ADrawUtcAxis(QStringLiteral("UTC"), timeReference_, double(xmin_), double(xmax_));
  else
    addAxis(AxisSide::Bottom, QString(), xmin_, xmax_);
  addAxis(AxisSide::Left, QString(), ymin_, ymax_);
  strokeAxisPath();
  if (timeReference_.isValid()) time.clear();
  drawAxisTitles(*this, iRect_, time, yLabelString_.isEmpty() ? QStringLiteral("Frequency (Hz)") : yLabelString_);
}

// The title stands above the seismogram, too.
void SpectrogramView::drawHeading() {
  const QRectF picture = iRect_;
  if (showSeismogram_) iRect_.setHeight(seismogramRect_.y() + seismogramRect_.height() - iRect_.y());
  drawTitleTopCentered();
  iRect_ = picture;
}

} // namespace xov
