#include "XOV_Graphics/seismic/io/events/Mchedr.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kLargestExponent = 40;    // of moments in N m
constexpr qint64 kLongestBefore = 3600; // seconds that a centroid may lie before the origin

bool isHypocentre(QByteArrayView line) { return line.startsWith("HY"); }

TimeFields timeFields(QByteArrayView line) {
  return {columnsOf(line, 3, 6),   columnsOf(line, 7, 8),   columnsOf(line, 9, 10),
          columnsOf(line, 12, 13), columnsOf(line, 14, 15), columnsOf(line, 16, 20)};
}

/// Degrees without a sign and the letter of their hemisphere, as one number.
QString signedDegrees(const QString& text, QByteArrayView letter, char negative) {
  return letter.startsWith(negative) && !text.isEmpty() ? QLatin1Char('-') + text : text;
}

void takeHypocentre(QByteArrayView line, EventDraft& draft) {
  draft.takeTime(timeFields(line));
  draft.take(kEventLatitude, signedDegrees(QString::fromUtf8(columnsOf(line, 22, 27)), columnsOf(line, 28, 28), 'S'),
             draft.values.latitudeDeg);
  draft.take(kEventLongitude, signedDegrees(QString::fromUtf8(columnsOf(line, 30, 36)), columnsOf(line, 37, 37), 'W'),
             draft.values.longitudeDeg);
  draft.take(kEventDepthKm, columnsOf(line, 39, 43), draft.values.depthKm);
}

/// A magnitude with its type, where the record writes 0 or nothing for none.
void takeMagnitude(QByteArrayView value, QByteArrayView type, EventDraft& draft) {
  if (draft.takeMagnitude(type.toByteArray().constData(), value) && draft.magnitudes.back().value == 0)
    draft.magnitudes.pop_back();
}

void takeMagnitudes(QByteArrayView line, EventDraft& draft) {
  takeMagnitude(columnsOf(line, 29, 31), "mb", draft);
  takeMagnitude(columnsOf(line, 37, 39), "Ms", draft);
  takeMagnitude(columnsOf(line, 43, 45), columnsOf(line, 46, 47), draft);
  takeMagnitude(columnsOf(line, 52, 54), columnsOf(line, 55, 56), draft);
}

void takeOtherMagnitudes(QByteArrayView line, EventDraft& draft) {
  takeMagnitude(columnsOf(line, 34, 36), columnsOf(line, 37, 38), draft);
  takeMagnitude(columnsOf(line, 44, 46), columnsOf(line, 47, 48), draft);
}

void takeOfficialMagnitude(QByteArrayView line, EventDraft& draft) {
  const std::size_t known = draft.magnitudes.size();
  takeMagnitude(columnsOf(line, 17, 19), columnsOf(line, 20, 21), draft);
  if (draft.magnitudes.size() == known) return;
  const EventMagnitude official = draft.magnitudes.back();
  const auto same = std::ranges::find_if(draft.magnitudes, [&](const EventMagnitude& magnitude) {
    return magnitude.value == official.value && magnitude.type.compare(official.type, Qt::CaseInsensitive) == 0;
  });
  draft.preferred = std::size_t(same - draft.magnitudes.begin());
  if (*draft.preferred < known) draft.magnitudes.pop_back();
}

/// A field of digits whose decimal point is not written, as "1234" for 12.34 with two decimals; empty where it is.
QString withPoint(QByteArrayView digits, int decimals) {
  const std::optional<std::int32_t> number = toNumber<std::int32_t>(digits);
  return number ? QString::number(double(*number) / std::pow(10.0, decimals), 'f', decimals)
                : QString::fromUtf8(digits);
}

/// What numbers with that exponent are to be multiplied by; nothing where it is none.
std::optional<double> powerOfTen(QByteArrayView exponent) {
  const std::optional<std::int32_t> number = toNumber<std::int32_t>(exponent);
  return number && std::abs(*number) <= kLargestExponent ? std::optional(std::pow(10.0, *number)) : std::nullopt;
}

/// On the day of the origin, or on the next where midnight lies between.
QDateTime centroidTime(QByteArrayView line, const QDateTime& origin) {
  const auto seconds = toNumber<std::int32_t>(columnsOf(line, 13, 15)); // in tenths
  const auto minutes = toNumber<std::int32_t>(columnsOf(line, 11, 12));
  const auto hours = toNumber<std::int32_t>(columnsOf(line, 9, 10));
  if (!seconds || !minutes || !hours || !origin.isValid()) return {};
  const QTime clock(*hours, *minutes, *seconds / 10, *seconds % 10 * 100);
  const QDateTime time(origin.date(), clock, Qt::UTC);
  return clock.isValid() && time < origin.addSecs(-kLongestBefore) ? time.addDays(1) : time;
}

