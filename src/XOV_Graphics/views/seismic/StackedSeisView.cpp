#include "XOV_Graphics/views/seismic/StackedSeisView.h"

#include "XOV_Graphics/views/base/HeldCopy.h"

namespace xov {

namespace {

constexpr double kLeftMargin = 80;
constexpr double kRightMargin = 40;
constexpr double kBottomMargin = 60;
constexpr double kTopMargin = 40;

} // namespace

StackedSeisView::StackedSeisView(const QRectF& frame, QWidget* parent) : SeismogramView(frame, parent) {}

StackedSeisView::~StackedSeisView() = default;

std::shared_ptr<const SeismogramArray> StackedSeisView::heldRecords() const { return heldCopy(wvfrmsArray_); }

void StackedSeisView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kLeftMargin, kBottomMargin, b.width() - kLeftMargin - kRightMargin,
            b.height() - kBottomMargin - kTopMargin};
  iRect_ = pRect_;
}

void StackedSeisView::computePlotLimits() {
  const auto records = heldRecords();
  if (!records) return;
  if (const auto found = recordLimits(*records, minYRange_)) takeLimits(*found, FixedRanges::Kept);
}

SeismogramArray StackedSeisView::recordsToMoveOver() const {
  const auto records = heldRecords();
  return records ? *records : SeismogramArray();
}

RecordLimits StackedSeisView::limitsOfWhole() const {
  RecordLimits limits = SeismogramView::limitsOfWhole();
  const WholeLimits whole = wholeLimits();
  if (whole.fixedX) {
    limits.tmin = whole.limits.xmin;
    limits.tmax = whole.limits.xmax;
  }
  if (whole.fixedY) {
    limits.amin = whole.limits.ymin;
    limits.amax = whole.limits.ymax;
  }
  return limits;
}

PlotReach StackedSeisView::reach() const {
  PlotReach reach = SeismogramView::reach();
  if (!hasAmplitudeAxis() || !reach.movesAnything()) return reach;
  reach.gain = false;
  reach.setY(reach.whole.y, reach.whole.y, false);
  return reach;
}

void StackedSeisView::holdAmplitudes(const PlotPart& part) {
  takeShownY(hasAmplitudeAxis() ? part.y : withGain(part.y, part.gain));
}

} // namespace xov
