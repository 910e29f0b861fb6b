#include "designer/DesignerIcons.h"

#include <QPixmap>

#include <XOV_Graphics/platform/View.h>
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>

namespace xov::designer {

namespace {

// Icons are drawn on a square of this many points, y upwards, and then made as large as they are wanted.
constexpr double kSide = 24;
constexpr double kPixelRatios[] = {1, 2, 4};
const QColor kInk(40, 40, 40);
const QColor kAccent(200, 40, 40);
const QColor kFill(110, 150, 200);

GraphicsContext& context() { return GraphicsContext::current(); }

void stroke(Path path, const QColor& color = kInk, double width = 1) {
  path.setLineWidth(width);
  context().setColor(color);
  context().strokePath(path);
}

void line(QPointF from, QPointF to, const QColor& color = kInk) {
  Path path;
  path.moveTo(from);
  path.lineTo(to);
  stroke(path, color);
}

void axes() {
  Path path;
  path.moveTo({4, 21});
  path.lineTo({4, 4});
  path.lineTo({21, 4});
  stroke(path);
}

void circle(QPointF center, double radius, const QColor& fill) {
  Path path;
  path.appendOval({center.x() - radius, center.y() - radius, 2 * radius, 2 * radius});
  if (fill.isValid()) {
    context().setColor(fill);
    context().fillPath(path);
  } else {
    stroke(path);
  }
}

void circles(std::initializer_list<QPointF> places, double radius, const QColor& fill) {
  for (const QPointF& at : places)
    circle(at, radius, fill);
}

void bar(const QRectF& rect) {
  context().setColor(kFill);
  context().fillRect(rect);
  context().setColor(kInk);
  context().strokeRect(rect);
}

// A burst that sets in at `onset` and dies away, about a line from x = `left` to `right`.
void trace(double left, double right, double y, double onset, double height, const QColor& color = kInk) {
  Path path;
  path.moveTo({left, y});
  constexpr double kStep = 0.25;
  const int steps = int((right - left) / kStep);
  for (int i = 0; i <= steps; ++i) {
    const double x = left + i * kStep;
    const double after = x - onset;
    const double value = after < 0 ? 0 : height * std::exp(-after / 5) * std::sin(after * std::numbers::pi / 2);
    path.lineTo({x, y + value});
  }
  stroke(path, color);
}

// Four columns of so many rows.
void cells(int rows) {
  const QColor colors[] = {{40, 70, 160}, {90, 160, 200}, {240, 240, 180}, {230, 150, 60}};
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < 4; ++column) {
      const auto distance = std::size_t(std::abs(row - 2) + std::abs(column - 1));
      context().setColor(colors[std::min(distance, std::size(colors) - 1)]);
      context().fillRect({3.0 + 4.5 * column, 3.0 + 4.5 * row, 4.5, 4.5});
    }
  }
}

void globe() {
  circle({12, 12}, 9, {150, 190, 230});
  circle({12, 12}, 9, {});
  Path path;
  path.appendOval({8, 3, 8, 18});
  path.moveTo({3, 12});
  path.lineTo({21, 12});
  stroke(path);
}

void beachBall() {
  Path quarters;
  for (const double start : {0.0, 180.0}) {
    quarters.moveTo({12, 12});
    quarters.appendArc({12, 12}, 9, start, start + 90);
    quarters.close();
  }
  context().setColor(kAccent);
  context().fillPath(quarters);
  circle({12, 12}, 9, {});
}

void orbit() {
  axes();
  Path path;
  for (int i = 0; i <= 36; ++i) {
    const double angle = i * std::numbers::pi / 18;
    const QPointF point(13 + 7 * std::cos(angle), 13 + 6 * std::sin(angle + 0.7));
    i == 0 ? path.moveTo(point) : path.lineTo(point);
  }
  stroke(path, kAccent);
}

