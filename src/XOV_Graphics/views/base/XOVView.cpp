#include "XOV_Graphics/views/base/XOVView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/AGraphicsState.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace xov {

namespace {

constexpr double kLabelSize = 18;
constexpr double kTitleSize = 18;
constexpr double kSubtitleSize = 9;
constexpr double kSizeLabelSize = 12;
constexpr double kTimeStampSize = 9;
constexpr double kDefaultTrackInterval = 0.25; // seconds

constexpr double kPlotMargin = 20;
constexpr double kFrameOffset = 50;
constexpr double kTitleRightGap = 24;
constexpr double kTitleTopGap = 4;
constexpr double kSubtitleSideGap = 12; // to the edges of the view
constexpr double kTimeStampGap = 6;
constexpr double kPointsPerInch = 72;
constexpr float kAxisLineWidth = 0.75f;

// Two digits behind the point, in every locale, with halves rounded to even as printf() does.
QString inches(double points) {
  std::array<char, 400> text; // holds the largest double
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), points / kPointsPerInch, std::chars_format::fixed, 2);
  return QString::fromLatin1(text.data(), end.ptr - text.data());
}

std::shared_ptr<TextAttributes> helvetica(double size) {
  return std::make_shared<TextAttributes>(TextAttributes::helvetica(size));
}

} // namespace

XOVView::XOVView(const QRectF& frame, QWidget* parent)
    : View(frame, parent),
      labelAttributes_(helvetica(kLabelSize)),
      sizeLabelAttributes_(helvetica(kSizeLabelSize)),
      titleAttributes_(helvetica(kTitleSize)),
      timeStampAttributes_(helvetica(kTimeStampSize)),
      xAxisPath_(std::make_shared<Path>()),
      mouseTrackInterval_(kDefaultTrackInterval) {
  timeStampAttributes_->setColor(colors::gray);
  buildMenu();
}

XOVView::~XOVView() = default;

void XOVView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kPlotMargin, kPlotMargin, b.width() - 2 * kPlotMargin, b.height() - 2 * kPlotMargin};
  iRect_ = {kFrameOffset, kFrameOffset, pRect_.width() - 2 * kPlotMargin, pRect_.height() - 2 * kPlotMargin};
}

void XOVView::viewDidEndLiveResize() {
  computeRects();
  setNeedsDisplay(true);
}

void XOVView::setXmin(float value) { setXLimitsMinMax(value, xmax_); }

void XOVView::setXmax(float value) { setXLimitsMinMax(xmin_, value); }

void XOVView::setYmin(float value) { setYLimitsMinMax(value, ymax_); }

void XOVView::setYmax(float value) { setYLimitsMinMax(ymin_, value); }

void XOVView::setXLimitsMinMax(float min, float max) {
  if (!endPart()) return;
  xmin_ = min;
  xmax_ = max;
  limitsWereSet();
}

void XOVView::setYLimitsMinMax(float min, float max) {
  if (!endPart()) return;
  ymin_ = min;
  ymax_ = max;
  limitsWereSet();
}

void XOVView::setLabelFontSize(float size) { labelAttributes_->setFont(QStringLiteral("Helvetica"), size); }

void XOVView::setTitleFontSize(float size) { titleAttributes_->setFont(QStringLiteral("Helvetica"), size); }

void XOVView::setTitleColor(const QColor& color) { titleAttributes_->setColor(color); }

void XOVView::setXLabel(const QString& text, LabelRoom room) {
  const std::size_t kept = room == LabelRoom::ExceptPowerOfTen ? kAxisSuffixSize : 0;
  QByteArray bytes = text.toUtf8();
  qsizetype length = std::min(bytes.size(), qsizetype(kLabelBufferSize - kept - 1));
  // Never cut inside a character.
  while (length > 0 && length < bytes.size() && (uchar(bytes[length]) & 0xC0) == 0x80)
    --length;
  xLabel_.fill('\0');
  std::memcpy(xLabel_.data(), bytes.constData(), std::size_t(length));
}

void XOVView::drawStringXYHJustVJust(const QString& string, float x, float y, int hjust, int vjust) {
  const QPointF origin = alignedTextOrigin({x, y}, labelAttributes_->size(string), hjust, vjust);
  GraphicsContext::current().drawText(string, origin, *labelAttributes_);
}

