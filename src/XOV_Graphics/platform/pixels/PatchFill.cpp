#include "XOV_Graphics/platform/pixels/PatchFill.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <span>

namespace xov {

namespace {

constexpr float kFullLevel = 255;
// Patches with points further away than this many pixels are left out: their edges could not be reckoned with.
constexpr double kReach = 1e15;

// Pixels are blended four at a time, as the registers of all processors hold them.
constexpr int kAtOnce = 4;
using FourFloats [[gnu::vector_size(16)]] = float;
using FourInts [[gnu::vector_size(16)]] = std::int32_t;
using FourPixels [[gnu::vector_size(16)]] = std::uint32_t;
using EightBytes [[gnu::vector_size(16)]] = std::uint16_t; // every other byte of four pixels, in 16 bits each

constexpr std::uint32_t kEvenBytes = 0x00ff00ff;

// A colour as the pixels hold it: red, green and blue times alpha.
class Ink {
public:
  explicit Ink(const QColor& color) : alpha_(float(color.alpha()) / kFullLevel) {
    const FourPixels pixels = FourPixels{} + qPremultiply(color.rgba());
    even_ = std::bit_cast<EightBytes>(pixels & kEvenBytes);
    odd_ = std::bit_cast<EightBytes>((pixels >> 8) & kEvenBytes);
  }

  // Over pixels that are covered by these shares, of either sign.
  void blend(QRgb* pixels, FourFloats cover) const {
    cover = cover < 0.0F ? -cover : cover;
    cover = cover > 1.0F ? FourFloats{} + 1.0F : cover;
    FourPixels below;
    std::memcpy(&below, pixels, sizeof below);
    const EightBytes ink = parts(cover);
    const EightBytes through = std::uint16_t(kParts) - parts(cover * alpha_);
    const EightBytes even = std::bit_cast<EightBytes>(below & kEvenBytes);
    const EightBytes odd = std::bit_cast<EightBytes>((below >> 8) & kEvenBytes);
    const FourPixels blended = std::bit_cast<FourPixels>((even_ * ink + even * through + kHalf) >> 8) |
                               (std::bit_cast<FourPixels>((odd_ * ink + odd * through + kHalf) >> 8) << 8);
    std::memcpy(pixels, &blended, sizeof blended);
  }

private:
  // Covers are counted in parts of 256, so that a sum of all that a byte can be still fits into its 16 bits.
  static constexpr int kParts = 256;
  static constexpr std::uint16_t kHalf = kParts / 2;

  static EightBytes parts(FourFloats share) {
    const FourInts each = __builtin_convertvector(share * float(kParts) + 0.5F, FourInts);
    return std::bit_cast<EightBytes>(each | (each << 16));
  }

  EightBytes even_{};
  EightBytes odd_{};
  float alpha_;
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
    stride_ = block.width() + 2;
    changes_.assign(std::size_t(stride_) * std::size_t(block.height()), 0);
  }

  void addContour(std::span<const QPointF> points) {
    const QPointF corner = block_.topLeft();
    QPointF from = points.back() - corner;
    for (const QPointF point : points) {
      const QPointF to = point - corner;
      if (reachesBeyond_) {
        addCut(from, to);
      } else if (from.y() < to.y()) {
        addInside(float(from.x()), float(from.y()), float(to.x()), float(to.y()), 1);
      } else {
        addInside(float(to.x()), float(to.y()), float(from.x()), float(from.y()), -1);
      }
      from = to;
    }
  }

  void blend(const PixelTarget& target, const QRect& clip, const Ink& ink) const {
    const QRect shown = block_.intersected(clip);
    const int before = shown.left() - block_.left();
    for (int row = shown.top(); row <= shown.bottom(); ++row) {
      QRgb* const line = reinterpret_cast<QRgb*>(target.bits + row * target.bytesPerLine) + shown.left();
      const float* const first = changes_.data() + std::ptrdiff_t(row - block_.top()) * stride_;
      const float* const changes = first + before;
      float sum = std::accumulate(first, changes, 0.0F);
      int x = 0;
      for (; x + kAtOnce <= shown.width(); x += kAtOnce)
        ink.blend(line + x, sums(sum, changes + x));
      const int left = shown.width() - x;
      std::array<float, kAtOnce> lastChanges{};
      std::array<QRgb, kAtOnce> lastPixels{};
      std::copy_n(changes + x, left, lastChanges.begin());
      std::copy_n(line + x, left, lastPixels.begin());
      ink.blend(lastPixels.data(), sums(sum, lastChanges.data()));
      std::copy_n(lastPixels.begin(), left, line + x);
    }
  }

private:
  // The next of a running sum.
  static FourFloats sums(float& sum, const float* changes) {
    FourFloats next{};
    for (int i = 0; i < kAtOnce; ++i) {
      sum += changes[i];
      next[i] = sum;
    }
    return next;
  }

  // Beyond the right edge nothing of the block is covered; beyond the left one all of a row is.
  double held(double x) const { return std::clamp(x, 0.0, double(block_.width())); }

  // Of an edge that lies wholly in the block, downwards; short ones mostly stay in a row.
  void addInside(float x0, float y0, float x1, float y1, float sign) {
    if (y0 == y1) return;
    int row = int(y0);
    const int last = int(y1);
    if (row == last) return addPiece(row, sign * (y1 - y0), x0, x1);
    const float slope = (x1 - x0) / (y1 - y0);
    for (; row < last; ++row) {
      const float below = float(row + 1) - y0;
      const float next = x0 + below * slope;
      addPiece(row, sign * below, x0, next);
      x0 = next;
      y0 = float(row + 1);
    }
    if (y0 < y1) addPiece(row, sign * (y1 - y0), x0, x1);
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
    for (int row = int(top); y < bottom; ++row) {
      const double below = std::min(double(row + 1), bottom);
      const double next = x + (below - y) * slope;
      addPiece(row, sign * float(below - y), float(held(x)), float(held(next)));
      x = next;
      y = below;
    }
  }

  // A piece of an edge inside a row of pixels, `height` high with the sign of its direction.
  void addPiece(int row, float height, float x0, float x1) {
    float* const changes = changes_.data() + std::ptrdiff_t(row) * stride_;
    int first = int(x0);
    int last = int(x1);
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
    for (int x = first + 1; x + 1 < last; ++x) {
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
  int stride_ = 0;
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
  const bool scales = viewToDevice.type() <= QTransform::TxScale;
  const auto mapped = [&](QPointF point) {
    if (!scales) return viewToDevice.map(point);
    return QPointF(viewToDevice.m11() * point.x() + viewToDevice.dx(),
                   viewToDevice.m22() * point.y() + viewToDevice.dy());
  };
  QPointF low(kReach, kReach);
  QPointF high = -low;
  for (std::size_t i = 0; i < patches.contourCount(patch); ++i) {
    for (const QPointF point : patches.contour(patch, i)) {
      const QPointF pixel = mapped(point);
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
      const std::size_t count = patches.contour(patch, i).size();
      cover.addContour(std::span(points).subspan(begin, count));
      begin += count;
    }
    cover.blend(target, clip, Ink(color));
  }
}

} // namespace xov
