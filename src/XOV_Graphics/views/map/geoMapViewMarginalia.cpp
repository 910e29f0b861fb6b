// What stands on and around a map: the degrees at its edges, beach balls, names, scale bar and legend.

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/AxisMeasures.h"
#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/base/BeachBallDrawing.h"
#include "XOV_Graphics/views/map/DegreeLabels.h"
#include "XOV_Graphics/views/map/DiscPlaces.h"
#include "XOV_Graphics/views/map/LabelPlaces.h"
#include "XOV_Graphics/views/map/MapLayout.h"
#include "XOV_Graphics/views/map/MapLegendLayout.h"
#include "XOV_Graphics/views/map/MapProjection.h"
#include "XOV_Graphics/views/map/MapScale.h"
#include "XOV_Graphics/views/map/geoMapView.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kTickLabelSize = 18;
constexpr int kDegreeLabelSize = 14; // of those with letters, which are longer
constexpr double kSideGap = 2;       // between tick labels and the edge of the view
constexpr double kLabelGap = 6;      // between longitudes

constexpr double kSmallTextSize = 10;
const QColor kPaleWhite = QColor::fromRgbF(1, 1, 1, 0.75F);

constexpr std::size_t kBallsAtOnce = 256;
constexpr double kAnchorRadius = 2;

constexpr double kBarInset = 12; // of the scale bar from the corner of the map
constexpr double kBarPadding = 5;
constexpr double kBarHeight = 4;

constexpr double kLegendBottom = 8;

constexpr int kElevationTextSize = 12; // five characters of which fit between a colour bar and its title
constexpr float kMostPlainMetres = 1e5;

const TextAttributes& smallText() {
  static const TextAttributes text = TextAttributes::helvetica(kSmallTextSize);
  return text;
}

void drawSmallText(const QString& text, QPointF middle) {
  const QSizeF size = smallText().size(text);
  GraphicsContext::current().drawText(text, middle - QPointF(size.width() / 2, size.height() / 2), smallText());
}

void strokeLine(QPointF from, QPointF to, double width = 1) {
  Path line;
  line.moveTo(from);
  line.lineTo(to);
  line.setLineWidth(width);
  GraphicsContext::current().strokePath(line);
}

} // namespace

int geoMapView::tickLabelSize() const { return showDegreeSigns_ ? kDegreeLabelSize : kTickLabelSize; }

// As drawAxes() has it drawn.
LinearAxis geoMapView::layoutAxis(Qt::Axis axis) const {
  LinearAxisRequest request;
  request.direction = axis == Qt::XAxis ? AxisDirection::X : AxisDirection::Y;
  request.frame = axisFrame(float(iRect_.left()), float(iRect_.right()), float(iRect_.bottom()), float(iRect_.top()));
  request.fontSize = kTickLabelSize;
  request.lower = axis == Qt::XAxis ? xmin_ : ymin_;
  request.upper = axis == Qt::XAxis ? xmax_ : ymax_;
  request.interval = mapTickInterval(xmax_ - xmin_);
  return layoutLinearAxis(request);
}

double geoMapView::widthOfTickLabels(Qt::Axis axis) const {
  const TextAttributes attributes = TextAttributes::helvetica(tickLabelSize());
  const LinearAxis laidOut = layoutAxis(axis);
  double widest = 0;
  if (showDegreeSigns_) {
    const bool isX = axis == Qt::XAxis;
    for (const DegreeLabel& label : degreeLabels(axis, isX ? xmin_ : ymin_, isX ? xmax_ : ymax_, laidOut.step))
      widest = std::max(widest, attributes.size(label.text).width());
  } else {
    for (const AxisLabel& label : laidOut.labels)
      widest = std::max(widest, attributes.size(QString::fromStdString(label.text)).width());
  }
  return widest;
}

// Labels that the edge of the view would cut move the map in. A map of a thousandth of a degree has latitudes of
// seven digits, for which the margin has no room.
void geoMapView::leaveRoomForTickLabels(const QRectF& room) {
  const QRectF b = bounds();
  const double beside = double(axis_measures::kLabelBesideY) * kTickLabelSize + kSideGap;
  const double left = b.left() + std::ceil(widthOfTickLabels(Qt::YAxis) + beside) - iRect_.left();
  const double right = iRect_.right() - (b.right() - std::ceil(widthOfTickLabels(Qt::XAxis) / 2 + kSideGap));
  if (left <= 0 && right <= 0) return;
  const double leftEdge = left > 0 ? iRect_.left() + left : room.left();
  const double rightEdge = right > 0 ? iRect_.right() - right : room.right();
  if (!(leftEdge < rightEdge)) return;
  iRect_ = mapRectangle({leftEdge, room.y(), rightEdge - leftEdge, room.height()}, limits(), MapAlign(vAlignPlot_));
}

