#include "XOV_Graphics/graphics/AGraphics.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/graphics/AGraphicsState.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace xov {

XOV_PER_THREAD std::int32_t gDevice = 0;
XOV_PER_THREAD std::int32_t gFont = 0;
XOV_PER_THREAD std::int32_t gFontsize = 0;
XOV_PER_THREAD std::int32_t gJustify = 0;
XOV_PER_THREAD std::int32_t gPenWidth = 0;
XOV_PER_THREAD std::int32_t gPosDown = 0;
XOV_PER_THREAD std::int32_t gXsecTic = 0;
XOV_PER_THREAD std::int32_t gYsecTic = 0;

namespace {

constexpr int kInitialFont = 20;
constexpr int kInitialFontSize = 18;

constexpr int kMostDecimals = 32;
constexpr std::size_t kNumberBufferSize = 32;
// Decimal logarithms beyond which a number is written with an exponent.
constexpr double kExponentAbove = 4;
constexpr double kExponentBelow = -4;

TextAttributes labelAttributes() {
  const auto attributes = aGraphicsState().labelAttributes.lock();
  return attributes ? *attributes : TextAttributes();
}

// How far a string starts left of its point. Codes 4 to 6 take half the height off the horizontal position, too.
double leftShift(int code, QSizeF box) {
  switch (code) {
  case 2:
    return box.width() / 2;
  case 3:
    return box.width();
  case 4:
    return box.height() / 2;
  case 5:
    return box.width() / 2 + box.height() / 2;
  case 6:
    return box.width() + box.height() / 2;
  default:
    return 0;
  }
}

} // namespace

AGraphicsState& aGraphicsState() {
  static XOV_PER_THREAD AGraphicsState state;
  return state;
}

void AInitGraphLib() {
  gFont = kInitialFont;
  gFontsize = kInitialFontSize;
  gJustify = kJustifyLeft;
  gXsecTic = 1;
  gYsecTic = 1;
  AGraphicsState& state = aGraphicsState();
  state.path.reset();
  state.xPowerFlag = 0;
  state.yPowerFlag = 0;
}

void ASetXAxisPowerFlag(int flag) { aGraphicsState().xPowerFlag = flag; }

void ASetYAxisPowerFlag(int flag) { aGraphicsState().yPowerFlag = flag; }

void ASetPath(const std::shared_ptr<Path>& path) { aGraphicsState().path = path; }

void ASetTickLabelAttributes(const std::shared_ptr<const TextAttributes>& attributes) {
  aGraphicsState().labelAttributes = attributes;
}

void ASetFontSize(int points) { gFontsize = points; }

void ASetJustify(int code) { gJustify = code; }

void ASetLineWidth(float width) {
  if (const auto path = aGraphicsState().path.lock()) path->setLineWidth(double(width));
}

void AMove(int x, int y) {
  if (const auto path = aGraphicsState().path.lock()) path->moveTo({double(x), double(y)});
}

void ALine(int x, int y) {
  if (const auto path = aGraphicsState().path.lock()) path->lineTo({double(x), double(y)});
}

void AFMove(float x, float y) {
  if (const auto path = aGraphicsState().path.lock()) path->moveTo({double(x), double(y)});
}

void AFLine(float x, float y) {
  if (const auto path = aGraphicsState().path.lock()) path->lineTo({double(x), double(y)});
}

void ADrawStr(const char* text, int x, int y) {
  if (text == nullptr) return;
  const QString string = QString::fromUtf8(text);
  const TextAttributes attributes = labelAttributes();
  const double left = x - leftShift(gJustify, attributes.size(string));
  GraphicsContext::current().drawText(string, {left, double(y)}, attributes);
}

void ADrawStrAtAngle(const char* text, int, int, float) {
  GraphicsContext& context = GraphicsContext::current();
  if (text != nullptr) context.drawText(QString::fromUtf8(text), {0, 0}, labelAttributes());
  context.restoreState();
}

void ADrawFloat(float value, int decimals, int x, int y) {
  decimals = std::min(decimals, kMostDecimals);
  const double magnitude = std::log10(std::abs(double(value)));
  const bool withExponent = magnitude > kExponentAbove || magnitude < kExponentBelow;
  const std::string text =
      withExponent ? exponentText(value, decimals, Sign::Always) : fixedText(value, 0, decimals, Sign::Always);
  if (text.size() >= kNumberBufferSize) {
    std::fprintf(stderr, "ADrawFloat: %s is longer than %zu characters\n", text.c_str(), kNumberBufferSize - 1);
    std::abort();
  }
  ADrawStr(text.c_str(), x, y);
}

// At most 11 characters, so no number is too long.
void ADrawInt(int value, int, int x, int y) { ADrawStr(std::to_string(value).c_str(), x, y); }

} // namespace xov
