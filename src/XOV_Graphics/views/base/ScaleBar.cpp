#include "XOV_Graphics/views/base/ScaleBar.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kMantissas[] = {1, 2, 5, 10};
constexpr double kRounding = 1e-9; // of a value; 0.1 · 10 points may be a little more than 1
constexpr int kDigits = 6;         // before a number gets an exponent

constexpr double kTextSize = 10;
constexpr double kTextGap = 6; // to the bar's ends

QString lengthText(double value) {
  QString text = QString::number(value, 'g', kDigits);
  return text.replace(QLatin1String("e+0"), QLatin1String("e")).replace(QLatin1String("e-0"), QLatin1String("e-"));
}

} // namespace

std::optional<ScaleBar> scaleBar(double pointsPerUnit, double most, const QString& unit) {
  const double largest = most / pointsPerUnit * (1 + kRounding);
  if (!(pointsPerUnit > 0) || !(most > 0) || !std::isnormal(largest)) return {};
  const double power = std::pow(10.0, std::floor(std::log10(largest)));
  if (!std::isnormal(power)) return {};
  ScaleBar bar;
  for (const double mantissa : kMantissas) {
    if (mantissa * power <= largest) bar.value = mantissa * power;
  }
  if (!(bar.value > 0)) return {};
  bar.length = bar.value * pointsPerUnit;
  bar.text = unit.isEmpty() ? lengthText(bar.value) : lengthText(bar.value) + QLatin1Char(' ') + unit;
  return bar;
}

double uprightBarWidth(const ScaleBar& bar) {
  return TextAttributes::helvetica(kTextSize).size(bar.text).width() + kTextGap + kScaleBarCap;
}

void drawUprightBar(const ScaleBar& bar, QPointF foot) {
  TextAttributes attributes = TextAttributes::helvetica(kTextSize);
  attributes.setColor(colors::darkGray);
  const QSizeF size = attributes.size(bar.text);
  Path path;
  path.moveTo(foot);
  path.lineTo({foot.x(), foot.y() + bar.length});
  for (const double y : {foot.y(), foot.y() + bar.length}) {
    path.moveTo({foot.x() - kScaleBarCap / 2, y});
    path.lineTo({foot.x() + kScaleBarCap / 2, y});
  }
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::darkGray);
  context.strokePath(path);
  const double left = foot.x() - kScaleBarCap / 2 - kTextGap - size.width();
  context.drawText(bar.text, {left, foot.y() + (bar.length - size.height()) / 2}, attributes);
}

} // namespace xov
