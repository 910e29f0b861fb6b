#include "XOV_Graphics/seismic/io/events/HypoDd.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include <array>

namespace xov {

namespace {

/// Where the fields of an event stand in a row, counted from 0.
struct Columns {
  std::array<std::size_t, 6> time; ///< year to second
  std::size_t latitude;
  std::size_t longitude;
  std::size_t depth;
  std::size_t magnitude;
};

// ID LAT LON DEPTH X Y Z EX EY EZ YR MO DY HR MI SC MAG, then other columns in .loc and .reloc
constexpr Columns kLocated = {{10, 11, 12, 13, 14, 15}, 1, 2, 3, 16};
constexpr std::size_t kLocColumns = 18;
constexpr std::size_t kRelocColumns = 24;

// YR MO DY HR MN SC LAT LON DEP MAG EH EZ RMS ID, after "#"
constexpr Columns kPhaseHeader = {{0, 1, 2, 3, 4, 5}, 6, 7, 8, 9};
constexpr std::size_t kPhaseHeaderColumns = 14;

using Fields = std::vector<QByteArrayView>;

bool isPhaseHeader(QByteArrayView line) { return line.startsWith('#'); }

Fields headerFields(QByteArrayView line) { return fieldsOf(line.sliced(1), kBlankSeparator); }

TimeFields timeFields(const Fields& fields, const Columns& columns) {
  const auto& at = columns.time;
  return {fields[at[0]], fields[at[1]], fields[at[2]], fields[at[3]], fields[at[4]], fields[at[5]]};
}

EventDraft readRow(const Fields& fields, const Columns& columns) {
  EventDraft draft;
  if (fields.size() <= columns.magnitude) {
    draft.note("found " + QString::number(fields.size()) + " columns, expected at least " +
               QString::number(columns.magnitude + 1));
    return draft;
  }
  draft.takeTime(timeFields(fields, columns));
  draft.take(kEventLatitude, fields[columns.latitude], draft.values.latitudeDeg);
  draft.take(kEventLongitude, fields[columns.longitude], draft.values.longitudeDeg);
  draft.take(kEventDepthKm, fields[columns.depth], draft.values.depthKm);
  draft.takeMagnitude("", fields[columns.magnitude]);
  return draft;
}

bool isLocated(const Fields& fields) {
  const bool isWide = fields.size() == kLocColumns || fields.size() == kRelocColumns;
  return isWide && toNumber<std::int32_t>(fields[0]) && readRow(fields, kLocated).problem.isEmpty();
}

bool isHeader(QByteArrayView line) {
  if (!isPhaseHeader(line)) return false;
  const Fields fields = headerFields(line);
  return fields.size() == kPhaseHeaderColumns && readRow(fields, kPhaseHeader).problem.isEmpty();
}

} // namespace

bool isHypoDd(QByteArrayView head) {
  TextLines lines(withoutMark(head));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const QByteArrayView row = withoutBlanks(*line);
    if (!row.isEmpty()) return isHeader(row) || isLocated(fieldsOf(row, kBlankSeparator));
  }
  return false;
}

Result<EventFile> readHypoDd(QByteArrayView text, const QString& name) {
  EventList events(name);
  TextLines lines(withoutMark(text));
  std::optional<bool> hasPhases; // told by the first line
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const QByteArrayView row = withoutBlanks(*line);
    if (row.isEmpty()) continue;
    if (!hasPhases) hasPhases = isPhaseHeader(row);
    if (!*hasPhases) {
      events.add(readRow(fieldsOf(row, kBlankSeparator), kLocated), lines.number());
    } else if (isPhaseHeader(row)) {
      events.add(readRow(headerFields(row), kPhaseHeader), lines.number());
    }
  }
  return events.result();
}

} // namespace xov
