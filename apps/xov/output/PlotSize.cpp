#include "apps/xov/output/PlotSize.h"

#include <QSizeF>

#include <cmath>

namespace xov::cli {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kCmPerInch = 2.54;

struct Unit {
  const char* name;
  double points;
};

constexpr Unit kUnits[] = {
    {"cm", kPointsPerInch / kCmPerInch},
    {"mm", kPointsPerInch / kCmPerInch / 10},
    {"in", kPointsPerInch},
    {"pt", 1},
};

Error unexpected(const QString& text) {
  return Error{QStringLiteral("found '%1', expected %2 to %3 points, as 600, 16cm, 160mm, 6in or 450pt")
                   .arg(text)
                   .arg(kSmallestSide)
                   .arg(kLargestSide)};
}

bool isSide(const std::optional<WrittenLength>& length) {
  return length && length->points >= kSmallestSide && length->points <= kLargestSide;
}

} // namespace

std::optional<WrittenLength> parsedLength(const QString& text) {
  WrittenLength length{1, false};
  QString number = text;
  for (const Unit& unit : kUnits) {
    const QLatin1String name(unit.name);
    if (!text.endsWith(name, Qt::CaseInsensitive)) continue;
    length = {unit.points, true};
    number.chop(name.size());
    break;
  }
  bool ok = false;
  length.points *= number.toDouble(&ok);
  if (!ok || !std::isfinite(length.points)) return {};
  return length;
}

Result<QSizeF> parsedSize(const QString& width, const QString& height) {
  const std::optional<WrittenLength> w = parsedLength(width);
  const std::optional<WrittenLength> h = parsedLength(height);
  if (!isSide(w)) return unexpected(width);
  if (!isSide(h)) return unexpected(height);
  if (w->hasUnit != h->hasUnit)
    return Error{QStringLiteral("found '%1 %2', expected a unit at both or at none").arg(width, height)};
  return QSizeF(w->points, h->points);
}

} // namespace xov::cli
