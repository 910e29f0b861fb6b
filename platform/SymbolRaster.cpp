#include "platform/SymbolRaster.h"

#include "platform/DiscCoverage.h"
#include "platform/OpenCells.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace xov {

namespace {

// A pixel counts as covered when less than this fraction of what lies further behind would show: an eighth of a
// level.
constexpr float kHidden = 1.0f / 2048;
// A picture is drawn in bands of at most this many pixels, 16 bytes each.
constexpr int kBandPixels = 1 << 21;
// How far two scales may differ for a circle to stay one.
constexpr double kSameScale = 1e-9;
constexpr float kFullLevel = 255;

// A colour with its channels multiplied by its opacity, all 0 … 1.
struct Ink {
  float blue = 0;
  float green = 0;
  float red = 0;
  float alpha = 0;

  explicit Ink(const QColor& color) {
    if (!color.isValid()) return;
    // The eight-bit levels that fills and strokes of every other path get.
    const QRgb rgba = color.rgba();
    alpha = float(qAlpha(rgba)) / kFullLevel;
    blue = float(qBlue(rgba)) / kFullLevel * alpha;
    green = float(qGreen(rgba)) / kFullLevel * alpha;
    red = float(qRed(rgba)) / kFullLevel * alpha;
  }
};

// What shows in one pixel so far, and the fraction of what lies behind that still comes through.
struct Seen {
  float blue = 0;
  float green = 0;
  float red = 0;
  float through = 1;

  void layBehind(const Ink& ink, float coverage) {
    const float weight = through * coverage;
    blue += weight * ink.blue;
    green += weight * ink.green;
    red += weight * ink.red;
    through *= 1 - coverage * ink.alpha;
  }
};

std::uint32_t channel(float seen, float through, std::uint32_t pixel, int shift) {
  const float behind = float((pixel >> shift) & 0xFF);
  const auto level = std::uint32_t(std::clamp(seen * kFullLevel + through * behind, 0.0f, kFullLevel) + 0.5f);
  return level << shift;
}

class SymbolPainter {
public:
  SymbolPainter(const Symbols& symbols, const QTransform& viewToDevice, const QRect& clip)
      : symbols_(symbols),
        viewToDevice_(viewToDevice),
        clip_(clip),
        fillInk_(symbols.fill),
        strokeInk_(symbols.stroke),
        open_(clip.width(), clip.height()),
        seen_(std::size_t(clip.width()) * std::size_t(clip.height())) {
    const double scale = std::sqrt(std::abs(viewToDevice.determinant()));
    const double halfLine = symbols.hasOutline() ? symbols.lineWidth / 2 : 0;
    fillRadius_ = symbols.radius * scale;
    outerRadius_ = (symbols.radius + halfLine) * scale;
    innerRadius_ = std::max(0.0, (symbols.radius - halfLine) * scale);
  }

  void draw() {
    for (std::int64_t i = symbols_.last; i > symbols_.first && open_.openCount() > 0; --i) {
      if (const auto center = symbols_.center(i - 1)) {
        drawOne(viewToDevice_.map(*center) - QPointF(clip_.topLeft()));
      }
    }
  }

  void blendOnto(const PixelTarget& target) const {
    for (int row = 0; row < clip_.height(); ++row) {
      uchar* line = target.bits + (clip_.y() + row) * target.bytesPerLine + 4 * std::ptrdiff_t(clip_.x());
      const Seen* seen = &seen_[std::size_t(row) * std::size_t(clip_.width())];
      for (int column = 0; column < clip_.width(); ++column, ++seen, line += 4) {
        if (seen->through == 1) continue;
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, line, sizeof pixel);
        pixel = channel(seen->blue, seen->through, pixel, 0) | channel(seen->green, seen->through, pixel, 8) |
                channel(seen->red, seen->through, pixel, 16) | channel(1 - seen->through, seen->through, pixel, 24);
        std::memcpy(line, &pixel, sizeof pixel);
      }
    }
  }

private:
  void drawOne(QPointF center) {
    const CellDisc outer{center.x(), center.y(), outerRadius_};
    if (!open_.anyOpenUnder(outer)) return;
    const CellDisc inner{center.x(), center.y(), innerRadius_};
    prepareCoverage(outer, center);
    const CellSpan rows = outer.touchedRows(open_.rows());
    for (int row = rows.first; row < rows.last; ++row) {
      const CellSpan inside = inner.coveredIn(row, open_.columns());
      Seen* seen = &seen_[std::size_t(row) * std::size_t(open_.columns())];
      open_.visitOpen(row, outer.touchedIn(row, open_.columns()), [&](int column) {
        if (inside.contains(column)) {
          seen[column].layBehind(fillInk_, 1);
        } else {
          drawEdge(seen[column], column, row);
        }
        return seen[column].through < kHidden;
      });
    }
  }

