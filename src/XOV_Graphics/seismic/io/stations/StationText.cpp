#include "XOV_Graphics/seismic/io/stations/StationText.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/io/stations/SacPoleZero.h"
#include "XOV_Graphics/seismic/io/stations/StationFile.h"
#include "XOV_Graphics/seismic/io/stations/StationXml.h"

#include <algorithm>
#include <map>
#include <optional>

namespace xov {

namespace {

constexpr char kSeparators[] = {'|', ';', ',', '\t', kBlankSeparator};

using Fields = std::vector<QByteArrayView>;

/// Which field of a line is what; -1 where none is.
struct Layout {
  int network = -1;
  int code = -1;
  int latitude = -1;
  int longitude = -1;
};

constexpr Layout kCodeFirst = {-1, 0, 1, 2};
constexpr Layout kNetworkFirst = {0, 1, 2, 3};
constexpr Layout kPlaceOnly = {-1, -1, 1, 0};

// Headings as headingKey() has them. Where a table has several of a column, the one that comes first here is it.
constexpr const char* kNetworkNames[] = {"network", "net", "networkcode", "netcode"};
constexpr const char* kCodeNames[] = {"station", "sta", "stationcode", "stacode", "code", "name", "stationname"};
constexpr const char* kLatitudeNames[] = {"latitude", "lat", "latitudedeg", "latdeg", "latitudedegrees", "stla"};
constexpr const char* kLongitudeNames[] = {"longitude",        "lon", "long", "longitudedeg", "londeg",
                                           "longitudedegrees", "stlo"};

std::optional<double> numberAt(const Fields& fields, int place) {
  if (place < 0 || std::size_t(place) >= fields.size()) return {};
  return toNumber<double>(bareField(fields[std::size_t(place)]));
}

bool hasPlace(const Fields& fields, const Layout& layout) {
  return numberAt(fields, layout.latitude) && numberAt(fields, layout.longitude);
}

/// A number, and not a station that is called NAN.
bool isNumber(QByteArrayView field) {
  const QByteArrayView bare = bareField(field);
  const char first = bare.isEmpty() ? ' ' : bare.front();
  return (first < 'A' || first > 'z') && toNumber<double>(bare);
}

template <std::size_t Count>
int placeOfHeading(const std::vector<QString>& keys, const char* const (&names)[Count]) {
  for (const char* name : names) {
    const auto found = std::find(keys.begin(), keys.end(), QLatin1StringView(name));
    if (found != keys.end()) return int(found - keys.begin());
  }
  return -1;
}

/// The layout that a line of headings gives; nothing when it does not name latitude and longitude.
std::optional<Layout> namedLayout(QByteArrayView line) {
  for (const char separator : kSeparators) {
    std::vector<QString> keys;
    for (const QByteArrayView field : fieldsOf(line, separator))
      keys.push_back(headingKey(field));
    const Layout layout{placeOfHeading(keys, kNetworkNames), placeOfHeading(keys, kCodeNames),
                        placeOfHeading(keys, kLatitudeNames), placeOfHeading(keys, kLongitudeNames)};
    if (layout.latitude >= 0 && layout.longitude >= 0) return layout;
  }
  return {};
}

/// The fields of a line between the first separators that leave numbers where the layout has the place; the words of
/// the line when none do.
Fields fieldsFor(QByteArrayView line, const Layout& layout) {
  for (const char separator : kSeparators) {
    Fields fields = fieldsOf(line, separator);
    if (hasPlace(fields, layout)) return fields;
  }
  return fieldsOf(line, kBlankSeparator);
}

/// Whether a line has a network before its station: the station is no number, or it is a line of FDSN's text, whose
/// seventh field is the time at which the station began.
bool hasNetwork(QByteArrayView line) {
  const Fields fields = fieldsFor(line, kNetworkFirst);
  if (!hasPlace(fields, kNetworkFirst)) return false;
  constexpr std::size_t kFdsnFields = 8;
  return !isNumber(fields[std::size_t(kNetworkFirst.code)]) ||
         (fields.size() == kFdsnFields && parseUtcTime(fieldText(fields[kFdsnFields - 2])));
}

bool isPlaceOnly(QByteArrayView line) {
  const Fields fields = fieldsFor(line, kPlaceOnly);
  return fields.size() == 2 && hasPlace(fields, kPlaceOnly);
}

/// A code may be digits. With a sign or a point they are measured, and the columns have another order.
bool isCode(const QString& text) {
  const QByteArray code = text.toUtf8();
  const bool isMeasured = isNumber(code) && (code.contains('.') || code.startsWith('-') || code.startsWith('+'));
  return !code.isEmpty() && !isMeasured;
}

/// A line of words only.
bool isUnknownHeading(QByteArrayView line) {
  return std::all_of(std::begin(kSeparators), std::end(kSeparators), [&](char separator) {
    const Fields fields = fieldsOf(line, separator);
    return std::none_of(fields.begin(), fields.end(), isNumber);
  });
}

struct Row {
  QByteArrayView text;
  qint64 line = 0;
};

class StationParser {
public:
  explicit StationParser(const QString& name) : name_(name) {}

