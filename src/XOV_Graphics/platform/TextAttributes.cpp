#include "XOV_Graphics/platform/TextAttributes.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/Typeface.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Helvetica's own ascent and descent, used whatever font stands in for it.
constexpr double kAscent = 0.92;
constexpr double kDescent = 0.23;
constexpr double kSystemLabelSize = 10;

} // namespace

TextAttributes::TextAttributes(const QString& family, double pointSize) { setFont(family, pointSize); }

TextAttributes TextAttributes::helvetica(double pointSize) {
  return TextAttributes(QStringLiteral("Helvetica"), pointSize);
}

TextAttributes TextAttributes::systemLabel() { return helvetica(kSystemLabelSize); }

void TextAttributes::setFont(const QString& family, double pointSize) {
  family_ = family;
  pointSize_ = std::isfinite(pointSize) ? std::max(0.0, pointSize) : 0.0;
}

QColor TextAttributes::effectiveColor() const { return color_.value_or(colors::black); }

QSizeF TextAttributes::size(const QString& text) const {
  if (pointSize_ <= 0) return {0, 0};
  const Typeface& face = Typeface::forFamily(family_);
  const QStringList lines = text.split(QLatin1Char('\n'));
  double width = 0;
  for (const QString& line : lines)
    width = std::max(width, face.advance(line));
  return {width * pointSize_, lineHeight() * double(lines.size())};
}

double TextAttributes::lineHeight() const { return (kAscent + kDescent) * pointSize_; }

double TextAttributes::descent() const { return kDescent * pointSize_; }

} // namespace xov
