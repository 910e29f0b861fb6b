#include "XOV_Graphics/views/seismic/StackedSeisView.h"

namespace xov {

namespace {

constexpr double kLeftMargin = 80;
constexpr double kRightMargin = 40;
constexpr double kBottomMargin = 60;
constexpr double kTopMargin = 40;

} // namespace

StackedSeisView::StackedSeisView(const QRectF& frame, QWidget* parent) : SeismogramView(frame, parent) {}

StackedSeisView::~StackedSeisView() = default;

void StackedSeisView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kLeftMargin, kBottomMargin, b.width() - kLeftMargin - kRightMargin,
            b.height() - kBottomMargin - kTopMargin};
  iRect_ = pRect_;
}

void StackedSeisView::computePlotLimits() {
  const auto records = wvfrmsArray();
  if (!records) return;
  if (const auto found = recordLimits(*records, minYRange_)) takeLimits(*found, FixedRanges::Kept);
}

} // namespace xov