void geoMapView::drawAxes() {
  if (!showAxes_) return;
  const auto tickLabels = std::make_shared<TextAttributes>(TextAttributes::helvetica(tickLabelSize()));
  tickLabels->setColor(colors::darkGray);
  beginFramedAxes(tickLabels);
  ASetFontSize(kTickLabelSize);
  if (showDegreeSigns_) {
    drawDegrees();
  } else {
    const float interval = mapTickInterval(xmax_ - xmin_);
    addAxes(QStringLiteral(" "), interval, interval);
  }
  strokeAxisPath();
}

void geoMapView::drawDegrees() {
  std::array<char, kLabelBufferSize> none{};
  const float interval = mapTickInterval(xmax_ - xmin_);
  ADrawAxis(none, AxisSide::Bottom, AxisDetail::Ticks, xmin_, xmax_, interval);
  ADrawAxis(none, AxisSide::Left, AxisDetail::Ticks, ymin_, ymax_, interval);

  TextAttributes attributes = TextAttributes::helvetica(kDegreeLabelSize);
  attributes.setColor(colors::darkGray);
  const MapProjection projection(iRect_, limits());
  GraphicsContext& context = GraphicsContext::current();
  const std::vector<DegreeLabel> longitudes = degreeLabels(Qt::XAxis, xmin_, xmax_, layoutAxis(Qt::XAxis).step);
  const double apart = longitudes.size() > 1 ? projection.place(longitudes[1].deg, ymin_).x() -
                                                   projection.place(longitudes[0].deg, ymin_).x()
                                             : HUGE_VAL;
  const double needed = widthOfTickLabels(Qt::XAxis) + kLabelGap;
  const auto every = std::size_t(std::clamp(std::ceil(needed / apart), 1.0, 1000.0));
  const double below = iRect_.y() - double(axis_measures::kLabelBelowX) * kTickLabelSize;
  for (std::size_t i = 0; i < longitudes.size(); i += every) {
    const double x = projection.place(longitudes[i].deg, ymin_).x();
    context.drawText(longitudes[i].text, {x - attributes.size(longitudes[i].text).width() / 2, below}, attributes);
  }
  const double beside = iRect_.x() - double(axis_measures::kLabelBesideY) * kTickLabelSize;
  for (const DegreeLabel& label : degreeLabels(Qt::YAxis, ymin_, ymax_, layoutAxis(Qt::YAxis).step)) {
    const QSizeF size = attributes.size(label.text);
    const double y = projection.place(xmin_, label.deg).y();
    context.drawText(label.text, {beside - size.width(), y - size.height() / 2}, attributes);
  }
}

std::vector<PlacedDisc> geoMapView::placeMechanisms() const {
  const MapProjection projection(iRect_, limits());
  std::vector<PlacedDisc> discs;
  discs.reserve(mechanisms_.size());
  for (const MapMechanism& mechanism : mechanisms_) {
    const QPointF place = projection.place(projection.symbolLongitude(mechanism.longitudeDeg), mechanism.latitudeDeg);
    discs.push_back({place, place, mechanism.radius});
  }
  if (movesMechanismsApart_) moveApart(discs, iRect_);
  return discs;
}

void geoMapView::drawMechanisms() {
  if (mechanisms_.empty()) return;
  const std::vector<PlacedDisc> discs = placeMechanisms();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(iRect_);
  context.setColor(colors::black);
  for (const PlacedDisc& disc : discs) {
    if (!disc.isMoved()) continue;
    strokeLine(disc.anchor, disc.center);
    Path dot;
    dot.appendOval(
        {disc.anchor.x() - kAnchorRadius, disc.anchor.y() - kAnchorRadius, 2 * kAnchorRadius, 2 * kAnchorRadius});
    context.fillPath(dot);
  }
  BeachBallPatches balls;
  for (std::size_t i = 0; i < discs.size(); ++i) {
    const PlacedDisc& disc = discs[i];
    const double reach = disc.radius + 1;
    if (!iRect_.adjusted(-reach, -reach, reach, reach).contains(disc.center)) continue;
    const BeachBall ball = beachBallOf(mechanisms_[i].tensor, BeachBallPatches::pointsFor(disc.radius));
    balls.add(ball, disc.center, disc.radius, {mechanisms_[i].color, colors::white, colors::black});
    if ((i + 1) % kBallsAtOnce != 0) continue;
    context.fillPatches(balls.patches());
    balls.clear();
  }
  context.fillPatches(balls.patches());
}

