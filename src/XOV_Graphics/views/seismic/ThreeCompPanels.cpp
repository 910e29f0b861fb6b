#include "XOV_Graphics/views/seismic/ThreeCompPanels.h"

namespace xov {

namespace {

constexpr double kSideMargin = 72;
constexpr double kMargin = 48; // above and below
constexpr double kGap = 6;

} // namespace

ThreeCompPanels layOutThreeCompPanels(const QRectF& bounds) {
  const double left = bounds.x() + kSideMargin;
  const double width = bounds.width() - 2 * kSideMargin;
  const double height = (bounds.height() - 2 * kMargin - 2 * kGap) / 3;
  double bottom = bounds.y() + bounds.height() - height - kMargin;
  ThreeCompPanels panels;
  panels.frame = {left, kMargin, width, bounds.height() - 2 * kMargin};
  for (QRectF& panel : panels.panel) {
    panel = {left, bottom, width, height};
    bottom -= height + kGap;
  }
  return panels;
}

} // namespace xov
