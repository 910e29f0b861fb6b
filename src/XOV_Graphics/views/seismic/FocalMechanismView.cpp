#include "XOV_Graphics/views/seismic/FocalMechanismView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"
#include "XOV_Graphics/views/base/BeachBallDrawing.h"
#include "XOV_Graphics/views/seismic/MechanismLayout.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kMargin = 12;
constexpr double kTitleRoom = 36;
constexpr double kDetailsWidth = 250;
constexpr double kDetailsGap = 12;
constexpr double kCaptionHeight = 16;
constexpr double kCaptionDrop = 12;
constexpr double kCaptionSize = 11;
constexpr double kLeastCaptionSize = 7;
constexpr double kDetailsSize = 12;
constexpr double kLineDistance = 1.5; // of the details, in line heights
constexpr double kNorthTick = 8;
constexpr double kLeastRadiusWithMarks = 40;
constexpr double kDotRadius = 2;
constexpr double kAxisSize = 14; // of T and P

constexpr double kWideRim = 1.5;
constexpr double kWideNodal = 1;
constexpr double kRadiusWithWideLines = 40;

void drawCentered(const QString& text, QPointF middle, double size) {
  const TextAttributes attributes = TextAttributes::helvetica(size);
  const QSizeF box = attributes.size(text);
  GraphicsContext::current().drawText(text, middle - QPointF(box.width() / 2, box.height() / 2), attributes);
}

// In smaller letters where it is wider than its cell, and cut where those are too wide, too.
void drawCaption(QString text, QPointF middle, double room) {
  const auto width = [&](double size) { return TextAttributes::helvetica(size).size(text).width(); };
  double size = kCaptionSize;
  if (width(size) > room) size = std::max(std::floor(2 * size * room / width(size)) / 2, kLeastCaptionSize);
  if (width(size) > room) {
    const auto fitting = qsizetype(double(text.size()) * room / width(size)) - 1;
    text = text.left(std::max(fitting, qsizetype(0))) + QChar(0x2026);
  }
  drawCentered(text, middle, size);
}

// A dot and a letter on a white disc, seen on either colour.
void markAxis(const QString& letter, const PrincipalAxis& axis, QPointF center, double radius) {
  const QPointF at = center + radius * onBeachBall(axis.azimuthDeg, axis.plungeDeg);
  GraphicsContext& context = GraphicsContext::current();
  constexpr double kDisc = 0.65 * kAxisSize;
  const QPointF inwards = at - center;
  const double far = std::hypot(inwards.x(), inwards.y());
  // The letter beside the dot, towards the middle, so that it stays on the ball.
  const QPointF beside = far > kDisc ? QPointF(-inwards * (1.6 * kDisc / far)) : QPointF(1.6 * kDisc, 0);
  const auto disc = [](QPointF middle, double r) {
    Path path;
    path.appendOval({middle.x() - r, middle.y() - r, 2 * r, 2 * r});
    return path;
  };
  context.setColor(colors::white);
  context.fillPath(disc(at, kDotRadius + 1.5));
  context.fillPath(disc(at + beside, kDisc));
  context.setColor(colors::black);
  context.fillPath(disc(at, kDotRadius));
  drawCentered(letter, at + beside, kAxisSize);
}

void strokePlane(const NodalPlane& plane, QPointF center, double radius) {
  Path path;
  bool isFirst = true;
  for (const QPointF point : beachBallPlane(double(plane.strikeDeg), double(plane.dipDeg))) {
    const QPointF at = center + radius * point;
    isFirst ? path.moveTo(at) : path.lineTo(at);
    isFirst = false;
  }
  path.setDashes({5, 3}, 0);
  GraphicsContext::current().strokePath(path);
}

} // namespace

FocalMechanismView::FocalMechanismView(const QRectF& frame, QWidget* parent)
    : XOVView(frame, parent),
      compressionalColor_(colors::black) {}

FocalMechanismView::~FocalMechanismView() = default;

void FocalMechanismView::computeRects() {
  const QRectF b = bounds();
  const double details = hasDetails() ? kDetailsWidth + kDetailsGap : 0;
  pRect_ = {b.x() + kMargin, b.y() + kMargin, std::max(b.width() - 2 * kMargin - details, 0.0),
            std::max(b.height() - 2 * kMargin - kTitleRoom, 0.0)};
  iRect_ = pRect_;
}

