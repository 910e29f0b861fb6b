#include "XOV_Graphics/seismic/io/events/EventTable.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"

#include <algorithm>
#include <array>

namespace xov {

namespace {

enum class Column : std::uint8_t {
  Time,
  Date,
  Latitude,
  Longitude,
  Depth,
  Magnitude,
  MagnitudeType,
  Type, ///< of the magnitude, or of the event where there is a column for the magnitude's
  Place,
  Id,
  Mw,
  Ms,
  Mb,
  Ml,
  Count,
};

struct ColumnName {
  const char* name; ///< letters and digits only, in lower case
  Column column;
};

constexpr ColumnName kColumnNames[] = {
    {"time", Column::Time},
    {"origintime", Column::Time},
    {"datetime", Column::Time},
    {"eventtime", Column::Time},
    {"timeutc", Column::Time},
    {"datetimeutc", Column::Time},
    {"origintimeutc", Column::Time},
    {"date", Column::Date},
    {"dateutc", Column::Date},
    {"origindate", Column::Date},
    {"latitude", Column::Latitude},
    {"lat", Column::Latitude},
    {"longitude", Column::Longitude},
    {"lon", Column::Longitude},
    {"long", Column::Longitude},
    {"depth", Column::Depth},
    {"depthkm", Column::Depth},
    {"magnitude", Column::Magnitude},
    {"mag", Column::Magnitude},
    {"magtype", Column::MagnitudeType},
    {"magnitudetype", Column::MagnitudeType},
    {"type", Column::Type},
    {"place", Column::Place},
    {"region", Column::Place},
    {"regionname", Column::Place},
    {"eventlocationname", Column::Place},
    {"id", Column::Id},
    {"eventid", Column::Id},
    {"publicid", Column::Id},
    {"mw", Column::Mw},
    {"ms", Column::Ms},
    {"mb", Column::Mb},
    {"ml", Column::Ml},
};

// Of a table without names.
constexpr Column kPlainColumns[] = {Column::Time,  Column::Latitude,  Column::Longitude,
                                    Column::Depth, Column::Magnitude, Column::Type};

// Of the text that FDSN web services give (FDSN Web Service Specifications, version 1.2, 2019: fdsnws-event), which
// has the names in its first row, unless somebody took them away.
constexpr std::pair<int, Column> kFdsnColumns[] = {
    {0, Column::Id},    {1, Column::Time},          {2, Column::Latitude},   {3, Column::Longitude},
    {4, Column::Depth}, {9, Column::MagnitudeType}, {10, Column::Magnitude}, {12, Column::Place},
};
constexpr std::size_t kFewestFdsnColumns = 13;

struct MagnitudeColumn {
  Column column;
  const char* type;
};
constexpr MagnitudeColumn kMagnitudeColumns[] = {
    {Column::Mw, "Mw"}, {Column::Ms, "Ms"}, {Column::Mb, "mb"}, {Column::Ml, "ML"}};

constexpr char kSeparators[] = {',', ';', '\t', '|'};

using Fields = std::vector<QByteArrayView>;

std::optional<Column> columnNamed(QByteArrayView field) {
  const QString name = headingKey(field);
  const auto found =
      std::ranges::find_if(kColumnNames, [&](const ColumnName& known) { return name == QLatin1String(known.name); });
  return found == std::end(kColumnNames) ? std::nullopt : std::optional(found->column);
}

/// Which field of a row is which column.
class Layout {
public:
  /// The layout that a row of names gives; nothing when it names neither a time nor anything to it.
  static std::optional<Layout> named(QByteArrayView row) {
    Layout best;
    for (const char separator : kSeparators) {
      const Layout layout = namedBy(row, separator);
      if (layout.columnCount() > best.columnCount()) best = layout;
    }
    const bool hasTime = best.has(Column::Time) || best.has(Column::Date);
    return hasTime && best.columnCount() > 1 ? std::optional(best) : std::nullopt;
  }

  /// The layout of a table without names whose first row begins with a time; else nothing.
  static std::optional<Layout> plain(QByteArrayView row) {
    for (const char separator : kSeparators) {
      Layout layout;
      layout.separator_ = separator;
      const Fields fields = fieldsOf(row, separator);
      if (fields.size() < 2 || !parseUtcTime(knownText(fields[0]))) continue;
      for (std::size_t i = 0; i < std::min(std::size(kPlainColumns), fields.size()); ++i)
        layout.place(kPlainColumns[i]) = int(i);
      return layout;
    }
    return {};
  }