void geoMapView::drawLabels() {
  if (labels_.empty()) return;
  const MapProjection projection(iRect_, limits());
  std::vector<LabelledPlace> places;
  places.reserve(labels_.size());
  for (const MapLabel& label : labels_)
    places.push_back({projection.place(projection.symbolLongitude(label.longitudeDeg), label.latitudeDeg),
                      smallText().size(label.text), label.clearance});
  std::vector<QRectF> balls;
  for (const PlacedDisc& disc : placeMechanisms())
    balls.emplace_back(disc.center.x() - disc.radius, disc.center.y() - disc.radius, 2 * disc.radius,
                       2 * disc.radius);
  const std::vector<std::optional<QRectF>> standings = placeLabels(places, balls, iRect_);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(kPaleWhite);
  for (std::size_t i = 0; i < standings.size(); ++i) {
    if (!standings[i]) continue;
    context.fillRect(*standings[i]);
    context.drawText(labels_[i].text, standings[i]->topLeft(), smallText());
  }
}

// A bar in two halves, black and white, below its text:
//
//     ┌ 200 km ┐
//     └ ███░░░ ┘
void geoMapView::drawScaleBar() {
  if (!showScaleBar_) return;
  const std::optional<MapScaleBar> bar = mapScaleBar(iRect_, limits());
  if (!bar) return;
  const QSizeF text = smallText().size(bar->text);
  const double width = std::max(bar->length, text.width()) + 2 * kBarPadding;
  const QRectF box(iRect_.left() + kBarInset, iRect_.top() + kBarInset, width,
                   kBarHeight + text.height() + 2 * kBarPadding);
  const QRectF whole(box.center().x() - bar->length / 2, box.top() + kBarPadding, bar->length, kBarHeight);

  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(iRect_);
  context.setColor(kPaleWhite);
  context.fillRect(box);
  context.setColor(colors::white);
  context.fillRect(whole);
  context.setColor(colors::black);
  context.fillRect({whole.left(), whole.top(), whole.width() / 2, whole.height()});
  context.strokeRect(whole);
  drawSmallText(bar->text, {box.center().x(), whole.bottom() + (box.bottom() - whole.bottom()) / 2});
}

LaidOutLegend geoMapView::layoutLegend(double left, double width) const {
  return xov::layoutLegend(legend_, width, left + width / 2, kLegendBottom,
                           [](const QString& text) { return smallText().size(text).width(); });
}

void geoMapView::drawLegend() {
  if (legend_.empty()) return;
  const LaidOutLegend legend = layoutLegend(bounds().x(), bounds().width());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  for (const LegendCell& cell : legend.cells) {
    context.setColor(cell.color);
    context.fillRect(cell.rect);
  }
  for (const LegendLine& line : legend.lines) {
    context.setColor(line.color);
    strokeLine(line.from, line.to, line.width);
  }
  context.setColor(colors::black);
  for (const QRectF& bar : legend.bars)
    context.strokeRect(bar);
  for (const LegendSymbol& symbol : legend.symbols) {
    Path circle;
    circle.appendOval(
        {symbol.center.x() - symbol.radius, symbol.center.y() - symbol.radius, 2 * symbol.radius, 2 * symbol.radius});
    context.setFillColor(symbol.fill);
    if (symbol.fill.isValid()) context.fillPath(circle);
    context.strokePath(circle);
  }
  for (const LegendText& text : legend.texts) {
    const QSizeF size = smallText().size(text.text);
    drawSmallText(text.text, text.isCentered ? text.at : text.at + QPointF(size.width() / 2, 0));
  }
}

XOVImageView::ColorBarScale geoMapView::colorBarScale() const {
  ColorBarScale scale = XOVImageView::colorBarScale();
  if (gridColoring().meaning != CellMeaning::Elevation) return scale;
  float lowest = HUGE_VALF;
  float highest = -HUGE_VALF;
  for (const float value : heldCells()) {
    if (!std::isfinite(value)) continue;
    lowest = std::min(lowest, value);
    highest = std::max(highest, value);
  }
  if (lowest < highest) {
    scale.lowest = lowest;
    scale.highest = highest;
  }
  scale.fontSize = kElevationTextSize;
  scale.mayScaleLabels = std::max(std::abs(scale.lowest), std::abs(scale.highest)) >= kMostPlainMetres;
  return scale;
}

} // namespace xov
