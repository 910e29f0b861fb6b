#pragma once

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "tests/support/FakeRecord.h"
#include "tests/views/seismic/SeisDrawing.h"

#include <QDateTime>

#include <initializer_list>
#include <memory>

namespace xov::testing {

/// A time that tells its date only after it was asked to refresh it.
class FakeTime : public SeisTime {
public:
  explicit FakeTime(const QDateTime& date) : date_(date) {}
  const char* YMDcString() const override { return "2011-070"; }
  void updateNSDate() override { updated_ = true; }
  QDateTime nsDate() const override { return updated_ ? date_ : QDateTime(); }

private:
  QDateTime date_;
  bool updated_ = false;
};

/// An event whose every answer a test can set.
class FakeEvent : public EventOrigin {
public:
  explicit FakeEvent(const QDateTime& origin, float momentMagnitude = kUndefinedValue)
      : date(origin),
        time(std::make_shared<FakeTime>(origin)),
        moment(momentMagnitude) {}

  QDateTime date;
  std::shared_ptr<SeisTime> time;
  float size = kUndefinedValue, bodyWave = kUndefinedValue, surfaceWave = kUndefinedValue, moment;

  std::shared_ptr<SeisTime> _origin_time() const override { return time; }
  QDateTime oDate() const override { return date; }
  float magnitude() const override { return size; }
  float mb() const override { return bodyWave; }
  float Ms() const override { return surfaceWave; }
  float Mw() const override { return moment; }
};

using Events = std::shared_ptr<EventOriginArray>;

inline Events eventsOf(std::initializer_list<std::shared_ptr<FakeEvent>> events) {
  return std::make_shared<EventOriginArray>(events.begin(), events.end());
}

inline QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                     int millisecond = 0) {
  return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

/// Gives a record that reference time, in its header and as an object.
inline void setReference(FakeRecord& record, const QDateTime& time) {
  record.header.nzyear = time.date().year();
  record.header.nzjday = time.date().dayOfYear();
  record.header.nzhour = time.time().hour();
  record.header.nzmin = time.time().minute();
  record.header.nzsec = time.time().second();
  record.header.nzmsec = time.time().msec();
  record.reference = std::make_shared<UtcTime>(time);
}

inline std::shared_ptr<FakeRecord> recordAt(const QDateTime& reference, std::vector<float> samples,
                                            float interval = 1, float begin = 0) {
  auto record = fakeRecord(std::move(samples), interval, begin);
  setReference(*record, reference);
  return record;
}

} // namespace xov::testing
