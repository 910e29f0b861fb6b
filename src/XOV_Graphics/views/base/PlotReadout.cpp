#include "XOV_Graphics/views/base/PlotReadout.h"

#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kReadoutDigits = 6;
constexpr int kMostDecimals = 6;
constexpr double kMsPerSecond = 1000;
constexpr double kLongestMs = 3.2e14; // ten thousand years

QString numberFor(double value, double step) {
  if (!(step > 0) || !std::isfinite(step)) return QString::number(value, 'g', kReadoutDigits);
  const double decimals = std::ceil(-std::log10(step));
  // Beyond what a status line has room for.
  if (std::abs(value) >= 1e9 || decimals > kMostDecimals) return QString::number(value, 'g', kReadoutDigits);
  QString text = QString::number(value, 'f', int(std::max(decimals, 0.0)));
  const bool isZero = std::none_of(text.begin(), text.end(), [](QChar c) { return c >= u'1' && c <= u'9'; });
  if (isZero && text.startsWith(u'-')) text.remove(0, 1);
  return text;
}

} // namespace

const PlotQuantity* PlotReadout::find(QLatin1String name) const {
  const auto found = std::ranges::find(quantities, QString(name), &PlotQuantity::name);
  return found == quantities.end() ? nullptr : &*found;
}

double PlotReadout::value(QLatin1String name) const {
  const PlotQuantity* const found = find(name);
  return found == nullptr ? std::numeric_limits<double>::quiet_NaN() : found->value;
}

QString PlotReadout::text() const {
  QStringList texts;
  for (const PlotQuantity& quantity : quantities)
    texts << quantity.text;
  return texts.join(QStringLiteral("   "));
}

void PlotReadout::add(QLatin1String name, double value, const QString& unit, double step, const QString& label) {
  if (!std::isfinite(value)) return;
  QString text = (label.isEmpty() ? QString(name) : label) + QLatin1Char(' ') + numberFor(value, step);
  const bool isJoined = unit.startsWith(QChar(0xB0)); // a degree sign stands at its number
  if (!unit.isEmpty()) text += (isJoined ? QString() : QStringLiteral(" ")) + unit;
  quantities.push_back({name, value, unit, text});
}

void PlotReadout::addText(QLatin1String name, const QString& text) {
  if (!text.isEmpty()) quantities.push_back({name, std::numeric_limits<double>::quiet_NaN(), {}, text});
}

void PlotReadout::addMoment(const QDateTime& moment, double step, const QTimeZone& zone) {
  if (!moment.isValid()) return;
  const double seconds = double(moment.toMSecsSinceEpoch()) / kMsPerSecond;
  const QString unit = QStringLiteral("s");
  const QString clock = step < 1 ? QStringLiteral("HH:mm:ss.zzz") : QStringLiteral("HH:mm:ss");
  const QString withDate = QStringLiteral("yyyy-MM-dd ") + clock;
  const QDateTime utc = moment.toUTC();
  quantities.push_back({QStringLiteral("utc"), seconds, unit, utc.toString(withDate) + QStringLiteral(" UTC")});
  if (!zone.isValid()) return;
  const QDateTime local = moment.toTimeZone(zone);
  const QString localText = local.toString(local.date() == utc.date() ? clock : withDate);
  quantities.push_back(
      {QStringLiteral("local"), seconds, unit, QStringLiteral("local %1 %2").arg(localText, zoneOffsetText(local))});
}

QDateTime momentAfter(const QDateTime& reference, double seconds) {
  const double milliseconds = seconds * kMsPerSecond;
  if (!reference.isValid() || !(std::abs(milliseconds) <= kLongestMs)) return {};
  return reference.addMSecs(std::llround(milliseconds));
}

NamedUnit::NamedUnit(const QString& label) : name(label.trimmed()) {
  const qsizetype open = name.lastIndexOf(QLatin1Char('('));
  if (open <= 0 || !name.endsWith(QLatin1Char(')'))) return;
  unit = name.mid(open + 1).chopped(1);
  name = name.left(open).trimmed();
}

} // namespace xov
