#include "XOV_Graphics/seismic/realtime/ChannelArrival.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kMostUnits = 99999; // some three hundred years

} // namespace

QString latencyText(double seconds) {
  if (!std::isfinite(seconds)) return QStringLiteral("-");
  struct Unit {
    double from; // in seconds, from which on this unit is used
    double seconds;
    const char* name;
    int decimals;
  };
  constexpr Unit kUnits[] = {
      {0, 1, "s", 1}, {10, 1, "s", 0}, {120, 60, "min", 0}, {7200, 3600, "h", 0}, {172800, 86400, "d", 0},
  };
  const Unit* unit = kUnits;
  for (const Unit& each : kUnits) {
    if (std::abs(seconds) >= each.from) unit = &each;
  }
  const double scale = unit->decimals > 0 ? 10 : 1;
  const double units = std::clamp(seconds / unit->seconds, -kMostUnits, kMostUnits);
  const double value = std::trunc(units * scale) / scale + 0.0; // which makes -0 a plain 0
  return QStringLiteral("%1 %2").arg(QString::number(value, 'f', unit->decimals), QLatin1String(unit->name));
}

} // namespace xov
