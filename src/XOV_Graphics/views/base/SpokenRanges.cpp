#include "XOV_Graphics/views/base/SpokenRanges.h"

#include <QStringList>

namespace xov {

QString spokenRanges(const PlotLimits& limits, const QString& x, const QString& y) {
  QStringList ranges;
  const auto add = [&](const QString& name, float from, float to) {
    if (from == to) return;
    ranges << QStringLiteral("%1 from %2 to %3").arg(name, QString::number(from), QString::number(to));
  };
  add(x, limits.xmin, limits.xmax);
  add(y, limits.ymin, limits.ymax);
  return ranges.join(QStringLiteral(", "));
}

} // namespace xov
