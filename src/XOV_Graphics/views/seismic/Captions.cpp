#include "XOV_Graphics/views/seismic/Captions.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <QStringList>

namespace xov {

namespace {

// Above this an angle in whole degrees takes three digits.
constexpr float kThreeDigitsAbove = 99.5f;
constexpr int kPeakDecimals = 3;

QString fixed(float value, int width, int decimals) {
  return QString::fromStdString(fixedText(value, width, decimals, Sign::WhenNegative));
}

QString wholeDegrees(float degrees) { return fixed(degrees, degrees > kThreeDigitsAbove ? 3 : 2, 0); }

QString inBrackets(const QString& text) { return QLatin1Char('(') + text + QLatin1Char(')'); }

// The parts of a caption, of those records that leave out what is not set without the parts that say nothing.
class CaptionParts {
public:
  explicit CaptionParts(const SeismogramRecord& record)
      : leavesOut_(record.unsetNumbers() == UnsetNumbers::LeftOut) {}

  CaptionParts& addText(const QString& text) { return add(!text.isEmpty(), text); }
  CaptionParts& addNamedText(const char* name, const QString& text) {
    return add(!text.isEmpty(), QLatin1String(name) + text);
  }
  CaptionParts& addNumber(float number, const QString& text) { return add(isDefined(double(number)), text); }

  QString joined(const char* separator) const { return parts_.join(QLatin1String(separator)); }

private:
  CaptionParts& add(bool isSet, const QString& part) {
    if (isSet || !leavesOut_) parts_ << part;
    return *this;
  }

  bool leavesOut_;
  QStringList parts_;
};

// "region\nOrigin Time:time / depth".
QString originCaption(const SeismogramRecord& record, const QString& region, const QString& depth) {
  const QString origin = CaptionParts(record)
                             .addNamedText("Origin Time:", record.oTimeString())
                             .addNumber(record.evdp(), depth)
                             .joined(" / ");
  return CaptionParts(record).addText(region).addText(origin).joined("\n");
}

} // namespace

QString eventCaption(const SeismogramRecord& record) {
  const QString depth = QLatin1String("Depth = ") + fixed(record.evdp(), 3, 0) + QLatin1String(" km");
  return originCaption(record, record.flinnEngdahlString(), depth);
}

QString azimuthCaption(const SeismogramRecord& record) {
  return CaptionParts(record)
      .addText(record.kstnm())
      .addText(record.knetwk())
      .addNumber(record.azimuth(), inBrackets(wholeDegrees(record.azimuth())))
      .joined(" ");
}

QString distanceCaption(const SeismogramRecord& record) {
  return CaptionParts(record)
      .addText(record.kuser0())
      .addNumber(record.gcarc(), inBrackets(wholeDegrees(record.gcarc())))
      .joined(" ");
}

QString stripCaption(const SeismogramRecord& record) {
  return CaptionParts(record)
      .addText(record.kstnm())
      .addText(record.knetwk())
      .addText(record.kcmpnm())
      .addNumber(record.gcarc(), inBrackets(fixed(record.gcarc(), 0, 2)))
      .addNumber(record.azimuth(), inBrackets(fixed(record.azimuth(), 0, 2)))
      .joined(" ");
}

QString shortCaption(const SeismogramRecord& record) {
  return CaptionParts(record).addText(record.kstnm()).addText(record.knetwk()).addText(record.kcmpnm()).joined(" ");
}

QString regionCaption(const SeismogramRecord& record) {
  return originCaption(record, record.flinnEngdahlGeographicRegion(),
                       QLatin1String("Depth:") + fixed(record.evdp(), 3, 0));
}

QString geometryCaption(const SeismogramRecord& record) {
  const QString station = CaptionParts(record).addText(record.kstnm()).addText(record.knetwk()).joined("-");
  return CaptionParts(record)
      .addNamedText("Station: ", station)
      .addNumber(record.gcarc(), QLatin1String("GCARC:") + fixed(record.gcarc(), 3, 1) + QLatin1String(" deg"))
      .addNumber(record.azimuth(), QLatin1String("AZ:") + fixed(record.azimuth(), 5, 1))
      .addNumber(record.backazimuth(), QLatin1String("BAZ:") + fixed(record.backazimuth(), 5, 1))
      .joined(" / ");
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
