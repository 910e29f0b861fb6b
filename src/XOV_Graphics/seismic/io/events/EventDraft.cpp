#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/MagnitudeScale.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// What exports write where they know nothing.
constexpr const char* kNothing[] = {"nan", "null", "none", "-"};

constexpr double kLargestCount = 1e6; // beyond every year

/// A number without decimals, however it is written: "3" or "3.0000000e+00".
bool takeCount(QByteArrayView field, int& count) {
  const std::optional<double> number = toNumber<double>(field);
  if (!number || std::abs(*number) > kLargestCount || *number != std::floor(*number)) return false;
  count = int(*number);
  return true;
}

bool takeCountIfAny(QByteArrayView field, int& count) { return field.isEmpty() || takeCount(field, count); }

bool takeSeconds(QByteArrayView field, DateAndClock& time) {
  if (field.isEmpty()) return true;
  const std::optional<double> seconds = toNumber<double>(field);
  if (!seconds || !(*seconds >= 0 && *seconds < 61)) return false;
  time.second = int(*seconds);
  time.fraction = *seconds - time.second;
  return true;
}

} // namespace

QString knownText(QByteArrayView field) {
  const QString text = fieldText(field);
  const bool isNothing = std::ranges::any_of(
      kNothing, [&](const char* word) { return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0; });
  return isNothing ? QString() : text;
}

std::optional<QDateTime> timeOf(const TimeFields& fields) {
  DateAndClock time;
  const bool isDate =
      takeCount(fields.year, time.year) && takeCount(fields.month, time.month) && takeCount(fields.day, time.day);
  const bool isClock = takeCountIfAny(fields.hour, time.hour) && takeCountIfAny(fields.minute, time.minute) &&
                       takeSeconds(fields.second, time);
  return isDate && isClock ? utcTime(time) : std::nullopt;
}

void EventDraft::note(const QString& found) {
  if (problem.isEmpty()) problem = found;
}

void EventDraft::takeTime(const TimeFields& fields) {
  if (const std::optional<QDateTime> time = timeOf(fields)) {
    values.originTime = *time;
    return;
  }
  QStringList written;
  for (const QByteArrayView field :
       {fields.year, fields.month, fields.day, fields.hour, fields.minute, fields.second})
    written.append(QString::fromUtf8(field));
  note(unreadableTime(written.join(QLatin1Char(' ')).trimmed()));
}

void EventDraft::take(const EventNumber& number, const QString& text, float& value) {
  note(takeEventNumber(number, text, 1, value));
}

void EventDraft::take(const EventNumber& number, QByteArrayView field, float& value) {
  take(number, knownText(field), value);
}

void EventDraft::takePlane(QByteArrayView strike, QByteArrayView dip, QByteArrayView rake, NodalPlane& plane) {
  take(kStrikeDeg, strike, plane.strikeDeg);
  take(kDipDeg, dip, plane.dipDeg);
  take(kRakeDeg, rake, plane.rakeDeg);
}

bool EventDraft::takeMagnitude(const QString& type, const QString& text) {
  EventMagnitude magnitude{type, kUndefinedValue};
  take(kEventMagnitude, text, magnitude.value);
  if (!isDefined(magnitude.value)) return false;
  magnitudes.push_back(magnitude);
  return true;
}

bool EventDraft::takeMagnitude(const char* type, QByteArrayView field) {
  return takeMagnitude(QString::fromLatin1(type), knownText(field));
}

void EventList::add(EventDraft draft, qint64 line) {
  leftOut_.count(line, draft.problem);
  if (!draft.problem.isEmpty()) return;
  setMagnitudes(draft.values, std::move(draft.magnitudes), draft.preferred);
  file_.events.push_back(std::make_shared<Hypocentre>(std::move(draft.values)));
}

Result<EventFile> EventList::result() {
  if (leftOut_.isAll()) return leftOut_.error();
  file_.notes = leftOut_.notes();
  return std::move(file_);
}

} // namespace xov