/// The first record of a solution: its centroid and its scalar moment.
void takeCentroid(QByteArrayView line, EventDraft& draft, FocalMechanism& mechanism) {
  mechanism.centroidTime = centroidTime(line, draft.values.originTime);
  draft.take(kEventLatitude, signedDegrees(withPoint(columnsOf(line, 18, 21), 2), columnsOf(line, 22, 22), 'S'),
             mechanism.centroidLatitudeDeg);
  draft.take(kEventLongitude, signedDegrees(withPoint(columnsOf(line, 26, 30), 2), columnsOf(line, 31, 31), 'W'),
             mechanism.centroidLongitudeDeg);
  draft.take(kEventDepthKm, withPoint(columnsOf(line, 35, 38), 1), mechanism.centroidDepthKm);
  draft.take(kHalfDurationS, withPoint(columnsOf(line, 52, 54), 1), mechanism.halfDurationS);
  const std::optional<double> unit = powerOfTen(columnsOf(line, 59, 60));
  const auto moment = toNumber<std::int32_t>(columnsOf(line, 55, 56)); // in tenths
  if (unit && moment && *moment > 0) mechanism.scalarMomentNm = double(*moment) / 10 * *unit;
}

/// Six elements in hundredths, each behind its name and followed by its error; in N m times a power of ten.
void takeTensor(QByteArrayView line, EventDraft& draft, FocalMechanism& mechanism) {
  struct Element {
    const char* name;
    double MomentTensor::*value;
  };
  constexpr Element kElements[] = {{"rr", &MomentTensor::Mrr}, {"tt", &MomentTensor::Mtt},
                                   {"pp", &MomentTensor::Mpp}, {"rt", &MomentTensor::Mrt},
                                   {"rp", &MomentTensor::Mrp}, {"tp", &MomentTensor::Mtp}};
  if (columnsOf(line, 4, 15).isEmpty()) return;
  const std::optional<double> unit = powerOfTen(columnsOf(line, 4, 5));
  MomentTensor tensor;
  qsizetype column = 7;
  for (const Element& element : kElements) {
    const auto hundredths = toNumber<std::int32_t>(columnsOf(line, column + 2, column + 5));
    if (!unit || !hundredths || columnsOf(line, column, column + 1) != element.name)
      return draft.note(QStringLiteral("moment tensor: found no element %1").arg(QLatin1String(element.name)));
    tensor.*element.value = double(*hundredths) / 100 * *unit;
    column += 9;
  }
  mechanism.tensor = tensor;
}

/// The principal axes, which follow from the tensor, and the two planes.
void takePlanes(QByteArrayView line, EventDraft& draft, FocalMechanism& mechanism) {
  qsizetype column = 43;
  for (NodalPlane& plane : mechanism.planes) {
    draft.takePlane(columnsOf(line, column, column + 2), columnsOf(line, column + 3, column + 4),
                    columnsOf(line, column + 5, column + 8), plane);
    column += 9;
  }
}

/// A record of a solution of the source. Of several solutions the first one with a tensor is kept.
void takeSource(QByteArrayView line, EventDraft& draft, FocalMechanism& mechanism) {
  if (line.startsWith("Dp")) {
    mechanism = {};
    takeCentroid(line, draft, mechanism);
  } else if (line.startsWith("Dt")) {
    takeTensor(line, draft, mechanism);
  } else if (line.startsWith("Da")) {
    takePlanes(line, draft, mechanism);
  }
  if (mechanism.tensor || isDefined(double(mechanism.planes[0].strikeDeg))) draft.values.mechanism = mechanism;
}

void takeRecord(QByteArrayView line, EventDraft& draft) {
  if (line.startsWith("E ")) {
    takeMagnitudes(line, draft);
  } else if (line.startsWith("A ")) {
    takeOfficialMagnitude(line, draft);
  } else if (line.startsWith("AE")) {
    takeOtherMagnitudes(line, draft);
  }
}

} // namespace

bool isMchedr(QByteArrayView head) {
  TextLines lines(withoutMark(head));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    if (!withoutBlanks(*line).isEmpty()) return isHypocentre(*line) && timeOf(timeFields(*line));
  }
  return false;
}

Result<EventFile> readMchedr(QByteArrayView text, const QString& name) {
  EventList events(name);
  std::optional<EventDraft> draft;
  FocalMechanism solution;
  bool takesSolution = true;
  qint64 start = 0;
  const auto finishEvent = [&] {
    if (draft) events.add(*std::exchange(draft, {}), start);
  };
  TextLines lines(withoutMark(text));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    if (isHypocentre(*line)) {
      finishEvent();
      start = lines.number();
      takeHypocentre(*line, draft.emplace());
      solution = {};
      takesSolution = true;
    } else if (draft && line->startsWith('D')) {
      if (line->startsWith("Dp")) takesSolution = !draft->values.mechanism || !draft->values.mechanism->tensor;
      if (takesSolution) takeSource(*line, *draft, solution);
    } else if (draft) {
      takeRecord(*line, *draft);
    }
  }
  finishEvent();
  return events.result();
}

} // namespace xov
