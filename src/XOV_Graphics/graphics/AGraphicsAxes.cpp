#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/AGraphicsState.h"
#include "XOV_Graphics/graphics/LinearAxis.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

namespace xov {

namespace {

// The codes of the axis functions.
constexpr int kXAxis = 1;
constexpr int kYAxis = 2;
constexpr int kSideLeft = 1;
constexpr int kSideRight = 2;
constexpr int kSideBottom = 3;
constexpr int kSideTop = 4;
constexpr int kModeTicks = 1;
constexpr int kModeLabels = 2;

// Where axis labels stand, in font sizes.
constexpr float kXLabelOffset = 2.5f;
constexpr float kLeftLabelOffset = 2.0f;
constexpr float kLeftLabelAbove = 0.5f;
constexpr float kRightLabelOffset = 3.5f;

struct LabelPoint {
  int x = 0;
  int y = 0;
};

int centerOf(const AxisFrame& frame) { return (frame.left + frame.right) / 2; }

LabelPoint belowFrame(const AxisFrame& frame, float fontSize) {
  return {centerOf(frame), towardZero(float(frame.bottom) - kXLabelOffset * fontSize)};
}

LabelPoint aboveFrame(const AxisFrame& frame, float fontSize) {
  return {centerOf(frame), towardZero(float(frame.top) + kXLabelOffset * fontSize)};
}

LabelPoint atUpperLeftCorner(const AxisFrame& frame, float fontSize) {
  return {towardZero(float(frame.left) - kLeftLabelOffset * fontSize),
          towardZero(float(frame.top) + kLeftLabelAbove * fontSize)};
}

// Measured from the left edge and half a frame above the top: hosts rely on the place as it is.
LabelPoint forRightAxis(const AxisFrame& frame, float fontSize) {
  const auto bottom = float(frame.bottom);
  const auto top = float(frame.top);
  return {towardZero(float(frame.left) + kRightLabelOffset * fontSize), towardZero((bottom + top) * 0.5f + top)};
}

struct AxisKind {
  int axis;
  int side;
  void (*drawAxis)(int side, char* suffix, int mode, float upper, float lower, float interval);
  int labelJustify;
  LabelPoint (*labelPoint)(const AxisFrame& frame, float fontSize);
};

constexpr AxisKind kAxisKinds[] = {
    {kXAxis, kSideBottom, AXlinAxis, kJustifyCenter, belowFrame},
    {kXAxis, kSideTop, AXlinAxis, kJustifyLeft, aboveFrame},
    {kYAxis, kSideLeft, AYlinAxis, kJustifyLeft, atUpperLeftCorner},
    {kYAxis, kSideRight, AYlinAxis, kJustifyCenter, forRightAxis},
};

AxisDetail detailOf(int mode) {
  if (mode >= kModeLabels) return AxisDetail::Labels;
  return mode >= kModeTicks ? AxisDetail::Ticks : AxisDetail::Frame;
}

LinearAxisRequest requestFor(int mode, float upper, float lower, float interval) {
  LinearAxisRequest request;
  request.frame = aGraphicsState().axisRect;
  request.detail = detailOf(mode);
  request.fontSize = gFontsize;
  request.lower = lower;
  request.upper = upper;
  request.interval = interval;
  return request;
}

void drawSegments(const std::vector<AxisSegment>& segments) {
  for (const AxisSegment& segment : segments) {
    AFMove(segment.x1, segment.y1);
    AFLine(segment.x2, segment.y2);
  }
}

void drawAxis(const LinearAxis& axis, int labelJustify) {
  drawSegments(axis.frame);
  drawSegments(axis.ticks);
  for (const AxisLabel& label : axis.labels) {
    ASetJustify(labelJustify);
    ADrawStr(label.text.c_str(), label.x, label.y);
  }
}

void writeSuffix(const LinearAxis& axis, char* suffix) {
  if (suffix != nullptr) std::snprintf(suffix, kAxisSuffixSize, "%s", axis.suffix.c_str());
}

} // namespace

void ASetAxisRect(float left, float right, float top, float bottom) {
  const auto as16Bits = [](float value) { return std::int16_t(towardZero(value)); };
  aGraphicsState().axisRect = {as16Bits(top), as16Bits(left), as16Bits(bottom), as16Bits(right)};
}

void AXlinAxis(int, char* suffix, int mode, float upper, float lower, float interval) {
  LinearAxisRequest request = requestFor(mode, upper, lower, interval);
  request.mayScaleLabels = aGraphicsState().xPowerFlag != 0;
  request.minorTicks = gXsecTic != 0;
  const LinearAxis axis = layoutLinearAxis(request);
  writeSuffix(axis, suffix);
  drawAxis(axis, kJustifyCenter);
}

void AYlinAxis(int side, char* suffix, int mode, float upper, float lower, float interval) {
  LinearAxisRequest request = requestFor(mode, upper, lower, interval);
  request.direction = AxisDirection::Y;
  request.line = side == kSideRight ? AxisLine::AtEnd : AxisLine::AtStart;
  request.mayScaleLabels = aGraphicsState().yPowerFlag != 0;
  request.minorTicks = gYsecTic != 0;
  request.invertSigns = gPosDown != 0;
  const LinearAxis axis = layoutLinearAxis(request);
  writeSuffix(axis, suffix);
  ASetJustify(kJustifyRight);
  drawAxis(axis, kJustifyRight);
}

void ADrawAxis(std::span<char> label, int axis, int side, int mode, float lower, float upper, float interval) {
  const auto kind = std::find_if(std::begin(kAxisKinds), std::end(kAxisKinds),
                                 [&](const AxisKind& k) { return k.axis == axis && k.side == side; });
  if (kind == std::end(kAxisKinds)) return;

  std::array<char, kAxisSuffixSize> suffix{};
  kind->drawAxis(side, suffix.data(), mode, upper, lower, interval);
  if (mode < kModeLabels) return;

  std::string text(label.begin(), std::find(label.begin(), label.end(), '\0'));
  text += suffix.data();
  if (text.size() < label.size()) std::memcpy(label.data(), text.c_str(), text.size() + 1);
  ASetJustify(kind->labelJustify);
  const LabelPoint point = kind->labelPoint(aGraphicsState().axisRect, float(gFontsize));
  ADrawStr(text.c_str(), point.x, point.y);
}

void ADrawAxis(char* label, int axis, int side, int mode, float lower, float upper, float interval) {
  const std::size_t size = label == nullptr ? 0 : std::strlen(label) + kAxisSuffixSize;
  ADrawAxis(std::span<char>(label, size), axis, side, mode, lower, upper, interval);
}

} // namespace xov