  void prepareCoverage(const CellDisc& outer, QPointF center) {
    const CellSpan rows = outer.touchedRows(open_.rows());
    const CellSpan columns = outer.touchedColumns(open_.columns());
    const QRect cells(columns.first, rows.first, columns.last - columns.first, rows.last - rows.first);
    fillCoverage_.reset(center, fillRadius_, cells);
    if (!symbols_.hasOutline()) return;
    outerCoverage_.reset(center, outerRadius_, cells);
    innerCoverage_.reset(center, innerRadius_, cells);
  }

  // Front to back, the outline comes before the fill that it was stroked over.
  void drawEdge(Seen& seen, int column, int row) const {
    if (symbols_.hasOutline()) {
      const double line = outerCoverage_.of(column, row) - innerCoverage_.of(column, row);
      seen.layBehind(strokeInk_, float(std::clamp(line, 0.0, 1.0)));
    }
    seen.layBehind(fillInk_, float(fillCoverage_.of(column, row)));
  }

  const Symbols& symbols_;
  const QTransform viewToDevice_;
  const QRect clip_;
  const Ink fillInk_;
  const Ink strokeInk_;
  double fillRadius_ = 0;
  double outerRadius_ = 0;
  double innerRadius_ = 0;
  DiscCoverage fillCoverage_;
  DiscCoverage outerCoverage_;
  DiscCoverage innerCoverage_;
  OpenCells open_;
  std::vector<Seen> seen_;
};

bool keepsCircles(const QTransform& t) {
  const double scale = std::abs(t.determinant());
  const double along = t.m11() * t.m11() + t.m12() * t.m12();
  const double across = t.m21() * t.m21() + t.m22() * t.m22();
  return t.isAffine() && std::abs(along - scale) <= kSameScale * scale &&
         std::abs(across - scale) <= kSameScale * scale;
}

// The pixels that ink can reach.
QRect inkedPixels(const Symbols& symbols, const QTransform& viewToDevice, const QRect& clip) {
  const double reach = symbols.outerRadius() * std::sqrt(std::abs(viewToDevice.determinant()));
  double left = clip.x() + clip.width();
  double right = clip.x();
  double top = clip.y() + clip.height();
  double bottom = clip.y();
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (!center) continue;
    const QPointF at = viewToDevice.map(*center);
    left = std::min(left, at.x() - reach);
    right = std::max(right, at.x() + reach);
    top = std::min(top, at.y() - reach);
    bottom = std::max(bottom, at.y() + reach);
  }
  const int x0 = int(std::floor(std::max(left, double(clip.x()))));
  const int y0 = int(std::floor(std::max(top, double(clip.y()))));
  const int x1 = int(std::ceil(std::min(right, double(clip.x() + clip.width()))));
  const int y1 = int(std::ceil(std::min(bottom, double(clip.y() + clip.height()))));
  return {x0, y0, x1 - x0, y1 - y0};
}

} // namespace

bool paintSymbols(const PixelTarget& target, const Symbols& symbols, const QTransform& viewToDevice,
                  const QRect& clip) {
  if (!keepsCircles(viewToDevice)) return false;
  const QRect picture(0, 0, target.width, target.height);
  const QRect area = inkedPixels(symbols, viewToDevice, clip.intersected(picture));
  if (area.isEmpty()) return true;
  const int bandRows = std::max(1, kBandPixels / area.width());
  for (int row = 0; row < area.height(); row += bandRows) {
    const QRect band(area.x(), area.y() + row, area.width(), std::min(bandRows, area.height() - row));
    SymbolPainter painter(symbols, viewToDevice, band);
    painter.draw();
    painter.blendOnto(target);
  }
  return true;
}

} // namespace xov