  /// The layout of a row of FDSN's text; else nothing.
  static std::optional<Layout> fdsn(QByteArrayView row) {
    Layout layout;
    layout.separator_ = '|';
    const Fields fields = fieldsOf(row, layout.separator_);
    if (fields.size() < kFewestFdsnColumns || !parseUtcTime(knownText(fields[1]))) return {};
    for (const auto& [place, column] : kFdsnColumns)
      layout.place(column) = place;
    return layout;
  }

  /// The layout of a table without names from its first row; else nothing.
  static std::optional<Layout> unnamed(QByteArrayView row) {
    const std::optional<Layout> layout = plain(row);
    return layout ? layout : fdsn(row);
  }

  char separator() const { return separator_; }
  bool has(Column column) const { return places_[std::size_t(column)] >= 0; }

  /// The text of a column; empty where the row has none.
  QString text(const Fields& fields, Column column) const {
    const int place = places_[std::size_t(column)];
    return place >= 0 && std::size_t(place) < fields.size() ? knownText(fields[std::size_t(place)]) : QString();
  }

private:
  Layout() { places_.fill(-1); }

  static Layout namedBy(QByteArrayView row, char separator) {
    Layout layout;
    layout.separator_ = separator;
    const Fields fields = fieldsOf(row, separator);
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const std::optional<Column> column = columnNamed(fields[i]);
      if (column && !layout.has(*column)) layout.place(*column) = int(i);
    }
    return layout;
  }

  int& place(Column column) { return places_[std::size_t(column)]; }
  // How many columns tell of events; what they are known by may stand in any table.
  std::ptrdiff_t columnCount() const {
    return std::ranges::count_if(places_, [](int place) { return place >= 0; }) - (has(Column::Id) ? 1 : 0);
  }

  std::array<int, std::size_t(Column::Count)> places_;
  char separator_ = ',';
};

class TableReader {
public:
  TableReader(const Layout& layout, const QString& name) : layout_(layout), events_(name, "row") {}

  void addRow(QByteArrayView row, qint64 line) {
    fields_ = fieldsOf(row, layout_.separator());
    events_.add(readRow(), line);
  }

  Result<EventFile> result() { return events_.result(); }

private:
  QString text(Column column) const { return layout_.text(fields_, column); }

  EventDraft readRow() const {
    EventDraft draft;
    const QString written = (text(Column::Date) + QLatin1Char(' ') + text(Column::Time)).trimmed();
    const std::optional<QDateTime> time = parseUtcTime(written);
    if (!time) {
      draft.note(unreadableTime(written));
      return draft;
    }
    draft.values.originTime = *time;
    draft.values.name = text(Column::Place);
    draft.values.id = text(Column::Id);
    draft.take(kEventLatitude, text(Column::Latitude), draft.values.latitudeDeg);
    draft.take(kEventLongitude, text(Column::Longitude), draft.values.longitudeDeg);
    draft.take(kEventDepthKm, text(Column::Depth), draft.values.depthKm);
    const Column type = layout_.has(Column::MagnitudeType) ? Column::MagnitudeType : Column::Type;
    if (draft.takeMagnitude(text(type), text(Column::Magnitude))) draft.preferred = 0;
    for (const MagnitudeColumn& scale : kMagnitudeColumns)
      draft.takeMagnitude(QString::fromLatin1(scale.type), text(scale.column));
    return draft;
  }

  Layout layout_;
  Fields fields_;
  EventList events_;
};

/// A line without what some exports put before the names.
QByteArrayView rowOfNames(QByteArrayView line) {
  QByteArrayView row = withoutBlanks(line);
  if (row.startsWith('#')) row = withoutBlanks(row.sliced(1));
  return row;
}

bool isRow(QByteArrayView line) { return !line.isEmpty() && !line.startsWith('#'); }

} // namespace

bool isEventTable(QByteArrayView head) {
  TextLines lines(withoutMark(head));
  while (const std::optional<QByteArrayView> line = lines.next()) {
    if (Layout::named(rowOfNames(*line)) || Layout::unnamed(*line)) return true;
    if (isRow(withoutBlanks(*line))) return false;
  }
  return false;
}

Result<EventFile> readEventTable(QByteArrayView text, const QString& name) {
  TextLines lines(withoutMark(text));
  std::optional<TableReader> table;
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const QByteArrayView row = withoutBlanks(*line);
    if (!table) {
      const std::optional<Layout> names = Layout::named(rowOfNames(row));
      const std::optional<Layout> layout = names ? names : Layout::unnamed(row);
      if (layout) table.emplace(*layout, name);
      if (names || !layout) continue;
    }
    if (isRow(row)) table->addRow(row, lines.number());
  }
  if (!table) return Error{name + ": found no row that names the columns of events"};
  return table->result();
}

} // namespace xov
