#include "XOV_Graphics/platform/pixels/CrispLines.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Beyond this a coordinate is outside every picture, and inside what an int holds with room to spare.
constexpr double kFar = 1e8;

// The first pixel of a line of `width` whole pixels whose centre line lies at `position`.
int firstPixel(double position, int width, int extent) {
  const double centred = std::floor(position - (width - 1) / 2.0);
  const int pixel = int(std::clamp(centred, -kFar, kFar));
  // A line exactly on the far edge of the picture belongs to the last pixels inside.
  return std::floor(position) == extent ? extent - width : pixel;
}

int endPixel(double position, int extent) {
  const int pixel = int(std::clamp(std::floor(position), -kFar, kFar));
  return pixel == extent ? extent - 1 : pixel;
}

// Two coordinates closer than this, in pixels, are one line along an axis.
constexpr double kAligned = 1e-6;

} // namespace

std::optional<std::vector<QRect>> crispLines(const QPainterPath& shape, double deviceWidth, QSize size) {
  if (!(deviceWidth < kCrispWidthLimit)) return std::nullopt;
  const int width = std::max(1, int(std::lround(deviceWidth)));
  std::vector<QRect> rects;
  QPointF from;
  for (int i = 0; i < shape.elementCount(); ++i) {
    const QPainterPath::Element& element = shape.elementAt(i);
    if (element.isCurveTo()) return std::nullopt;
    const QPointF to = element;
    if (element.isLineTo()) {
      const bool vertical = std::abs(to.x() - from.x()) < kAligned;
      const bool horizontal = std::abs(to.y() - from.y()) < kAligned;
      if (!vertical && !horizontal) return std::nullopt;
      if (vertical) {
        const int top = endPixel(std::min(from.y(), to.y()), size.height());
        const int bottom = endPixel(std::max(from.y(), to.y()), size.height());
        rects.emplace_back(QPoint(firstPixel(to.x(), width, size.width()), top), QSize(width, bottom - top + 1));
      } else {
        const int left = endPixel(std::min(from.x(), to.x()), size.width());
        const int right = endPixel(std::max(from.x(), to.x()), size.width());
        rects.emplace_back(QPoint(left, firstPixel(to.y(), width, size.height())), QSize(right - left + 1, width));
      }
    }
    from = to;
  }
  return rects;
}

} // namespace xov