void XOVView::drawRotatedStringXYHJustVJustAngle(const QString& string, float x, float y, int hjust, int vjust,
                                                 float angle) {
  const QPointF origin = rotatedTextOrigin({x, y}, labelAttributes_->size(string), hjust, vjust);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.concat(QTransform::fromTranslate(origin.x(), origin.y()));
  context.concat(QTransform().rotate(angle));
  context.drawText(string, {0, 0}, *labelAttributes_);
}

void XOVView::drawTitleAt(QPointF origin) {
  if (!plotTitle_.isEmpty()) GraphicsContext::current().drawText(plotTitle_, origin, *titleAttributes_);
}

void XOVView::drawTitle() {
  const QSizeF size = titleAttributes_->size(plotTitle_);
  drawTitleAt({iRect_.x() + iRect_.width() - size.width() - kTitleRightGap,
               iRect_.y() + iRect_.height() - 2 * size.height()});
}

void XOVView::drawTitleTopCentered() {
  const QSizeF size = titleAttributes_->size(plotTitle_);
  const double below = drawSubtitle();
  drawTitleAt(
      {iRect_.x() + (iRect_.width() - size.width()) / 2, iRect_.y() + iRect_.height() + kTitleTopGap + below});
}

/// Draws the subtitle and gives its height.
double XOVView::drawSubtitle() {
  if (subtitle_.isEmpty()) return 0;
  TextAttributes attributes = TextAttributes::helvetica(kSubtitleSize);
  attributes.setColor(titleAttributes_->effectiveColor());
  const double room = bounds().width() - 2 * kSubtitleSideGap;
  const double width = attributes.size(subtitle_).width();
  if (width > room) attributes.setFont(QStringLiteral("Helvetica"), std::max(kSubtitleSize * room / width, 1.0));
  const QSizeF size = attributes.size(subtitle_);
  GraphicsContext::current().drawText(
      subtitle_, {iRect_.x() + (iRect_.width() - size.width()) / 2, iRect_.y() + iRect_.height() + kTitleTopGap},
      attributes);
  return size.height();
}

void XOVView::drawTimeStamp() {
  const QString text = timeStampText(QDateTime::currentDateTime());
  const QRectF b = bounds();
  const double width = timeStampAttributes_->size(text).width();
  GraphicsContext::current().drawText(text, {b.x() + b.width() - width - kTimeStampGap, b.y() + kTimeStampGap},
                                      *timeStampAttributes_);
}

void XOVView::drawViewSize() {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::black);
  context.strokeRect(iRect_);
  const QString text = QStringLiteral("%1 by %2 (inches)").arg(inches(iRect_.width()), inches(iRect_.height()));
  const QSizeF size = sizeLabelAttributes_->size(text);
  context.drawText(
      text, {iRect_.x() + (iRect_.width() - size.width()) / 2, iRect_.y() + (iRect_.height() - size.height()) / 2},
      *sizeLabelAttributes_);
}

void XOVView::strokeBounds() {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::black);
  context.strokeRect(bounds());
}

void XOVView::fillBounds() { GraphicsContext::current().fillRect(bounds()); }

void XOVView::fillWithColorStrokeColor(const QColor& fill, const QColor& stroke) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(fill);
  context.fillRect(bounds());
  context.setColor(stroke);
  context.strokeRect(bounds());
}

void XOVView::beginAxes(const QRectF& frame) {
  AInitGraphLib();
  emptyAxisPath();
  ASetPath(xAxisPath_);
  ASetTickLabelAttributes(labelAttributes_);
  ASetAxisRect(float(frame.x()), float(frame.x() + frame.width()), float(frame.y() + frame.height()),
               float(frame.y()));
  ASetLineWidth(kAxisLineWidth);
}

void XOVView::addAxis(AxisSide side, const QString& label, float lower, float upper, float interval) {
  const bool isX = side == AxisSide::Bottom || side == AxisSide::Top;
  if (isX ? logAxes().x : logAxes().y) {
    const LogRange range = logRange(lower, upper);
    ADrawLogAxis(label, side, range.lower, range.upper);
    return;
  }
  setXLabel(label, mayScaleLabels(side) ? LabelRoom::ExceptPowerOfTen : LabelRoom::All);
  ADrawAxis(xLabel_, side, AxisDetail::Labels, lower, upper, interval);
}

void XOVView::emptyAxisPath() {
  if (xAxisPath_) xAxisPath_->removeAllPoints();
}

void XOVView::strokeAxisPath() {
  if (xAxisPath_) GraphicsContext::current().strokePath(*xAxisPath_);
}

void XOVView::drawPaper() { fillWithColorStrokeColor(colors::white, colors::black); }

} // namespace xov
