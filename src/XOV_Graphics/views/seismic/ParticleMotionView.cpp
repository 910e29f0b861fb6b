#include "XOV_Graphics/views/seismic/ParticleMotionView.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/seismic/MotionPanels.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr std::size_t kVertical = 0;
constexpr std::size_t kFirst = 1; // horizontal component
constexpr std::size_t kSecond = 2;

constexpr float kAxisFontSize = 12;
constexpr double kNameLeft = 46; // of the name of an axis, from the panel
constexpr float kNameBelow = 20;
constexpr double kStartRadius = 3;
constexpr double kDirectionWidth = 1.5;
constexpr double kTextBottom = 8;
constexpr double kTextSize = 12;
constexpr float kMargin = 1.05F; // beyond the largest amplitude
constexpr double kFullCircleDeg = 360;
constexpr double kHalfCircleDeg = 180;

double turned(double degrees) {
  const double inside = std::fmod(degrees, kFullCircleDeg);
  return inside < 0 ? inside + kFullCircleDeg : inside;
}

std::span<const float> samplesOf(const ParticleMotion& motion, std::size_t component) {
  const auto& samples = motion.samples[component];
  return samples ? std::span<const float>(*samples) : std::span<const float>();
}

float largestAmplitude(const ParticleMotion& motion) {
  float largest = 0;
  for (std::size_t k = 0; k < motion.samples.size(); ++k) {
    for (const float sample : samplesOf(motion, k)) {
      if (std::isfinite(sample)) largest = std::max(largest, std::abs(sample));
    }
  }
  return largest;
}

} // namespace

ParticleMotionView::ParticleMotionView(const QRectF& frame, QWidget* parent)
    : XOVView(frame, parent),
      pathColor_(colors::black) {
  setXLimitsMinMax(-1, 1);
  setYLimitsMinMax(-1, 1);
}

ParticleMotionView::~ParticleMotionView() = default;

QString ParticleMotionView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("second horizontal component")
                           : QStringLiteral("first horizontal component");
}

PlotReach ParticleMotionView::reach() const {
  PlotReach reach;
  reach.gain = true;
  return reach;
}

void ParticleMotionView::applyPart() {
  const PlotLimits whole = wholeLimits().limits;
  const double gain = shownGain();
  takeShownX({double(whole.xmin) / gain, double(whole.xmax) / gain});
  takeShownY({double(whole.ymin) / gain, double(whole.ymax) / gain});
}

void ParticleMotionView::setMotion(const ParticleMotion& motion) {
  showPart({});
  motion_ = motion;
  polarization_ =
      polarizationOf(samplesOf(motion_, kVertical), samplesOf(motion_, kFirst), samplesOf(motion_, kSecond));
  if (_fixedXAxisRange()) return;
  const float largest = largestAmplitude(motion_);
  const float limit = largest > 0 && std::isfinite(largest * kMargin) ? largest * kMargin : 1;
  setXLimitsMinMax(-limit, limit);
  setYLimitsMinMax(-limit, limit);
}

QString ParticleMotionView::polarizationText() const {
  if (!polarization_) return {};
  const double azimuth = turned(motion_.firstAzimuthDeg + polarization_->azimuthDeg);
  return QStringLiteral("azimuth %1° (back azimuth %2°), incidence %3°, rectilinearity %4, planarity %5")
      .arg(azimuth, 0, 'f', 0)
      .arg(turned(azimuth + kHalfCircleDeg), 0, 'f', 0)
      .arg(polarization_->incidenceDeg, 0, 'f', 0)
      .arg(polarization_->rectilinearity, 0, 'f', 2)
      .arg(polarization_->planarity, 0, 'f', 2);
}

void ParticleMotionView::computeRects() {
  const MotionPanels panels = layOutMotionPanels(bounds());
  pRect_ = panels.frame;
  iRect_ = panels.panel.front();
}

void ParticleMotionView::drawRect(const QRectF&) {
  drawPaper();
  computeRects();
  if (inLiveResize()) return drawViewSize();
  for (int panel = 0; panel < 3; ++panel)
    drawPanel(panel);
  drawPolarizationText();
  iRect_ = pRect_; // the title stands over the middle of all panels
  drawTitleTopCentered();
  computeRects();
  if (_timeStamp()) drawTimeStamp();
}

ParticleMotionView::Axes ParticleMotionView::axesOf(int panel) {
  if (panel == 0) return {kSecond, kFirst};
  return {panel == 1 ? kFirst : kSecond, kVertical};
}

