#include "XOV_Graphics/seismic/io/sac/SacChecks.h"

#include "XOV_Graphics/base/Numbers.h"

#include <QDate>

#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr int kValuesPerLine = 5;
constexpr double kLargestFloat = double(std::numeric_limits<float>::max());

struct FileType {
  std::int32_t iftype;
  const char* meaning;
};

constexpr FileType kOtherFileTypes[] = {
    {kSacRealImaginary, "a spectrum of real and imaginary parts"},
    {kSacAmplitudePhase, "a spectrum of amplitude and phase"},
    {kSacXY, "x-y data"},
    {kSacXYZ, "x-y-z data"},
};

const char* fileTypeMeaning(std::int32_t iftype) {
  for (const FileType& type : kOtherFileTypes) {
    if (type.iftype == iftype) return type.meaning;
  }
  return "an unknown type";
}

} // namespace

QString sacPlace(const char* field, std::size_t byteOffset, SacPlaces places) {
  const int word = int(byteOffset) / kSacWordBytes;
  // Both blocks fill whole lines, so the lines count on through the integers.
  const QString where = places == SacPlaces::Bytes ? " at byte " + QString::number(byteOffset)
                                                   : " on line " + QString::number(word / kValuesPerLine + 1);
  return QLatin1String(field) + where;
}

QString sacTimeNote(const SacHeader& header, const QString& name, SacPlaces places) {
  const bool isGiven = header.nzyear != kSacUndefinedInteger || header.nzjday != kSacUndefinedInteger;
  if (!isGiven || referenceTime(header).isValid()) return {};
  struct Field {
    const char* name;
    std::size_t offset;
    std::int32_t value;
    std::int32_t first;
    std::int32_t last;
    bool isRequired;
  };
  const bool leap = QDate::isLeapYear(header.nzyear);
  const Field fields[] = {
      {"nzyear", offsetof(SacHeader, nzyear), header.nzyear, 1, 9999, true},
      {"nzjday", offsetof(SacHeader, nzjday), header.nzjday, 1, leap ? 366 : 365, true},
      {"nzhour", offsetof(SacHeader, nzhour), header.nzhour, 0, 23, false},
      {"nzmin", offsetof(SacHeader, nzmin), header.nzmin, 0, 59, false},
      {"nzsec", offsetof(SacHeader, nzsec), header.nzsec, 0, 60, false},
      {"nzmsec", offsetof(SacHeader, nzmsec), header.nzmsec, 0, 999, false},
  };
  for (const Field& field : fields) {
    if (!field.isRequired && field.value == kSacUndefinedInteger) continue;
    if (field.value >= field.first && field.value <= field.last) continue;
    return QStringLiteral("%1: %2: found %3, expected %4 to %5; the record has no time")
        .arg(name, sacPlace(field.name, field.offset, places))
        .arg(field.value)
        .arg(field.first)
        .arg(field.last);
  }
  return {};
}

Error sacError(const QString& name, const QString& place, const QString& found, const QString& expected) {
  return {name + ": " + place + ": found " + found + ", expected " + expected};
}

Status checkSacHeader(const SacHeader& header, const QString& name, SacPlaces places) {
  if (header.nvhdr != kSacVersion6 && header.nvhdr != kSacVersion7)
    return sacError(name, sacPlace("nvhdr", offsetof(SacHeader, nvhdr), places), QString::number(header.nvhdr),
                    "6 or 7");
  if (header.iftype != kSacTimeSeries && header.iftype != kSacUndefinedInteger)
    return sacError(name, sacPlace("iftype", offsetof(SacHeader, iftype), places),
                    QString::number(header.iftype) + " (" + fileTypeMeaning(header.iftype) + ")",
                    "1 (a time series)");
  if (header.leven == 0)
    return sacError(name, sacPlace("leven", offsetof(SacHeader, leven), places), "0 (uneven spacing)",
                    "1 (even spacing)");
  if (header.npts < 0)
    return sacError(name, sacPlace("npts", offsetof(SacHeader, npts), places), QString::number(header.npts),
                    "0 or more");
  return {};
}

Status checkSacTimes(double delta, const QString& deltaPlace, double b, const QString& bPlace, const QString& name) {
  const bool deltaFits = delta > 0 && delta <= kLargestFloat && float(delta) > 0;
  if (!deltaFits) return sacError(name, deltaPlace, numberText(delta), "a finite number above 0");
  if (!(std::abs(b) <= kLargestFloat)) return sacError(name, bPlace, numberText(b), "a finite number");
  return {};
}

} // namespace xov
