#pragma once

#include "XOV_Graphics/platform/View.h"
#include "XOV_Graphics/platform/surface/Picture.h"

#include <QImage>

#include <functional>

namespace xov::testing {

/// A view that draws what a test tells it to.
class DrawingView : public View {
public:
  using Step = std::function<void(const QRectF& dirty)>;
  explicit DrawingView(const QRectF& frame, Step step = {}) : View(frame), step_(std::move(step)) {}
  void drawRect(const QRectF& dirty) override {
    ++draws;
    if (step_) step_(dirty);
  }
  int draws = 0;

private:
  Step step_;
};

/// The pixel at (x, y), counted from the upper left corner, as 0xAARRGGBB.
inline QRgb pixelAt(const QImage& image, int x, int y) { return image.pixel(x, y); }

/// How many pixels two pictures of one size differ in by more than `tolerance` in any channel; -1 for other sizes.
inline int differingPixels(const QImage& a, const QImage& b, int tolerance = 0) {
  if (a.size() != b.size()) return -1;
  const QImage left = a.convertToFormat(QImage::Format_ARGB32);
  const QImage right = b.convertToFormat(QImage::Format_ARGB32);
  int count = 0;
  for (int y = 0; y < left.height(); ++y) {
    for (int x = 0; x < left.width(); ++x) {
      const QRgb p = left.pixel(x, y);
      const QRgb q = right.pixel(x, y);
      const int worst = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                  std::abs(qBlue(p) - qBlue(q)), std::abs(qAlpha(p) - qAlpha(q))});
      count += worst > tolerance ? 1 : 0;
    }
  }
  return count;
}

} // namespace xov::testing
