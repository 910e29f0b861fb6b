#include "XOV_Graphics/seismic/io/events/Nordic.h"

#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include <algorithm>

namespace xov {

namespace {

constexpr qsizetype kLineColumns = 80; // the last one has the type of the line

struct MagnitudeLetter {
  char letter;
  const char* type;
};

constexpr MagnitudeLetter kMagnitudeLetters[] = {
    {'L', "ML"}, {'b', "mb"}, {'B', "mB"},    {'s', "Ms"}, {'S', "MS"},
    {'W', "Mw"}, {'C', "Mc"}, {'G', "mb_Lg"}, {'N', "MN"},
};

/// Where a magnitude stands in a line: its number in four columns, its letter in the next.
constexpr qsizetype kMagnitudeColumns[] = {56, 64, 72};

char lineType(QByteArrayView line) { return line.size() < kLineColumns ? ' ' : line[kLineColumns - 1]; }

/// Seconds end in that column.
TimeFields timeFields(QByteArrayView line, qsizetype end = 20) {
  return {columnsOf(line, 2, 5),   columnsOf(line, 7, 8),   columnsOf(line, 9, 10),
          columnsOf(line, 12, 13), columnsOf(line, 14, 15), columnsOf(line, 17, end)};
}

/// Whether a line looks like a hypocentre, whose type may be missing where it is the first of its event: the date
/// stands in its place, and so does how far away the event was: local, regional or distant.
bool looksLikeHypocentre(QByteArrayView line) {
  const QByteArrayView distance = columnsOf(line, 22, 22);
  const bool isDistance = distance == "L" || distance == "R" || distance == "D";
  const char type = lineType(line);
  return (type == ' ' || type == '1') && isDistance && line.startsWith(' ') && columnsOf(line, 2, 5).size() == 4 &&
         columnsOf(line, 6, 6).isEmpty() && timeOf(timeFields(line));
}

bool isHypocentre(QByteArrayView line, bool isFirst) {
  return lineType(line) == '1' || (isFirst && looksLikeHypocentre(line));
}

QString magnitudeType(QByteArrayView letter) {
  if (letter.isEmpty()) return {};
  const auto* const known = std::ranges::find(kMagnitudeLetters, letter.front(), &MagnitudeLetter::letter);
  return known == std::end(kMagnitudeLetters) ? QLatin1Char('M') + QString::fromUtf8(letter)
                                              : QString::fromLatin1(known->type);
}

void takeOrigin(QByteArrayView line, EventDraft& draft) {
  draft.takeTime(timeFields(line));
  draft.take(kEventLatitude, columnsOf(line, 24, 30), draft.values.latitudeDeg);
  draft.take(kEventLongitude, columnsOf(line, 31, 38), draft.values.longitudeDeg);
  draft.take(kEventDepthKm, columnsOf(line, 39, 43), draft.values.depthKm);
}

void takeMagnitudes(QByteArrayView line, EventDraft& draft) {
  for (const qsizetype column : kMagnitudeColumns)
    draft.takeMagnitude(magnitudeType(columnsOf(line, column + 4, column + 4)),
                        knownText(columnsOf(line, column, column + 3)));
}

/// The hypocentre of the line before with more digits; what is missing here stays as it was there.
void takePreciseOrigin(QByteArrayView line, EventDraft& draft) {
  if (!columnsOf(line, 2, 5).isEmpty()) draft.takeTime(timeFields(line, 22));
  draft.take(kEventLatitude, columnsOf(line, 24, 32), draft.values.latitudeDeg);
  draft.take(kEventLongitude, columnsOf(line, 34, 43), draft.values.longitudeDeg);
  draft.take(kEventDepthKm, columnsOf(line, 45, 52), draft.values.depthKm);
}

void takePlane(QByteArrayView line, EventDraft& draft) {
  draft.takePlane(columnsOf(line, 1, 10), columnsOf(line, 11, 20), columnsOf(line, 21, 30),
                  draft.values.mechanism.emplace().planes.front());
}

/// Whether each line is an event of its own.
bool isCompact(QByteArrayView text) {
  TextLines lines(text);
  bool hasBlank = false;
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const bool isBlank = withoutBlanks(*line).isEmpty();
    if (!isBlank && (hasBlank || !isHypocentre(*line, true))) return false;
    hasBlank = isBlank;
  }
  return true;
}

class NordicReader {
public:
  explicit NordicReader(const QString& name) : events_(name) {}

  void addLine(QByteArrayView line, qint64 number) {
    if (!event_) {
      event_.emplace();
      start_ = number;
    }
    if (isHypocentre(line, origins_ == 0)) {
      if (++origins_ == 1) {
        takeOrigin(line, *event_);
        start_ = number;
      }
      takeMagnitudes(line, *event_);
    } else if (lineType(line) == 'H' && origins_ == 1) {
      takePreciseOrigin(line, *event_);
    } else if (lineType(line) == 'F' && !event_->values.mechanism) {
      takePlane(line, *event_);
    }
  }

  void finishEvent() {
    if (!event_) return;
    if (origins_ == 0) event_->note(QStringLiteral("an event without a hypocentre line"));
    events_.add(*std::exchange(event_, {}), start_);
    origins_ = 0;
  }

  Result<EventFile> result() {
    finishEvent();
    return events_.result();
  }

private:
  EventList events_;
  std::optional<EventDraft> event_;
  qint64 start_ = 0;
  int origins_ = 0; // so far, of which the first is taken
};

} // namespace

bool isNordic(QByteArrayView head) {
  TextLines lines(withoutMark(head));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    if (looksLikeHypocentre(*line)) return true;
    if (!withoutBlanks(*line).isEmpty() && line->size() != kLineColumns) return false;
  }
  return false;
}

Result<EventFile> readNordic(QByteArrayView text, const QString& name) {
  const QByteArrayView body = withoutMark(text);
  const bool compact = isCompact(body);
  NordicReader reader(name);
  TextLines lines(body);
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const bool isBlank = withoutBlanks(*line).isEmpty();
    if (isBlank || compact) reader.finishEvent();
    if (!isBlank) reader.addLine(*line, lines.number());
  }
  return reader.result();
}

} // namespace xov
