#pragma once

#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <QDateTime>

#include <memory>
#include <vector>

namespace xov {

/// 2011-03-11 at that time, UTC.
inline QDateTime onTheDay(int hour, int minute, int second = 0, int millisecond = 0) {
  return QDateTime(QDate(2011, 3, 11), QTime(hour, minute, second, millisecond), Qt::UTC);
}

/// What a test needs of a record. The samples are 0, 1, 2, ...
struct RecordFields {
  const char* station = "TLY";
  const char* component = "BHZ";
  QDateTime reference = onTheDay(5, 0); ///< invalid: none
  float begin = 0;
  float interval = 1;
  int count = 10;
  const char* path = "";
  std::int32_t quantity = kSacUndefinedInteger; ///< idep
};

inline std::shared_ptr<SacSeismogram> makeRecord(const RecordFields& fields = {}) {
  SacHeader header;
  header.knetwk = "II";
  header.kstnm = fields.station;
  header.kcmpnm = fields.component;
  header.b = fields.begin;
  header.delta = fields.interval;
  header.idep = fields.quantity;
  if (fields.reference.isValid()) setReferenceTime(header, fields.reference);
  std::vector<float> samples;
  for (int i = 0; i < fields.count; ++i)
    samples.push_back(float(i));
  return std::make_shared<SacSeismogram>(header, std::move(samples), QString::fromLatin1(fields.path));
}

} // namespace xov
