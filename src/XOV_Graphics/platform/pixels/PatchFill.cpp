#include "XOV_Graphics/platform/pixels/PatchFill.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr float kFullLevel = 255;
// Patches with points further away than this many pixels are left out: their edges could not be reckoned with.
constexpr double kReach = 1e15;

// A colour as the pixels hold it: red, green and blue times alpha, 0 to 255.
struct Ink {
  explicit Ink(const QColor& color)
      : alpha(color.alphaF()),
        red(kFullLevel * alpha * color.redF()),
        green(kFullLevel * alpha * color.greenF()),
        blue(kFullLevel * alpha * color.blueF()) {}

  QRgb over(QRgb pixel, float cover) const {
    const float through = 1 - cover * alpha;
    const auto level = [&](float ink, int below) {
      return int(std::min(ink * cover + through * float(below) + 0.5F, kFullLevel));
    };
    return qRgba(level(red, qRed(pixel)), level(green, qGreen(pixel)), level(blue, qBlue(pixel)),
                 level(kFullLevel * alpha, qAlpha(pixel)));
  }

  float alpha;
  float red;
  float green;
  float blue;
};

// What a row of pixels is covered with, gathered as changes from one pixel to the next: each edge of a patch adds the
// area to its right, with the sign of its direction, to the pixels that it crosses, and the running sum over a row is
// the cover of each (the idea of signed-area accumulation buffers).
class CoverBuffer {
public:
  // For the pixels of a block.
  void reset(const QRect& block) {
    block_ = block;
    stride_ = std::size_t(block.width()) + 2;
    changes_.assign(stride_ * std::size_t(block.height()), 0);
  }

  void addEdge(QPointF from, QPointF to) {
    from -= block_.topLeft();
    to -= block_.topLeft();
    if (from.y() == to.y()) return;
    const float sign = from.y() < to.y() ? 1.0F : -1.0F;
    if (sign < 0) std::swap(from, to);
    const double top = std::max(from.y(), 0.0);
    const double bottom = std::min(to.y(), double(block_.height()));
    if (!(top < bottom)) return;
    const double slope = (to.x() - from.x()) / (to.y() - from.y());
    double x = from.x() + (top - from.y()) * slope;
    double y = top;
    for (auto row = std::size_t(top); y < bottom; ++row) {
      const double below = std::min(double(row + 1), bottom);
      const double next = x + (below - y) * slope;
      addPiece(row, sign * float(below - y), float(held(x)), float(held(next)));
      x = next;
      y = below;
    }
  }

  void blend(const PixelTarget& target, const QRect& clip, const Ink& ink) const {
    const QRect shown = block_.intersected(clip);
    for (int row = shown.top(); row <= shown.bottom(); ++row) {
      auto* const line = reinterpret_cast<QRgb*>(target.bits + row * target.bytesPerLine);
      const float* change = changes_.data() + std::size_t(row - block_.top()) * stride_;
      float sum = 0;
      for (int x = block_.left(); x < shown.left(); ++x)
        sum += *change++;
      for (int x = shown.left(); x <= shown.right(); ++x) {
        sum += *change++;
        const float cover = std::min(std::abs(sum), 1.0F);
        if (cover > kNoCover) line[x] = ink.over(line[x], cover);
      }
    }
  }

private:
  static constexpr float kNoCover = 1e-4F; // rounding of the sum behind a patch

  // Beyond the right edge nothing of the block is covered; beyond the left one all of a row is.
  double held(double x) const { return std::clamp(x, 0.0, double(block_.width())); }

  // A piece of an edge inside a row of pixels, `height` high with the sign of its direction.
  void addPiece(std::size_t row, float height, float x0, float x1) {
    if (x1 < x0) std::swap(x0, x1);
    float* const changes = changes_.data() + row * stride_;
    const auto first = std::size_t(x0);
    const auto last = std::size_t(std::ceil(x1));
    if (last <= first + 1) { // within one pixel
      const float right = float(first + 1) - (x0 + x1) / 2;
      changes[first] += height * right;
      changes[first + 1] += height * (1 - right);
      return;
    }
    // The share of the piece that each pixel sees to its left grows as a parabola in the first and the last pixel and
    // as a straight line between.
    const float perPixel = height / (x1 - x0);
    const float inFirst = float(first + 1) - x0;
    float before = perPixel * inFirst * inFirst / 2; // the cover of the pixel before
    changes[first] += before;
    for (std::size_t x = first + 1; x + 1 < last; ++x) {
      const float cover = perPixel * (float(x) + 0.5F - x0);
      changes[x] += cover - before;
      before = cover;
    }
    const float inLast = x1 - float(last - 1);
    const float cover = height - perPixel * inLast * inLast / 2;
    changes[last - 1] += cover - before;
    changes[last] += height - cover;
  }

  QRect block_;
  std::size_t stride_ = 0;
  std::vector<float> changes_;
};

// The pixels that a patch reaches. Only a patch that is larger than the clip is cut there: small ones cost little,
// and are the same pixels whatever shows of them.
QRect blockOf(const QRectF& box, const QRect& clip) {
  const QRect room = clip.adjusted(-clip.width(), -clip.height(), clip.width(), clip.height());
  const QRectF near = box.intersected(QRectF(room));
  if (near.isEmpty() || !near.intersects(QRectF(clip))) return {};
  const QPoint corner(int(std::floor(near.left())), int(std::floor(near.top())));
  return {corner, QPoint(int(std::ceil(near.right())) - 1, int(std::ceil(near.bottom())) - 1)};
}

// The pixels of all points of a patch, and the box around them; empty where one is out of reach.
QRectF mapPoints(const Patches& patches, std::size_t patch, const QTransform& viewToDevice,
                 std::vector<QPointF>& pixels) {
  pixels.clear();
  QPointF low(kReach, kReach);
  QPointF high = -low;
  for (std::size_t i = 0; i < patches.contourCount(patch); ++i) {
    for (const QPointF point : patches.contour(patch, i)) {
      const QPointF pixel = viewToDevice.map(point);
      if (!(std::abs(pixel.x()) < kReach && std::abs(pixel.y()) < kReach)) return {};
      low = {std::min(low.x(), pixel.x()), std::min(low.y(), pixel.y())};
      high = {std::max(high.x(), pixel.x()), std::max(high.y(), pixel.y())};
      pixels.push_back(pixel);
    }
  }
  return {low, high};
}

} // namespace

void fillPatches(const PixelTarget& target, const Patches& patches, const QTransform& viewToDevice,
                 const QRect& clip) {
  CoverBuffer cover;
  std::vector<QPointF> points;
  for (std::size_t patch = 0; patch < patches.count(); ++patch) {
    const QColor color = patches.color(patch);
    if (!color.isValid() || patches.contourCount(patch) == 0) continue;
    const QRect block = blockOf(mapPoints(patches, patch, viewToDevice, points), clip);
    if (block.isEmpty()) continue;
    cover.reset(block);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < patches.contourCount(patch); ++i) {
      const std::size_t end = begin + patches.contour(patch, i).size();
      for (std::size_t k = begin; k < end; ++k)
        cover.addEdge(points[k], points[k + 1 < end ? k + 1 : begin]);
      begin = end;
    }
    cover.blend(target, clip, Ink(color));
  }
}

} // namespace xov
