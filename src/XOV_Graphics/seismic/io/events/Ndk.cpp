#include "XOV_Graphics/seismic/io/events/Ndk.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include <cmath>

namespace xov {

namespace {

constexpr std::size_t kLinesAnEvent = 5;
constexpr std::size_t kLinesBeforeCentroid = 2;
constexpr std::size_t kMostLinesHeld = 8; // of an event that has too many
constexpr double kNewtonMetresPerDyneCm = 1e-7;
constexpr int kLowestExponent = 10; // of moments in dyne cm: magnitude -4
constexpr int kHighestExponent = 40;
constexpr double kLongestShiftSeconds = 86400; // of the centroid from the origin
constexpr double kMillisecondsPerSecond = 1000;

bool isCentroidLine(QByteArrayView line) { return line.startsWith("CENTROID:"); }

struct Line {
  QByteArrayView text;
  qint64 number = 0;
};

std::optional<double> finiteNumber(QByteArrayView field) {
  const std::optional<double> number = toNumber<double>(field);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

QString notANumber(const char* what, QByteArrayView field) {
  return QLatin1String(what) + ": found \"" + QString::fromUtf8(field.first(std::min<qsizetype>(field.size(), 20))) +
         "\", expected a number";
}

void takeOrigin(QByteArrayView line, EventDraft& draft) {
  const QString time = QString::fromUtf8(columnsOf(line, 6, 26));
  if (const std::optional<QDateTime> moment = parseUtcTime(time)) {
    draft.values.originTime = *moment;
  } else {
    draft.note(unreadableTime(time));
  }
  draft.take(kEventLatitude, columnsOf(line, 28, 33), draft.values.latitudeDeg);
  draft.take(kEventLongitude, columnsOf(line, 35, 41), draft.values.longitudeDeg);
  draft.take(kEventDepthKm, columnsOf(line, 43, 47), draft.values.depthKm);
  draft.values.name = QString::fromUtf8(columnsOf(line, 57, 80));
}

/// The magnitudes of the first line; 0 stands for none.
void takeReportedMagnitudes(QByteArrayView line, EventDraft& draft) {
  const auto takeOne = [&draft](const char* type, QByteArrayView field) {
    if (draft.takeMagnitude(type, field) && draft.magnitudes.back().value == 0) draft.magnitudes.pop_back();
  };
  takeOne("mb", columnsOf(line, 49, 51));
  takeOne("MS", columnsOf(line, 52, 55));
}

/// "TRIHD:  0.6": the shape of the source time function, which is not kept, and half of its duration.
void takeHalfDuration(QByteArrayView field, EventDraft& draft, FocalMechanism& mechanism) {
  const qsizetype colon = field.indexOf(':');
  if (colon >= 0) draft.take(kHalfDurationS, withoutBlanks(field.sliced(colon + 1)), mechanism.halfDurationS);
}

void takeCentroid(QByteArrayView line, EventDraft& draft, FocalMechanism& mechanism) {
  const QByteArrayView shift = columnsOf(line, 10, 18);
  const std::optional<double> seconds = finiteNumber(shift);
  if (!seconds || std::abs(*seconds) > kLongestShiftSeconds) {
    draft.note(notANumber("centroid time", shift));
  } else if (draft.values.originTime.isValid()) {
    mechanism.centroidTime = draft.values.originTime.addMSecs(std::llround(*seconds * kMillisecondsPerSecond));
  }
  draft.take(kEventLatitude, columnsOf(line, 23, 29), mechanism.centroidLatitudeDeg);
  draft.take(kEventLongitude, columnsOf(line, 35, 42), mechanism.centroidLongitudeDeg);
  draft.take(kEventDepthKm, columnsOf(line, 48, 53), mechanism.centroidDepthKm);
}

/// What numbers in the units of an event are to be multiplied by to become N m.
std::optional<double> momentUnit(QByteArrayView line) {
  const std::optional<std::int32_t> exponent = toNumber<std::int32_t>(columnsOf(line, 1, 2));
  if (!exponent || *exponent < kLowestExponent || *exponent > kHighestExponent) return {};
  return std::pow(10.0, *exponent) * kNewtonMetresPerDyneCm;
}

/// The six elements, each in 7 columns and followed by its error in 6.
void takeTensor(QByteArrayView line, double unit, EventDraft& draft, FocalMechanism& mechanism) {
  MomentTensor tensor;
  qsizetype column = 3;
  for (double* const element : {&tensor.Mrr, &tensor.Mtt, &tensor.Mpp, &tensor.Mrt, &tensor.Mrp, &tensor.Mtp}) {
    const QByteArrayView field = columnsOf(line, column, column + 6);
    const std::optional<double> number = finiteNumber(field);
    if (!number) draft.note(notANumber("moment tensor", field));
    *element = number.value_or(0) * unit;
    column += 13;
  }
  mechanism.tensor = tensor;
}

void takeScalarMoment(QByteArrayView line, double unit, EventDraft& draft, FocalMechanism& mechanism) {
  const QByteArrayView field = columnsOf(line, 49, 56);
  const std::optional<double> moment = finiteNumber(field);
  if (!moment || *moment <= 0) return draft.note(notANumber("scalar moment", field));
  mechanism.scalarMomentNm = *moment * unit;
  const double dyneCm = mechanism.scalarMomentNm / kNewtonMetresPerDyneCm;
  const double magnitude = std::round(2.0 / 3 * (std::log10(dyneCm) - 16.1) * 100) / 100;
  if (magnitude < kEventMagnitude.lowest || magnitude > kEventMagnitude.highest)
    return draft.note(notANumber("scalar moment", field));
  draft.preferred = draft.magnitudes.size();
  draft.magnitudes.push_back({QStringLiteral("Mwc"), float(magnitude)});
}

void takePlanes(QByteArrayView line, EventDraft& draft, FocalMechanism& mechanism) {
  qsizetype column = 57;
  for (NodalPlane& plane : mechanism.planes) {
    draft.takePlane(columnsOf(line, column, column + 3), columnsOf(line, column + 4, column + 6),
                    columnsOf(line, column + 7, column + 11), plane);
    column += 12;
  }
}

EventDraft readEvent(const std::vector<Line>& lines) {
  EventDraft draft;
  if (lines.size() != kLinesAnEvent) {
    const QString found = lines.size() < kLinesAnEvent ? QString::number(lines.size()) : QStringLiteral("more");
    draft.note("found " + found + " lines, expected " + QString::number(kLinesAnEvent) + " an event");
    return draft;
  }
  FocalMechanism mechanism;
  takeOrigin(lines[0].text, draft);
  takeReportedMagnitudes(lines[0].text, draft);
  takeHalfDuration(columnsOf(lines[1].text, 70, 80), draft, mechanism);
  takeCentroid(lines[2].text, draft, mechanism);
  const std::optional<double> unit = momentUnit(lines[3].text);
  if (unit) {
    takeTensor(lines[3].text, *unit, draft, mechanism);
    takeScalarMoment(lines[4].text, *unit, draft, mechanism);
  } else {
    draft.note(notANumber("exponent of the moment", columnsOf(lines[3].text, 1, 2)));
  }
  takePlanes(lines[4].text, draft, mechanism);
  draft.values.mechanism = mechanism;
  return draft;
}

/// Cuts a file into events: each starts two lines before its centroid, so that one line too few or too many spoils
/// one event only.
class NdkReader {
public:
  explicit NdkReader(const QString& name) : events_(name) {}

  void addLine(const Line& line) {
    if (isCentroidLine(line.text) && lines_.size() > kLinesBeforeCentroid) {
      const std::vector<Line> start(lines_.end() - kLinesBeforeCentroid, lines_.end());
      lines_.resize(lines_.size() - kLinesBeforeCentroid);
      finishEvent();
      lines_ = start;
    }
    lines_.push_back(line);
    if (lines_.size() > kMostLinesHeld) lines_.erase(lines_.begin() + kLinesAnEvent);
  }

  Result<EventFile> result() {
    finishEvent();
    return events_.result();
  }

private:
  void finishEvent() {
    if (!lines_.empty()) events_.add(readEvent(lines_), lines_.front().number);
  }

  std::vector<Line> lines_;
  EventList events_;
};

} // namespace

bool isNdk(QByteArrayView head) {
  TextLines lines(withoutMark(head));
  std::size_t before = 0;
  while (const std::optional<QByteArrayView> line = lines.next()) {
    if (withoutBlanks(*line).isEmpty()) continue;
    if (before == kLinesBeforeCentroid) return isCentroidLine(*line);
    ++before;
  }
  return false;
}

Result<EventFile> readNdk(QByteArrayView text, const QString& name) {
  NdkReader reader(name);
  TextLines lines(withoutMark(text));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    if (!withoutBlanks(*line).isEmpty()) reader.addLine({*line, lines.number()});
  }
  return reader.result();
}

} // namespace xov
