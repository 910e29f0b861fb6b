#include "XOV_Graphics/views/seismic/Captions.h"

#include "XOV_Graphics/base/Numbers.h"

namespace xov {

namespace {

// Above this an angle in whole degrees takes three digits.
constexpr float kThreeDigitsAbove = 99.5f;
constexpr int kPeakDecimals = 3;

QString fixed(float value, int width, int decimals) {
  return QString::fromStdString(fixedText(value, width, decimals, Sign::WhenNegative));
}

QString wholeDegrees(float degrees) { return fixed(degrees, degrees > kThreeDigitsAbove ? 3 : 2, 0); }

} // namespace

QString eventCaption(const SeismogramRecord& record) {
  return QStringLiteral("%1\nOrigin Time:%2 / Depth = %3 km")
      .arg(record.flinnEngdahlString(), record.oTimeString(), fixed(record.evdp(), 3, 0));
}

QString azimuthCaption(const SeismogramRecord& record) {
  return QStringLiteral("%1 %2 (%3)").arg(record.kstnm(), record.knetwk(), wholeDegrees(record.azimuth()));
}

QString distanceCaption(const SeismogramRecord& record) {
  return QStringLiteral("%1 (%2)").arg(record.kuser0(), wholeDegrees(record.gcarc()));
}

QString stripCaption(const SeismogramRecord& record) {
  return QStringLiteral("%1 %2 %3 (%4) (%5)")
      .arg(record.kstnm(), record.knetwk(), record.kcmpnm(), fixed(record.gcarc(), 0, 2),
           fixed(record.azimuth(), 0, 2));
}

QString regionCaption(const SeismogramRecord& record) {
  return QStringLiteral("%1\nOrigin Time:%2 / Depth:%3")
      .arg(record.flinnEngdahlGeographicRegion(), record.oTimeString(), fixed(record.evdp(), 3, 0));
}

QString geometryCaption(const SeismogramRecord& record) {
  return QStringLiteral("Station: %1-%2 / GCARC:%3 deg / AZ:%4 / BAZ:%5")
      .arg(record.kstnm(), record.knetwk(), fixed(record.gcarc(), 3, 1), fixed(record.azimuth(), 5, 1),
           fixed(record.backazimuth(), 5, 1));
}

QString peakCaption(const SeismogramRecord& record) {
  constexpr int kWidth = 9;
  return QString::fromStdString(exponentText(record.absMax(), kPeakDecimals, Sign::WhenNegative))
      .rightJustified(kWidth);
}

QString fileCaption(const QString& path) {
  qsizetype end = path.size();
  while (end > 0 && path[end - 1] == QLatin1Char('/'))
    --end;
  QString name = path.left(end);
  name.remove(0, name.lastIndexOf(QLatin1Char('/')) + 1);
  return name.remove(QLatin1String(".sac"), Qt::CaseInsensitive);
}

} // namespace xov
