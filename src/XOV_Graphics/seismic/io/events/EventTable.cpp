#include "XOV_Graphics/seismic/io/events/EventTable.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/MagnitudeScale.h"
#include "XOV_Graphics/seismic/io/events/EventNumbers.h"

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
    {"mw", Column::Mw},
    {"ms", Column::Ms},
    {"mb", Column::Mb},
    {"ml", Column::Ml},
};

// Of a table without names.
constexpr Column kPlainColumns[] = {Column::Time,  Column::Latitude,  Column::Longitude,
                                    Column::Depth, Column::Magnitude, Column::Type};

struct MagnitudeColumn {
  Column column;
  const char* type;
};
constexpr MagnitudeColumn kMagnitudeColumns[] = {
    {Column::Mw, "Mw"}, {Column::Ms, "Ms"}, {Column::Mb, "mb"}, {Column::Ml, "ML"}};

constexpr char kSeparators[] = {',', ';', '\t', '|'};

// What exports write where they know nothing.
constexpr const char* kNothing[] = {"nan", "null", "none", "-"};

using Fields = std::vector<QByteArrayView>;

/// What a field says; empty when it stands for nothing.
QString knownText(QByteArrayView field) {
  const QString text = fieldText(field);
  const bool isNothing = std::ranges::any_of(
      kNothing, [&](const char* word) { return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0; });
  return isNothing ? QString() : text;
}

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
  std::ptrdiff_t columnCount() const {
    return std::ranges::count_if(places_, [](int place) { return place >= 0; });
  }

  std::array<int, std::size_t(Column::Count)> places_;
  char separator_ = ',';
};

class TableReader {
public:
  TableReader(const Layout& layout, const QString& name) : layout_(layout), leftOut_(name, "row") {}

  void addRow(QByteArrayView row, qint64 line) {
    fields_ = fieldsOf(row, layout_.separator());
    HypocentreValues values;
    const QString problem = readRow(values);
    leftOut_.count(line, problem);
    if (problem.isEmpty()) file_.events.push_back(std::make_shared<Hypocentre>(std::move(values)));
  }

  Result<EventFile> result() {
    if (leftOut_.isAll()) return leftOut_.error();
    file_.notes = leftOut_.notes();
    return std::move(file_);
  }

private:
  QString text(Column column) const { return layout_.text(fields_, column); }

  QString readRow(HypocentreValues& values) const {
    const QString written = (text(Column::Date) + QLatin1Char(' ') + text(Column::Time)).trimmed();
    const std::optional<QDateTime> time = parseUtcTime(written);
    if (!time) return unreadableTime(written);
    values.originTime = *time;
    values.name = text(Column::Place);
    QString problem;
    const auto take = [&](const EventNumber& number, Column column, float& value) {
      const QString found = takeEventNumber(number, text(column), 1, value);
      if (problem.isEmpty()) problem = found;
    };
    take(kEventLatitude, Column::Latitude, values.latitudeDeg);
    take(kEventLongitude, Column::Longitude, values.longitudeDeg);
    take(kEventDepthKm, Column::Depth, values.depthKm);

    std::vector<EventMagnitude> magnitudes;
    const auto takeMagnitude = [&](Column column, const QString& type) {
      EventMagnitude magnitude{type, kUndefinedValue};
      take(kEventMagnitude, column, magnitude.value);
      if (isDefined(magnitude.value)) magnitudes.push_back(magnitude);
    };
    takeMagnitude(Column::Magnitude, text(layout_.has(Column::MagnitudeType) ? Column::MagnitudeType : Column::Type));
    const std::size_t stated = magnitudes.size();
    for (const MagnitudeColumn& scale : kMagnitudeColumns)
      takeMagnitude(scale.column, QString::fromLatin1(scale.type));
    setMagnitudes(values, std::move(magnitudes), stated > 0 ? std::optional<std::size_t>(0) : std::nullopt);
    return problem;
  }

  Layout layout_;
  Fields fields_;
  LeftOut leftOut_;
  EventFile file_;
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
    if (Layout::named(rowOfNames(*line)) || Layout::plain(*line)) return true;
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
      const std::optional<Layout> layout = names ? names : Layout::plain(row);
      if (layout) table.emplace(*layout, name);
      if (names || !layout) continue;
    }
    if (isRow(row)) table->addRow(row, lines.number());
  }
  if (!table) return Error{name + ": found no row that names the columns of events"};
  return table->result();
}

} // namespace xov
