#include "XOV_Graphics/views/seismic/WvfrmPanels.h"

namespace xov {

namespace {

constexpr double kPanelWidth = 144;
constexpr double kPanelHeight = 72;
constexpr double kSpacing = 12;
constexpr double kHeaderHeight = 64;

} // namespace

std::vector<WvfrmPanel> layOutWvfrmPanels(const QRectF& bounds, std::size_t count) {
  const double top = bounds.y() + bounds.height() - kPanelHeight - kHeaderHeight;
  double x = bounds.x() + kSpacing;
  double y = top;
  std::vector<WvfrmPanel> panels;
  panels.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    panels.push_back({{x, y, kPanelWidth, kPanelHeight}, i + 1 == count});
    y -= kPanelHeight + kSpacing;
    if (y < 0) {
      panels.back().endsColumn = true;
      y = top;
      x += kPanelWidth + kSpacing;
    }
  }
  return panels;
}

} // namespace xov
