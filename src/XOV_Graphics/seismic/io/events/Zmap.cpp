#include "XOV_Graphics/seismic/io/events/Zmap.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

namespace xov {

namespace {

enum Column : std::size_t { Longitude, Latitude, Year, Month, Day, Magnitude, Depth, Hour, Minute, Second };
constexpr std::size_t kFewestColumns = Second;

constexpr int kFirstYear = 1000; // of a first row; ten small numbers may be anything

using Fields = std::vector<QByteArrayView>;

Fields zmapFields(QByteArrayView row) { return fieldsOf(row, row.contains(',') ? ',' : kBlankSeparator); }

/// The year without its decimals: 2011 of "2011.189" and of "2.0111890e+03".
QByteArray wholeYear(QByteArrayView field) {
  const std::optional<double> year = toNumber<double>(field);
  return year && *year >= 0 && *year < 10000 ? QByteArray::number(int(*year)) : field.toByteArray();
}

EventDraft readRow(const Fields& fields) {
  EventDraft draft;
  if (fields.size() < kFewestColumns) {
    draft.note("found " + QString::number(fields.size()) + " columns, expected at least " +
               QString::number(kFewestColumns));
    return draft;
  }
  const QByteArray year = wholeYear(fields[Year]);
  draft.takeTime({year, fields[Month], fields[Day], fields[Hour], fields[Minute],
                  fields.size() > Second ? fields[Second] : QByteArrayView()});
  draft.take(kEventLongitude, fields[Longitude], draft.values.longitudeDeg);
  draft.take(kEventLatitude, fields[Latitude], draft.values.latitudeDeg);
  draft.take(kEventDepthKm, fields[Depth], draft.values.depthKm);
  draft.takeMagnitude("", fields[Magnitude]);
  return draft;
}

} // namespace

bool isZmap(QByteArrayView head) {
  TextLines lines(withoutMark(head));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const QByteArrayView row = withoutBlanks(*line);
    if (row.isEmpty()) continue;
    const Fields fields = zmapFields(row);
    if (fields.size() < kFewestColumns || !toNumber<double>(fields[Longitude]) || !toNumber<double>(fields[Latitude]))
      return false;
    const EventDraft draft = readRow(fields);
    return draft.problem.isEmpty() && draft.values.originTime.date().year() >= kFirstYear;
  }
  return false;
}

Result<EventFile> readZmap(QByteArrayView text, const QString& name) {
  EventList events(name, "row");
  TextLines lines(withoutMark(text));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const QByteArrayView row = withoutBlanks(*line);
    if (!row.isEmpty()) events.add(readRow(zmapFields(row)), lines.number());
  }
  return events.result();
}

} // namespace xov