void drawMotif(Motif motif) {
  switch (motif) {
  case Motif::Line:
    axes();
    trace(5, 21, 11, 5, 9, kAccent);
    break;
  case Motif::Points:
    axes();
    circles({{8, 8}, {11, 12}, {14, 11}, {17, 16}, {19, 19}}, 1.5, kAccent);
    break;
  case Motif::Circles:
    axes();
    circles({{9, 17}, {12, 9}, {18, 13}}, 2.5, {});
    break;
  case Motif::Peaks:
    axes();
    for (int i = 0; i < 5; ++i)
      line({7.5 + 3 * i, 4}, {7.5 + 3 * i, i == 1 ? 20 : 16 - 2.5 * i}, kAccent);
    break;
  case Motif::Bars:
    axes();
    for (int i = 0; i < 4; ++i)
      bar({5 + 4.0 * i, 4, 4, i == 1 ? 15.0 : 10 - 2.0 * i});
    break;
  case Motif::Columns:
    axes();
    for (int i = 0; i < 3; ++i)
      bar({6.5 + 5 * i, 4, 3, 5 + 4.0 * i});
    break;
  case Motif::Section:
    for (int i = 0; i < 4; ++i)
      trace(2, 22, 4 + 5.0 * i, 4 + 3.0 * i, 3);
    break;
  case Motif::Overlay:
    trace(2, 22, 12, 5, 10);
    trace(2, 22, 12, 7, 8, kAccent);
    break;
  case Motif::Bands:
    trace(2, 22, 17, 5, 5);
    trace(2, 22, 7, 9, 5);
    break;
  case Motif::Pairs:
    for (const double left : {2.0, 13.0}) {
      trace(left, left + 9, 12, left + 1, 8);
      trace(left, left + 9, 12, left + 2, 7, kAccent);
    }
    break;
  case Motif::Components:
    for (int i = 0; i < 3; ++i)
      trace(2, 22, 5 + 7.0 * i, 8 - 1.0 * i, 4);
    break;
  case Motif::Series:
    trace(2, 22, 12, 3, 10, {40, 80, 160});
    break;
  case Motif::Drum:
    for (int i = 0; i < 5; ++i)
      trace(3, 21, 4 + 4.0 * i, i == 2 ? 9 : 30, 6, i % 2 == 0 ? kInk : kAccent);
    break;
  case Motif::LiveLong:
    for (int i = 0; i < 3; ++i)
      trace(2, 18, 5 + 7.0 * i, 6 + 2.0 * i, 4);
    line({18, 2}, {18, 22}, kAccent);
    break;
  case Motif::LiveShort:
    trace(2, 18, 12, 8, 8);
    line({18, 2}, {18, 22}, kAccent);
    break;
  case Motif::Cells:
    cells(4);
    break;
  case Motif::Slowness:
    circle({12, 12}, 9, {});
    circle({12, 12}, 5, {});
    line({2, 12}, {22, 12});
    line({12, 2}, {12, 22});
    circle({16, 15}, 2, kAccent);
    break;
  case Motif::Spectrogram:
    cells(3);
    trace(3, 21, 19, 7, 4);
    break;
  case Motif::Noise:
    cells(4);
    axes();
    line({4, 18}, {20, 8}, kAccent);
    break;
  case Motif::Spectra:
    axes();
    line({5, 19}, {11, 16});
    line({11, 16}, {20, 9});
    line({5, 14}, {11, 12}, kAccent);
    line({11, 12}, {20, 6}, kAccent);
    break;
  case Motif::Globe:
    globe();
    break;
  case Motif::BeachBall:
    beachBall();
    break;
  case Motif::Orbit:
    orbit();
    break;
  }
}

class Icon : public View {
public:
  explicit Icon(Motif motif) : View(QRectF(0, 0, kSide, kSide)), motif_(motif) {}
  void drawRect(const QRectF&) override {
    context().setColor(Qt::white);
    context().fillRect(bounds());
    drawMotif(motif_);
    context().setColor(Qt::gray);
    context().strokeRect(bounds());
  }

private:
  Motif motif_;
};

} // namespace

QIcon designerIcon(Motif motif) {
  QIcon icon;
  Icon view(motif);
  for (const double ratio : kPixelRatios) {
    view.setExportPixelRatio(ratio);
    QImage picture = view.pictureOfRect(view.bounds());
    picture.setDevicePixelRatio(1);
    icon.addPixmap(QPixmap::fromImage(picture));
  }
  return icon;
}

} // namespace xov::designer