void ParticleMotionView::drawPanel(int panel) {
  const QRectF rect = layOutMotionPanels(bounds()).panel[std::size_t(std::clamp(panel, 0, 2))];
  if (!(rect.width() > 0)) return;
  const Axes axes = axesOf(panel);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  drawPath(rect, axes);
  if (showPolarization_) drawDirection(rect, axes);
  context.setColor(colors::black);
  const TextAttributes attributes = *labelAttributes();
  setLabelFontSize(kAxisFontSize);
  beginAxes(rect);
  ASetFontSize(int(kAxisFontSize));
  const MotionScale scale = motionScale(xmax_ - xmin_);
  addAxis(AxisSide::Bottom, QString(), xmin_ * scale.factor, xmax_ * scale.factor, scale.interval);
  addAxis(AxisSide::Left, QString(), ymin_ * scale.factor, ymax_ * scale.factor, scale.interval);
  strokeAxisPath();
  const QString suffix = scale.exponent == 0 ? QString() : QString::fromStdString(powerOfTenSuffix(scale.exponent));
  drawStringXYHJustVJust(motion_.names[axes.x] + suffix, float(rect.center().x()), float(rect.top()) - kNameBelow,
                         HJust::Center, VJust::Top);
  // Text that is centred and then turned upright lies a line's height to the left.
  const double left = rect.left() - kNameLeft + labelAttributes()->lineHeight();
  drawRotatedStringXYHJustVJustAngle(motion_.names[axes.y] + suffix, float(left), float(rect.center().y()),
                                     HJust::Center, VJust::Center, 90);
  *labelAttributes() = attributes;
}

PlotReadout ParticleMotionView::readout(QPointF point) const {
  PlotReadout readout;
  if (iRect_.isEmpty()) return readout; // not drawn yet
  const MotionPanels layout = layOutMotionPanels(bounds());
  for (int panel = 0; panel < int(layout.panel.size()); ++panel) {
    const QRectF& rect = layout.panel[std::size_t(panel)];
    const Axes axes = axesOf(panel);
    if (!(rect.width() > 0) || !containsPoint(rect, point)) continue;
    if (samplesOf(motion_, axes.x).empty() || samplesOf(motion_, axes.y).empty()) continue;
    const QPointF at = viewToData(point, rect, limits());
    const double step = double(xmax_ - xmin_) / rect.width();
    const NamedUnit x(motion_.names[axes.x]);
    const NamedUnit y(motion_.names[axes.y]);
    readout.add(QLatin1String("x"), at.x(), x.unit, step, x.name);
    readout.add(QLatin1String("y"), at.y(), y.unit, step, y.name);
  }
  return readout;
}

void ParticleMotionView::drawPath(const QRectF& panel, const Axes& axes) {
  const std::span<const float> x = samplesOf(motion_, axes.x);
  const std::span<const float> y = samplesOf(motion_, axes.y);
  if (x.empty() || y.empty()) return;
  Trace trace;
  trace.samples = y.data();
  trace.last = std::int64_t(std::min(x.size(), y.size()));
  trace.time = TraceTime::explicitValues(x.data());
  trace.tOrigin = xmin_;
  trace.xScale = float(panel.width() / double(xmax_ - xmin_));
  trace.xOffset = float(panel.x());
  trace.vOrigin = ymin_;
  trace.yScale = float(panel.height() / double(ymax_ - ymin_));
  trace.yOffset = float(panel.y());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(panel);
  context.setColor(pathColor_);
  Path path;
  path.appendTrace(trace);
  context.strokePath(path);
  const QPointF start = dataToView({double(x.front()), double(y.front())}, panel, limits());
  Path dot;
  dot.appendOval({start.x() - kStartRadius, start.y() - kStartRadius, 2 * kStartRadius, 2 * kStartRadius});
  context.fillPath(dot);
}

// Through the middle, as long as the panel has room for.
void ParticleMotionView::drawDirection(const QRectF& panel, const Axes& axes) {
  if (!polarization_) return;
  const QPointF along(polarization_->direction[axes.x], polarization_->direction[axes.y]);
  const QPointF middle = dataToView({0, 0}, panel, limits());
  const QPointF reach = along * (panel.width() / 2);
  Path line;
  line.moveTo(middle - reach);
  line.lineTo(middle + reach);
  line.setLineWidth(kDirectionWidth);
  line.setDashes({6, 4}, 0);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(panel);
  context.setColor(colors::red);
  context.strokePath(line);
}

void ParticleMotionView::drawPolarizationText() {
  if (!showPolarization_) return;
  const QString text = polarizationText();
  const TextAttributes attributes = TextAttributes::helvetica(kTextSize);
  GraphicsContext::current().drawText(
      text, {bounds().center().x() - attributes.size(text).width() / 2, bounds().y() + kTextBottom}, attributes);
}

} // namespace xov
