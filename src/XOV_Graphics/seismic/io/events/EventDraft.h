#pragma once

#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/seismic/io/events/EventNumbers.h"
#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// What a field of a catalogue says; empty when it stands for nothing, as "NaN" does.
QString knownText(QByteArrayView field);

/// The fields of a moment as a row has them. Those that are empty count as 0, but for the day.
struct TimeFields {
  QByteArrayView year;
  QByteArrayView month;
  QByteArrayView day;
  QByteArrayView hour;
  QByteArrayView minute;
  QByteArrayView second; ///< with its decimals
};

/// The moment that they are, in UTC.
std::optional<QDateTime> timeOf(const TimeFields& fields);

/// One event while it is read, with the first problem that it has.
struct EventDraft {
  HypocentreValues values;
  std::vector<EventMagnitude> magnitudes; ///< in the order of the catalogue
  std::optional<std::size_t> preferred;   ///< the place in `magnitudes` of the one that the catalogue prefers
  QString problem;                        ///< empty when the event can be used

  void note(const QString& found);
  void takeTime(const TimeFields& fields);
  /// Reads a number; an empty text leaves `value` as it is.
  void take(const EventNumber& number, const QString& text, float& value);
  void take(const EventNumber& number, QByteArrayView field, float& value);
  void takePlane(QByteArrayView strike, QByteArrayView dip, QByteArrayView rake, NodalPlane& plane);
  /// Adds the magnitude that a field holds, if any, and says whether it did.
  bool takeMagnitude(const QString& type, const QString& text);
  bool takeMagnitude(const char* type, QByteArrayView field);
};

/// The events of a file as they are read, less those with a problem, which are counted.
class EventList {
public:
  /// `what` is that part of the file in the singular which holds one event.
  explicit EventList(const QString& name, const char* what = "event") : leftOut_(name, what) {}

  /// Adds the event that stands on that line.
  void add(EventDraft draft, qint64 line);
  /// All events, or what was wrong with the first where none can be used.
  Result<EventFile> result();

private:
  LeftOut leftOut_;
  EventFile file_;
};

} // namespace xov
