#include "XOV_Graphics/platform/symbol/SymbolRaster.h"

#include "XOV_Graphics/platform/symbol/ClearPlaces.h"
#include "XOV_Graphics/platform/symbol/DiscBlock.h"
#include "XOV_Graphics/platform/symbol/DiscCoverage.h"
#include "XOV_Graphics/platform/symbol/OpenCells.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

namespace xov {

namespace {

// A pixel counts as covered when less than this fraction of what lies further behind would show: an eighth of a
// level.
constexpr float kHidden = 1.0f / 2048;
// A symbol that lays no more than this on any pixel shows nowhere.
constexpr float kFaintest = 1.0f / 1024;
// From this radius on, in pixels, places that are known to be covered are remembered, with as much around them as is
// covered, too: one of these widths.
constexpr double kLargeRadius = 24;
constexpr double kClearances[] = {4, 1, 0.25};
// Of a small symbol's cells one in so many must show, for all of them to be reckoned at once.
constexpr int kOpenFraction = 4;
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

  Ink() = default;
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

// How far the nearest and the farthest point of a pixel are from a symbol's centre.
struct CellDistances {
  double nearestSquared;
  double farthestSquared;

  CellDistances(QPointF center, int column, int row) {
    const double dx = std::abs(column + 0.5 - center.x());
    const double dy = std::abs(row + 0.5 - center.y());
    const double nearX = std::max(0.0, dx - 0.5);
    const double nearY = std::max(0.0, dy - 0.5);
    nearestSquared = nearX * nearX + nearY * nearY;
    farthestSquared = (dx + 0.5) * (dx + 0.5) + (dy + 0.5) * (dy + 0.5);
  }
};

// One of the circles that bound a symbol's inks.
struct Disc {
  double radius = 0;
  DiscCoverage coverage;
  DiscBlock block; // of a small symbol

  double squared() const { return radius * radius; }
  double coverageOf(int column, int row, const CellDistances& to) {
    if (to.farthestSquared <= squared()) return 1;
    return to.nearestSquared >= squared() ? 0 : coverage.of(column, row);
  }
};

class SymbolPainter {
public:
  SymbolPainter(const Symbols& symbols, const QTransform& viewToDevice, const QRect& clip)
      : symbols_(symbols),
        viewToDevice_(viewToDevice),
        clip_(clip),
        scale_(std::sqrt(std::abs(viewToDevice.determinant()))),
        open_(clip.width(), clip.height()),
        seen_(std::size_t(clip.width()) * std::size_t(clip.height())) {
    take(symbols);
  }