  Result<std::vector<Station>> parse(QByteArrayView text) {
    std::optional<Layout> layout;
    std::vector<Row> rows = readRows(text, layout);
    if (!layout && !rows.empty() && isUnknownHeading(rows.front().text)) rows.erase(rows.begin());
    if (rows.empty()) return Error{name_ + QStringLiteral(": holds no stations")};
    if (!layout) layout = layoutOf(rows);
    std::vector<Station> stations;
    for (const Row& row : rows) {
      const Result<Station> station = read(row, *layout);
      if (!station) return Error{station.error()};
      stations.push_back(*station);
    }
    return stations;
  }

private:
  /// The lines that are neither empty nor comments, behind the one that names the columns, if any, for `layout`.
  static std::vector<Row> readRows(QByteArrayView text, std::optional<Layout>& layout) {
    std::vector<Row> rows;
    TextLines lines(withoutMark(text));
    while (const auto line = lines.next()) {
      const QByteArrayView row = withoutBlanks(*line);
      const bool isComment = row.startsWith('#');
      const bool mayName = !layout && rows.empty();
      if (mayName && (layout = namedLayout(isComment ? row.sliced(1) : row))) continue;
      if (!row.isEmpty() && !isComment) rows.push_back({row, lines.number()});
    }
    return rows;
  }

  static Layout layoutOf(const std::vector<Row>& rows) {
    if (isPlaceOnly(rows.front().text)) return kPlaceOnly;
    const bool networks = std::any_of(rows.begin(), rows.end(), [](const Row& row) { return hasNetwork(row.text); });
    return networks ? kNetworkFirst : kCodeFirst;
  }

  Result<Station> read(const Row& row, const Layout& layout) const {
    const auto fault = [&](const char* what) {
      return Error{QStringLiteral("%1: line %2: %3").arg(name_).arg(row.line).arg(QLatin1StringView(what))};
    };
    const Fields fields = fieldsFor(row.text, layout);
    const auto textAt = [&](int place) {
      return place >= 0 && std::size_t(place) < fields.size() ? fieldText(fields[std::size_t(place)]) : QString();
    };
    const auto latitude = numberAt(fields, layout.latitude);
    const auto longitude = numberAt(fields, layout.longitude);
    const Station station{textAt(layout.network), textAt(layout.code), latitude.value_or(0), longitude.value_or(0),
                          row.line};
    if (!latitude || !longitude || (layout.code >= 0 && !isCode(station.code)))
      return fault("expected a station code, its latitude and its longitude");
    if (!isGeographicPoint(*latitude, *longitude))
      return fault("expected a latitude of -90 to 90 and a longitude of -360 to 360");
    return station;
  }

  QString name_;
};

/// Each station once, with its place in the latest epoch, in the order of their lines.
Result<std::vector<Station>> latestStations(const Result<StationInventory>& inventory) {
  if (!inventory) return Error{inventory.error()};
  std::map<std::pair<QString, QString>, const InventoryStation*> latest;
  for (const InventoryStation& station : inventory->stations) {
    const InventoryStation*& known = latest[{station.network, station.code}];
    if (!known || !(station.epoch.start < known->epoch.start)) known = &station;
  }
  std::vector<Station> stations;
  for (const InventoryStation& station : inventory->stations) {
    if (latest.at({station.network, station.code}) != &station) continue;
    stations.push_back({station.network, station.code, station.latitudeDeg, station.longitudeDeg, station.line});
  }
  if (stations.empty()) return Error{inventory->name + QStringLiteral(": holds no stations")};
  return stations;
}

} // namespace

Result<std::vector<Station>> readStations(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<std::vector<Station>> {
    const Result<QByteArray> text = readStationFile(path);
    if (!text) return Error{text.error()};
    return parseStations(*text, path);
  });
}

Result<std::vector<Station>> parseStations(QByteArrayView text, const QString& name) noexcept {
  return guarded(name, [&] {
    if (beginsAsXml(text)) return latestStations(parseStationXml(text, name));
    if (isSacPoleZero(text)) return latestStations(parseSacPoleZero(text, name));
    return StationParser(name).parse(text);
  });
}

} // namespace xov
