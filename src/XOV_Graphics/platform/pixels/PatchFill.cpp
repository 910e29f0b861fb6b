#include "XOV_Graphics/platform/pixels/PatchFill.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace xov {

namespace {

constexpr float kFullLevel = 255;
// Patches with points further away than this many pixels are left out: their edges could not be reckoned with.
constexpr double kReach = 1e15;

// The four bytes of a pixel, each in 16 bits of its own.
constexpr std::uint64_t kLowBytes = 0x00ff00ff00ff00ff;
constexpr std::uint64_t kHalves = 0x0080008000800080;

std::uint64_t spread(QRgb pixel) { return (std::uint64_t(pixel) | (std::uint64_t(pixel) << 24)) & kLowBytes; }
QRgb gathered(std::uint64_t bytes) { return QRgb(bytes | (bytes >> 24)); }

// A colour as the pixels hold it: red, green and blue times alpha.
struct Ink {
  explicit Ink(const QColor& color)
      : whole(qPremultiply(color.rgba())),
        bytes(spread(whole)),
        alpha(float(color.alpha()) / kFullLevel) {}

  bool isOpaque() const { return alpha == 1; }

  // Covers are counted in parts of 256, so that a sum of all that a byte can be still fits into its 16 bits.
  QRgb over(QRgb pixel, float cover) const {
    const auto ink = std::uint64_t(cover * kParts + 0.5F);
    const auto through = std::uint64_t(kParts) - std::uint64_t(cover * alpha * kParts + 0.5F);
    return gathered(((bytes * ink + spread(pixel) * through + kHalves) >> 8) & kLowBytes);
  }

  QRgb whole; // where nothing lies below

private:
  static constexpr float kParts = 256;

  std::uint64_t bytes;
  float alpha;
};

// What a row of pixels is covered with, gathered as changes from one pixel to the next: each edge of a patch adds the
// area to its right, with the sign of its direction, to the pixels that it crosses, and the running sum over a row is
// the cover of each (the idea of signed-area accumulation buffers).
class CoverBuffer {
public:
  // For the pixels of a block, of which the patch may reach beyond.
  void reset(const QRect& block, bool reachesBeyond) {
    block_ = block;
    reachesBeyond_ = reachesBeyond;
    stride_ = std::size_t(block.width()) + 2;
    changes_.assign(stride_ * std::size_t(block.height()), 0);
  }

  void addEdge(QPointF from, QPointF to) {
    from -= block_.topLeft();
    to -= block_.topLeft();
    if (reachesBeyond_) {
      addCut(from, to);
    } else if (from.y() < to.y()) {
      addInside(float(from.x()), float(from.y()), float(to.x()), float(to.y()), 1);
    } else {
      addInside(float(to.x()), float(to.y()), float(from.x()), float(from.y()), -1);
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
        if (cover > kWholeCover && ink.isOpaque()) {
          line[x] = ink.whole;
        } else if (cover > kNoCover) {
          line[x] = ink.over(line[x], cover);
        }
      }
    }
  }

private:
  // What rounding of the sum leaves behind a patch and takes inside of one.
  static constexpr float kNoCover = 1e-4F;
  static constexpr float kWholeCover = 1 - kNoCover;

  // Beyond the right edge nothing of the block is covered; beyond the left one all of a row is.
  double held(double x) const { return std::clamp(x, 0.0, double(block_.width())); }

  // Of an edge that lies wholly in the block, downwards; short ones mostly stay in a row.
  void addInside(float x0, float y0, float x1, float y1, float sign) {
    if (y0 == y1) return;
    int row = int(y0);
    const int last = int(y1);
    if (row == last) return addPiece(std::size_t(row), sign * (y1 - y0), x0, x1);
    const float slope = (x1 - x0) / (y1 - y0);
    for (; row < last; ++row) {
      const float below = float(row + 1) - y0;
      const float next = x0 + below * slope;
      addPiece(std::size_t(row), sign * below, x0, next);
      x0 = next;
      y0 = float(row + 1);
    }
    if (y0 < y1) addPiece(std::size_t(row), sign * (y1 - y0), x0, x1);
  }

  void addCut(QPointF from, QPointF to) {
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

  // A piece of an edge inside a row of pixels, `height` high with the sign of its direction.
  void addPiece(std::size_t row, float height, float x0, float x1) {
    float* const changes = changes_.data() + row * stride_;
    auto first = std::size_t(x0);
    auto last = std::size_t(x1);
    if (first == last) {
      const float right = float(first + 1) - (x0 + x1) / 2;
      changes[first] += height * right;
      changes[first + 1] += height * (1 - right);
      return;
    }
    if (x1 < x0) {
      std::swap(x0, x1);
      std::swap(first, last);
    }
    ++last; // one past the last pixel
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
  bool reachesBeyond_ = false;
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
    const QRectF box = mapPoints(patches, patch, viewToDevice, points);
    const QRect block = blockOf(box, clip);
    if (block.isEmpty()) continue;
    cover.reset(block, !QRectF(block).contains(box));
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