  void draw() {
    for (std::int64_t i = symbols_.last; i > symbols_.first && open_.openCount() > 0; --i) {
      const auto center = symbols_.center(i - 1);
      if (!center) continue;
      if (symbols_.looks != nullptr) take(symbols_.looks[i - 1]);
      drawOne(viewToDevice_.map(*center) - QPointF(clip_.topLeft()));
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
  // What is drawn looks so from now on.
  void take(const SymbolLook& look) {
    const double halfLine = look.hasOutline() ? look.lineWidth / 2 : 0;
    fill_.radius = look.radius * scale_;
    outer_.radius = (look.radius + halfLine) * scale_;
    inner_.radius = std::max(0.0, (look.radius - halfLine) * scale_);
    fillInk_ = Ink(look.fill);
    strokeInk_ = Ink(look.stroke);
    strokes_ = look.hasOutline() && strokeInk_.alpha > 0 ? look.strokes : 0;
    // Behind a ring or a translucent disc, a disc of another look may still show.
    mayClear_ = symbols_.looks == nullptr || look.coveringRadius() > 0;
  }

  void drawOne(QPointF center) {
    const CellDisc disc{center.x(), center.y(), outer_.radius};
    const CellSpan rows = disc.touchedRows(open_.rows());
    const CellSpan box = disc.touchedColumns(open_.columns());
    const bool large = disc.radius >= kLargeRadius;
    if (large && clear_.contains(center, disc.radius)) return;
    const QRect block(box.first, rows.first, box.last - box.first, rows.last - rows.first);
    if (!large && DiscBlock::fits(block) && isMostlyOpen(rows, box)) return drawBlock(disc, block);
    bool prepared = false;
    float laid = 0;
    for (int row = rows.first; row < rows.last; ++row) {
      // The box around the disc settles most rows without a square root.
      if (!open_.anyOpen(row, box)) continue;
      const CellSpan touched = disc.touchedIn(row, open_.columns());
      if (!open_.anyOpen(row, touched)) continue;
      if (!std::exchange(prepared, true)) prepareCoverage(center, block);
      Seen* seen = &seen_[std::size_t(row) * std::size_t(open_.columns())];
      open_.visitOpen(row, touched, [&](int column) {
        const float through = seen[column].through;
        layBehind(seen[column], center, column, row);
        laid = std::max(laid, through - seen[column].through);
        return seen[column].through < kHidden;
      });
    }
    if (large && mayClear_ && laid <= kFaintest) rememberClear(disc);
  }

  void rememberClear(CellDisc disc) {
    const double radius = disc.radius;
    for (const double clearance : kClearances) {
      disc.radius = radius + clearance;
      if (!open_.anyOpenUnder(disc)) return clear_.add({disc.x, disc.y}, disc.radius);
    }
    clear_.add({disc.x, disc.y}, radius);
  }

  // Where much of a small symbol shows, all its cells at once take less time than those that show one by one.
  bool isMostlyOpen(CellSpan rows, CellSpan columns) const {
    int open = 0;
    for (int row = rows.first; row < rows.last; ++row)
      open += open_.countOpen(row, columns);
    return open * kOpenFraction >= (rows.last - rows.first) * (columns.last - columns.first);
  }

  void drawBlock(const CellDisc& disc, const QRect& cells) {
    const QPointF center(disc.x, disc.y);
    if (strokes_ > 0) {
      outer_.block.cover(center, outer_.radius, cells);
      inner_.block.cover(center, inner_.radius, cells);
    }
    if (fillInk_.alpha > 0) fill_.block.cover(center, fill_.radius, cells);
    for (int row = 0; row < cells.height(); ++row) {
      Seen* seen = &seen_[std::size_t(cells.y() + row) * std::size_t(open_.columns())];
      open_.visitOpen(cells.y() + row, disc.touchedIn(cells.y() + row, open_.columns()), [&](int column) {
        const int place = column - cells.x();
        if (strokes_ > 0) layLine(seen[column], outer_.block.at(place, row) - inner_.block.at(place, row));
        if (fillInk_.alpha > 0 && seen[column].through >= kHidden)
          seen[column].layBehind(fillInk_, float(fill_.block.at(place, row)));
        return seen[column].through < kHidden;
      });
    }
  }

  void layLine(Seen& seen, double line) const {
    for (int stroke = 0; stroke < strokes_ && seen.through >= kHidden; ++stroke)
      seen.layBehind(strokeInk_, float(std::clamp(line, 0.0, 1.0)));
  }

  void prepareCoverage(QPointF center, const QRect& cells) {
    fill_.coverage.reset(center, fill_.radius, cells);
    outer_.coverage.reset(center, outer_.radius, cells);
    inner_.coverage.reset(center, inner_.radius, cells);
  }

  // Front to back, the outline comes before the fill that it was stroked over.
  void layBehind(Seen& seen, QPointF center, int column, int row) {
    const CellDistances to(center, column, row);
    if (to.farthestSquared <= inner_.squared()) return seen.layBehind(fillInk_, 1);
    if (strokes_ > 0) {
      layLine(seen, outer_.coverageOf(column, row, to) - inner_.coverageOf(column, row, to));
      if (seen.through < kHidden) return;
    }
    if (fillInk_.alpha > 0) seen.layBehind(fillInk_, float(fill_.coverageOf(column, row, to)));
  }

  const Symbols& symbols_;
  const QTransform viewToDevice_;
  const QRect clip_;
  const double scale_;
  Ink fillInk_;
  Ink strokeInk_;
  int strokes_ = 0;
  bool mayClear_ = true;
  Disc fill_;  // up to the middle of the outline
  Disc outer_; // up to its outer edge
  Disc inner_; // up to its inner edge
  OpenCells open_;
  std::vector<Seen> seen_;
  ClearPlaces clear_;
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
  const double scale = std::sqrt(std::abs(viewToDevice.determinant()));
  double left = clip.x() + clip.width();
  double right = clip.x();
  double top = clip.y() + clip.height();
  double bottom = clip.y();
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (!center) continue;
    const QPointF at = viewToDevice.map(*center);
    const double reach = symbols.look(i).outerRadius() * scale;
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
