#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/AGraphicsState.h"
#include "XOV_Graphics/graphics/AxisMeasures.h"
#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/graphics/LogAxis.h"
#include "XOV_Graphics/graphics/UtcAxis.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

namespace xov {

namespace {

// The codes of the axis functions, beside those of AxisCodes.h.
constexpr int kXAxis = 1;
constexpr int kYAxis = 2;

struct LabelPoint {
  int x = 0;
  int y = 0;
};

int centerOf(const AxisFrame& frame) { return (frame.left + frame.right) / 2; }

LabelPoint belowFrame(const AxisFrame& frame, float fontSize) {
  return {centerOf(frame), towardZero(float(frame.bottom) - axis_measures::kTitleBelowX * fontSize)};
}

LabelPoint aboveFrame(const AxisFrame& frame, float fontSize) {
  return {centerOf(frame), towardZero(float(frame.top) + axis_measures::kTitleBelowX * fontSize)};
}

LabelPoint atUpperLeftCorner(const AxisFrame& frame, float fontSize) {
  return {towardZero(float(frame.left) - axis_measures::kTitleLeftY * fontSize),
          towardZero(float(frame.top) + axis_measures::kTitleAboveY * fontSize)};
}

// Measured from the left edge and half a frame above the top: hosts rely on the place as it is.
LabelPoint forRightAxis(const AxisFrame& frame, float fontSize) {
  const auto bottom = float(frame.bottom);
  const auto top = float(frame.top);
  return {towardZero(float(frame.left) + axis_measures::kTitleOfRightAxis * fontSize),
          towardZero((bottom + top) * 0.5f + top)};
}

struct AxisKind {
  AxisSide side;
  int labelJustify;
  LabelPoint (*labelPoint)(const AxisFrame& frame, float fontSize);
};

constexpr AxisKind kAxisKinds[] = {
    {AxisSide::Left, kJustifyLeft, atUpperLeftCorner},
    {AxisSide::Right, kJustifyCenter, forRightAxis},
    {AxisSide::Bottom, kJustifyCenter, belowFrame},
    {AxisSide::Top, kJustifyLeft, aboveFrame},
};

const AxisKind& kindOf(AxisSide side) {
  return *std::find_if(std::begin(kAxisKinds), std::end(kAxisKinds),
                       [side](const AxisKind& kind) { return kind.side == side; });
}

AxisDirection directionOf(AxisSide side) {
  return side == AxisSide::Left || side == AxisSide::Right ? AxisDirection::Y : AxisDirection::X;
}

std::optional<AxisSide> sideOf(int axis, int side) {
  for (const AxisKind& kind : kAxisKinds) {
    const int itsAxis = directionOf(kind.side) == AxisDirection::X ? kXAxis : kYAxis;
    if (axis == itsAxis && side == int(kind.side)) return kind.side;
  }
  return std::nullopt;
}

AxisDetail detailOf(int mode) {
  return AxisDetail(std::clamp(mode, int(AxisDetail::Frame), int(AxisDetail::Labels)));
}

struct AxisInterval {
  float lower;
  float upper;
  float step;
};

LinearAxisRequest requestFor(AxisSide side, AxisDetail detail, const AxisInterval& interval) {
  const bool isX = directionOf(side) == AxisDirection::X;
  LinearAxisRequest request;
  request.direction = directionOf(side);
  request.frame = aGraphicsState().axisRect;
  request.line = side == AxisSide::Right ? AxisLine::AtEnd : AxisLine::AtStart;
  request.detail = detail;
  request.fontSize = gFontsize;
  request.lower = interval.lower;
  request.upper = interval.upper;
  request.interval = interval.step;
  request.mayScaleLabels = mayScaleLabels(side);
  request.minorTicks = (isX ? gXsecTic : gYsecTic) != 0;
  request.invertSigns = !isX && gPosDown != 0;
  return request;
}

void drawSegments(const std::vector<AxisSegment>& segments) {
  for (const AxisSegment& segment : segments) {
    AFMove(segment.x1, segment.y1);
    AFLine(segment.x2, segment.y2);
  }
}

// Draws all of an axis but its label, and returns the suffix that the label gets.
std::string drawTicked(AxisSide side, AxisDetail detail, const AxisInterval& interval) {
  const LinearAxis axis = layoutLinearAxis(requestFor(side, detail, interval));
  const int justify = directionOf(side) == AxisDirection::X ? kJustifyCenter : kJustifyRight;
  // Y axes leave their justification behind even where they have no labels.
  if (directionOf(side) == AxisDirection::Y) ASetJustify(justify);
  drawSegments(axis.frame);
  drawSegments(axis.ticks);
  for (const AxisLabel& label : axis.labels) {
    ASetJustify(justify);
    ADrawStr(label.text.c_str(), label.x, label.y);
  }
  return axis.suffix;
}

TextAttributes tickLabelAttributes() {
  const auto attributes = aGraphicsState().labelAttributes.lock();
  return attributes ? *attributes : TextAttributes();
}

// The fonts of numbers with exponents.
struct PowerFonts {
  explicit PowerFonts(const TextAttributes& attributes) : text(attributes), exponent(attributes) {
    exponent.setFont(text.family(), kExponentSize * text.pointSize());
  }

