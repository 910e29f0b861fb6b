#include "XOV_Graphics/seismic/io/events/Mchedr.h"

#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include <algorithm>

namespace xov {

namespace {

bool isHypocentre(QByteArrayView line) { return line.startsWith("HY"); }

TimeFields timeFields(QByteArrayView line) {
  return {columnsOf(line, 3, 6),   columnsOf(line, 7, 8),   columnsOf(line, 9, 10),
          columnsOf(line, 12, 13), columnsOf(line, 14, 15), columnsOf(line, 16, 20)};
}

/// Degrees without a sign and the letter of their hemisphere, as one number.
QString signedDegrees(QByteArrayView degrees, QByteArrayView letter, char negative) {
  const QString text = QString::fromUtf8(degrees);
  return letter.startsWith(negative) && !text.isEmpty() ? QLatin1Char('-') + text : text;
}

void takeHypocentre(QByteArrayView line, EventDraft& draft) {
  draft.takeTime(timeFields(line));
  draft.take(kEventLatitude, signedDegrees(columnsOf(line, 22, 27), columnsOf(line, 28, 28), 'S'),
             draft.values.latitudeDeg);
  draft.take(kEventLongitude, signedDegrees(columnsOf(line, 30, 36), columnsOf(line, 37, 37), 'W'),
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
    } else if (draft) {
      takeRecord(*line, *draft);
    }
  }
  finishEvent();
  return events.result();
}

} // namespace xov
