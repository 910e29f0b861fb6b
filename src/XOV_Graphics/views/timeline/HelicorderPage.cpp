#include "XOV_Graphics/views/timeline/HelicorderPage.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kLabelMargin = 72;
constexpr double kRightMargin = 36;
constexpr double kBottomMargin = 36;
constexpr double kTopMargin = 64;
constexpr double kScaleHeight = 36;

} // namespace

QRectF helicorderRect(const QRectF& bounds, RightMargin right) {
  const double rightMargin = right == RightMargin::Labels ? kLabelMargin : kRightMargin;
  return {bounds.x() + kLabelMargin, bounds.x() + kBottomMargin, bounds.width() - (kLabelMargin + rightMargin),
          bounds.height() - (kBottomMargin + kTopMargin)};
}

double HelicorderPage::rowHeight() const { return (rect.height() - kScaleHeight) / (double(nRows) + 1); }

bool HelicorderPage::holdsTraces() const {
  return std::isfinite(rowHeight()) && std::isfinite(xScale()) && xScale() > 0;
}

PageRows HelicorderPage::rowsInView(double reach) const {
  const double pointsOrNone = std::max(rowHeight(), 0.0);
  const double above = kTopMargin / pointsOrNone;
  const double below = (kBottomMargin + kScaleHeight) / pointsOrNone;
  // One row more on both sides for the width of the line.
  return {-(above + reach + 1), double(nRows) + 1 + below + reach};
}

std::vector<std::int32_t> HelicorderPage::markedRows() const {
  const std::int64_t count = nRows;
  const std::int64_t step = (count + kMostRows - 1) / kMostRows;
  std::vector<std::int32_t> rows;
  for (std::int64_t row = 0; row < count; row += step)
    rows.push_back(std::int32_t(row));
  return rows;
}

} // namespace xov