  double width(const LogTick& tick) const {
    const double number = text.size(QString::fromStdString(tick.text)).width();
    if (tick.exponent.empty()) return number;
    return number + exponent.size(QString::fromStdString(tick.exponent)).width();
  }

  void draw(const LogAxisLabel& label) const {
    GraphicsContext& context = GraphicsContext::current();
    const QString number = QString::fromStdString(label.tick.text);
    context.drawText(number, {label.x, label.y}, text);
    if (label.tick.exponent.empty()) return;
    context.drawText(QString::fromStdString(label.tick.exponent),
                     {label.x + text.size(number).width(), label.y + kExponentRise * text.pointSize()}, exponent);
  }

  TextAttributes text;
  TextAttributes exponent;
};

void drawAxisLabel(AxisSide side, const std::string& text) {
  const AxisKind& kind = kindOf(side);
  ASetJustify(kind.labelJustify);
  const LabelPoint point = kind.labelPoint(aGraphicsState().axisRect, float(gFontsize));
  ADrawStr(text.c_str(), point.x, point.y);
}

void writeSuffix(const std::string& text, char* suffix) {
  if (suffix != nullptr) std::snprintf(suffix, kAxisSuffixSize, "%s", text.c_str());
}

} // namespace

bool mayScaleLabels(AxisSide side) {
  const AGraphicsState& state = aGraphicsState();
  return (directionOf(side) == AxisDirection::X ? state.xPowerFlag : state.yPowerFlag) != 0;
}

void ASetAxisRect(float left, float right, float top, float bottom) {
  aGraphicsState().axisRect = axisFrame(left, right, top, bottom);
}

void AXlinAxis(int, char* suffix, int mode, float upper, float lower, float interval) {
  writeSuffix(drawTicked(AxisSide::Bottom, detailOf(mode), {lower, upper, interval}), suffix);
}

void AYlinAxis(int side, char* suffix, int mode, float upper, float lower, float interval) {
  const AxisSide line = side == int(AxisSide::Right) ? AxisSide::Right : AxisSide::Left;
  writeSuffix(drawTicked(line, detailOf(mode), {lower, upper, interval}), suffix);
}

void ADrawAxis(std::span<char> label, AxisSide side, AxisDetail detail, float lower, float upper, float interval) {
  const std::string suffix = drawTicked(side, detail, {lower, upper, interval});
  if (detail != AxisDetail::Labels) return;

  std::string text(label.begin(), std::find(label.begin(), label.end(), '\0'));
  text += suffix;
  if (text.size() < label.size()) std::memcpy(label.data(), text.c_str(), text.size() + 1);
  drawAxisLabel(side, text);
}

void ADrawLogAxis(const QString& label, AxisSide side, double lowerLog10, double upperLog10) {
  const PowerFonts fonts(tickLabelAttributes());
  LogAxisRequest request;
  request.direction = directionOf(side);
  request.frame = aGraphicsState().axisRect;
  request.line = side == AxisSide::Right ? AxisLine::AtEnd : AxisLine::AtStart;
  request.fontSize = gFontsize;
  request.lower = lowerLog10;
  request.upper = upperLog10;
  request.minorTicks = (request.direction == AxisDirection::X ? gXsecTic : gYsecTic) != 0;
  request.textWidth = [&fonts](const LogTick& tick) { return fonts.width(tick); };
  const LogAxis axis = layoutLogAxis(request);
  drawSegments(axis.frame);
  drawSegments(axis.ticks);
  for (const LogAxisLabel& text : axis.labels)
    fonts.draw(text);
  drawAxisLabel(side, label.toStdString());
}

void ADrawUtcAxis(const QString& label, const QDateTime& reference, double lower, double upper) {
  const TextAttributes font = tickLabelAttributes();
  UtcAxisRequest request;
  request.frame = aGraphicsState().axisRect;
  request.fontSize = gFontsize;
  request.minorTicks = gXsecTic != 0;
  request.reference = reference;
  request.lower = lower;
  request.upper = upper;
  request.title = label;
  request.textWidth = [&font](const QString& text) { return font.size(text).width(); };
  const UtcAxis axis = layoutUtcAxis(request);
  drawSegments(axis.frame);
  drawSegments(axis.ticks);
  for (const UtcAxisText& text : axis.texts) {
    ASetJustify(text.justify);
    ADrawStr(text.label.text.c_str(), text.label.x, text.label.y);
  }
  ASetJustify(kJustifyCenter);
}

void ADrawAxis(std::span<char> label, int axis, int side, int mode, float lower, float upper, float interval) {
  if (const auto edge = sideOf(axis, side)) ADrawAxis(label, *edge, detailOf(mode), lower, upper, interval);
}

void ADrawAxis(char* label, int axis, int side, int mode, float lower, float upper, float interval) {
  const std::size_t size = label == nullptr ? 0 : std::strlen(label) + kAxisSuffixSize;
  ADrawAxis(std::span<char>(label, size), axis, side, mode, lower, upper, interval);
}

} // namespace xov