void FocalMechanismView::drawRect(const QRectF&) {
  drawPaper();
  computeRects();
  if (inLiveResize()) return drawViewSize();
  drawMechanisms();
  drawDetails();
  iRect_.setWidth(bounds().width() - 2 * kMargin); // the title stands over the middle of the view
  drawTitleTopCentered();
  computeRects();
  if (_timeStamp()) drawTimeStamp();
}

BallGrid FocalMechanismView::ballGrid() const {
  const bool hasCaptions = std::ranges::any_of(
      mechanisms_, [](const CaptionedMechanism& captioned) { return !captioned.caption.isEmpty(); });
  return layOutBalls(iRect_, mechanisms_.size(), hasCaptions ? kCaptionHeight : 0);
}

PlotReadout FocalMechanismView::readout(QPointF point) const {
  PlotReadout readout;
  const BallGrid grid = ballGrid();
  for (std::size_t i = 0; i < grid.centers.size(); ++i) {
    const QPointF on = (point - grid.centers[i]) / grid.radius;
    const auto direction = directionOnBeachBall(on);
    if (!direction || !radiatingTensorOf(mechanisms_[i].mechanism)) continue;
    readout.addText(QLatin1String("mechanism"), mechanisms_[i].caption);
    readout.add(QLatin1String("azimuth"), direction->azimuthDeg, QStringLiteral("°"), 0.1);
    readout.add(QLatin1String("plunge"), direction->plungeDeg, QStringLiteral("°"), 0.1);
  }
  return readout;
}

void FocalMechanismView::drawMechanisms() {
  const BallGrid grid = ballGrid();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  for (std::size_t i = 0; i < grid.centers.size(); ++i) {
    const QPointF center = grid.centers[i];
    drawBall(mechanisms_[i].mechanism, center, grid.radius);
    drawCaption(mechanisms_[i].caption, center - QPointF(0, grid.radius + kCaptionDrop), grid.cellWidth);
  }
}

void FocalMechanismView::drawBall(const FocalMechanism& mechanism, QPointF center, double radius) {
  const std::optional<MomentTensor> tensor = radiatingTensorOf(mechanism);
  if (!tensor) return;
  GraphicsContext& context = GraphicsContext::current();
  BeachBallLook look{compressionalColor_, colors::white, colors::black};
  if (radius >= kRadiusWithWideLines) {
    look.rimWidth = kWideRim;
    look.nodalWidth = kWideNodal;
  }
  BeachBallPatches ball;
  ball.add(beachBallOf(*tensor, BeachBallPatches::pointsFor(radius)), center, radius, look);
  context.fillPatches(ball.patches());
  if (radius < kLeastRadiusWithMarks) return;
  context.setColor(colors::black);
  Path north;
  north.moveTo(center + QPointF(0, radius));
  north.lineTo(center + QPointF(0, radius + kNorthTick));
  context.strokePath(north);
  if (showNodalPlanes_) {
    context.setColor(colors::gray);
    for (const NodalPlane& plane : nodalPlanesOf(*tensor)) {
      if (isDefined(plane)) strokePlane(plane, center, radius);
    }
  }
  if (!showPrincipalAxes_ || !isDefined(nodalPlanesOf(*tensor)[0])) return;
  const PrincipalAxes axes = principalAxesOf(*tensor);
  markAxis(QStringLiteral("T"), axes.t, center, radius);
  markAxis(QStringLiteral("P"), axes.p, center, radius);
}

void FocalMechanismView::drawDetails() {
  if (!hasDetails()) return;
  const QStringList lines = mechanismLines(mechanisms_.front().mechanism);
  const TextAttributes attributes = TextAttributes::helvetica(kDetailsSize);
  const double distance = kLineDistance * attributes.lineHeight();
  QPointF at(iRect_.right() + kDetailsGap, iRect_.center().y() + distance * double(lines.size()) / 2);
  for (const QString& line : lines) {
    at.ry() -= distance;
    GraphicsContext::current().drawText(line, at, attributes);
  }
}

} // namespace xov
