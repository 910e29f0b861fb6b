#include "apps/xov/map/MapFeatures.h"

#include "apps/xov/inputs/ColumnFile.h"
#include "apps/xov/inputs/EventInputs.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/map/MapEvents.h"
#include "apps/xov/map/MapKey.h"
#include "apps/xov/terminal/Messages.h"

#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/map/plateBoundaryController.h>
#include <XOV_Graphics/platform/Colors.h>
#include <XOV_Graphics/seismic/io/stations/StationText.h>
#include <algorithm>
#include <array>
#include <cmath>

namespace xov::cli {

namespace {

constexpr char kBird[] = "bird";
constexpr char kTypes[] = "types";
constexpr double kLargestVectorScale = 1e9;
constexpr double kLongestVector = 50;     // points
constexpr float kStationSize = 2.5F / 12; // a radius of 2.5 points
constexpr double kNameClearance = 4.5;    // of names from the middle of their stations, points
constexpr double kRadiusOfSize1 = 12;     // of the view
constexpr float kFootSize = 1.5F / 12;
const QColor kLines = QColor::fromRgbF(0.75F, 0.05F, 0.1F, 0.9F); // seen on land, on sea, and on paper

// Those that people with any colour vision tell apart by their lightness, on land, on sea, and on paper. A title
// begins with the type.
struct PlateType {
  const char* name;
  const char* plural;
  QColor color;
};
const PlateType kPlateTypes[] = {{"trench", "trenches", kLines},
                                 {"ridge", "ridges", QColor::fromRgbF(1.0F, 0.6F, 0.0F)},
                                 {"transform", "transform faults", QColor::fromRgbF(0.3F, 0.1F, 0.45F)}};

std::optional<ColumnData> readOrComplain(const std::string& path, const std::vector<std::string>& columns) {
  QStringList wanted;
  for (const std::string& column : columns)
    wanted.append(QString::fromStdString(column));
  Result<ColumnData> data = readColumns(fileNameFromBytes(path), wanted);
  if (data) return *data;
  complain(data.error());
  return {};
}

std::optional<std::vector<Station>> readStationsOrComplain(const std::string& path) {
  Result<std::vector<Station>> stations = readStations(QString::fromStdString(path));
  if (stations) return std::move(stations).value();
  complain(stations.error());
  return {};
}

// Of longitudes and latitudes.
std::optional<std::vector<Station>> stationsInColumns(const std::string& path,
                                                      const std::vector<std::string>& columns) {
  const std::optional<ColumnData> data = readOrComplain(path, columns);
  if (!data) return {};
  std::vector<Station> stations(data->columns[0].size());
  for (std::size_t i = 0; i < stations.size(); ++i) {
    stations[i].longitudeDeg = data->columns[0][i];
    stations[i].latitudeDeg = data->columns[1][i];
  }
  return stations;
}

// The index of a colour that the view's table then has in addition.
int addColor(geoMapView& view, const QColor& color) {
  view.theColors()->push_back(color);
  return int(view.theColors()->size()) - 1;
}

void addPoint(geoMapView& view, float lon, float lat, float size, int colorIndex) {
  auto point = std::make_shared<geoMapPoint>();
  point->setLatLonDepth(lat, lon, 0);
  point->setSymbolSize(size);
  point->setColorIndex(colorIndex);
  view.thePoints()->push_back(std::move(point));
}

void addLines(geoMapView& view, const std::shared_ptr<XOVPolygonArray>& lines, const MapRegion& region) {
  for (const std::shared_ptr<XOVPolygon>& line : *lines) {
    for (float& lon : line->xp())
      lon = region.lineLongitude(lon);
  }
  view.addAPolygonSet(lines);
  view.setShowPlates(true);
}

} // namespace

void MapFeatures::addOptions(const Options& options) {
  options.add("--plates", plates_, "Plate boundaries: bird (PB2002) or types (trenches, ridges, transforms)")
      .typeName("SET")
      .check(oneOf({kBird, kTypes}));
  options.add("--polygons", polygons_, "NXY files of lines").typeName("FILE");
  Option events = options
                      .add("--events", events_,
                           "Earthquakes of QuakeML, a catalogue or a table: colour by depth, size by magnitude")
                      .typeName("FILE");
  options.add("--colors", colors_, "Colours of depths: seis (default), nogreen, polar or red")
      .typeName("TABLE")
      .check(oneOf(depthColorNames()));
  mechanisms_.addOptions(options, events);
  Option stations =
      options.add("--stations", stations_, "Stations: StationXML, or text or CSV of code, latitude, longitude")
          .typeName("FILE");
  options.add("--station-columns", stationColumns_, "Their columns, by number or heading (default: as the file says)")
      .typeName("LON LAT")
      .needs(stations)
      .takesExactly(2);
  options.addFlag("--station-names", stationNames_, "Write their codes beside them, where there is room")
      .needs(stations);
  Option vectors = options.add("--vectors", vectors_, "Text or CSV file of vectors").typeName("FILE");
  options.add("--vector-columns", vectorColumns_, "Their columns, by number or heading (default 1 2 3 4)")
      .typeName("LON LAT EAST NORTH")
      .needs(vectors)
      .takesExactly(4);
  options.add("--vector-scale", vectorScale_, "Points a unit (default: the longest vector is 50 points long)")
      .typeName("S")
      .check(numberFromTo(-kLargestVectorScale, kLargestVectorScale))
      .needs(vectors);
}

bool MapFeatures::addPlates(geoMapView& view, const MapRegion& region, MapLegend& legend) const {
  if (plates_.empty()) return true;
  plateBoundaryController controller;
  // What is missing stands in the log, which goes where complaints do.
  if (plates_ == kBird) {
    const bool loaded = controller.loadBirdPlateBoundaries();
    addLines(view, controller.boundaries(), region);
    return loaded;
  }
  const bool loaded = controller.loadUTPlateBoundaries();
  addPlateTypes(view, *controller.boundaries(), region, legend);
  return loaded;
}

// Those of each type as a set with its colour; what tells no type has the colour of all lines.
void MapFeatures::addPlateTypes(geoMapView& view, const XOVPolygonArray& boundaries, const MapRegion& region,
                                MapLegend& legend) const {
  std::array<std::shared_ptr<XOVPolygonArray>, std::size(kPlateTypes)> ofType;
  for (auto& lines : ofType)
    lines = std::make_shared<XOVPolygonArray>();
  const auto others = std::make_shared<XOVPolygonArray>();
  for (const std::shared_ptr<XOVPolygon>& line : boundaries) {
    const auto* const type = std::ranges::find_if(kPlateTypes, [&](const PlateType& candidate) {
      return line->title().startsWith(QLatin1String(candidate.name), Qt::CaseInsensitive);
    });
    (type == std::end(kPlateTypes) ? others : ofType[std::size_t(type - kPlateTypes)])->push_back(line);
  }
  addLines(view, others, region);
  std::vector<std::pair<QString, QColor>> shown;
  for (std::size_t i = 0; i < ofType.size(); ++i) {
    if (ofType[i]->empty()) continue;
    addLines(view, ofType[i], region);
    view.setPolygonSetColor(view.thePolygonSets().size() - 1, kPlateTypes[i].color);
    shown.emplace_back(QString::fromLatin1(kPlateTypes[i].plural), kPlateTypes[i].color);
  }
  if (!shown.empty()) legend.push_back(lineKey(shown));
}

bool MapFeatures::addPolygons(geoMapView& view, const MapRegion& region) const {
  const auto lines = std::make_shared<XOVPolygonArray>();
  bool all = true;
  for (const std::string& path : polygons_) {
    auto polygon = std::make_shared<XOVPolygon>();
    QString error;
    if (polygon->loadNXYFromPath(fileNameFromBytes(path), &error)) {
      lines->push_back(std::move(polygon));
    } else {
      complain(error);
      all = false;
    }
  }
  if (!lines->empty()) addLines(view, lines, region);
  return all;
}

bool MapFeatures::addEvents(geoMapView& view, const MapRegion& region, MapLegend& legend) const {
  if (events_.empty()) return true;
  const std::optional<EventFile> file = readEventsOrComplain(events_);
  if (!file) return false;
  const DepthColors& table = depthColorsNamed(colors_);
  const HypocentreArray circles =
      mechanisms_.areWanted() ? mechanisms_.take(file->events, view, region, table.redFirst) : file->events;
  *view.thePoints() = eventPoints(circles, region, view.theColors()->size(), table.redFirst);
  if (mechanisms_.areWanted() && view.mechanisms().empty())
    complain(QStringLiteral("%1: tells no mechanism of an event").arg(fileNameFromBytes(events_)));

  const bool hasBalls = !view.mechanisms().empty();
  const MapLegendSection magnitudes = magnitudeKey(file->events, [&](float magnitude) {
    return hasBalls ? mechanisms_.radius(magnitude) : kRadiusOfSize1 * double(magnitudeSymbolSize(magnitude));
  });
  if (!magnitudes.items.empty() && !(hasBalls && mechanisms_.hasOneSize())) legend.push_back(magnitudes);
  legend.push_back(depthKey(*view.theColors(), table.redFirst));
  return true;
}

bool MapFeatures::addStations(geoMapView& view, const MapRegion& region) const {
  if (stations_.empty()) return true;
  const std::optional<std::vector<Station>> stations =
      stationColumns_.empty() ? readStationsOrComplain(stations_) : stationsInColumns(stations_, stationColumns_);
  if (!stations) return false;
  const int color = addColor(view, colors::black);
  MapLabelArray names;
  for (const Station& station : *stations) {
    const float longitude = region.symbolLongitude(float(station.longitudeDeg));
    addPoint(view, longitude, float(station.latitudeDeg), kStationSize, color);
    if (stationNames_ && !station.code.isEmpty())
      names.push_back({float(station.latitudeDeg), longitude, station.code, kNameClearance});
  }
  view.setLabels(std::move(names));
  return true;
}

// A dot marks the foot of each: the lines have no heads.
bool MapFeatures::addVectors(geoMapView& view, const MapRegion& region) const {
  if (vectors_.empty()) return true;
  const std::optional<ColumnData> data = readOrComplain(vectors_, vectorColumns_);
  if (!data) return false;
  const auto& columns = data->columns;
  const auto scale = float(vectorScale_.value_or(fittingVectorScale(columns[2], columns[3])));
  const int color = addColor(view, colors::black);
  for (std::size_t i = 0; i < columns[0].size(); ++i) {
    auto vector = std::make_shared<geoMapVector>();
    vector->setLatLonDepth(columns[1][i], region.symbolLongitude(columns[0][i]), 0);
    vector->setEastValue(columns[2][i]);
    vector->setNorthValue(columns[3][i]);
    vector->setScaleFactor(scale);
    addPoint(view, vector->lon(), vector->lat(), kFootSize, color);
    view.addTheVector(vector);
  }
  return true;
}

bool MapFeatures::needLegend() const { return !events_.empty() || plates_ == kTypes; }

bool MapFeatures::show(geoMapView& view, const MapRegion& region, MapLegend& legend) const {
  view.setPlateBoundaryColor(kLines);
  depthColorsNamed(colors_).build(view);
  MapLegend lines; // behind what is said of the events
  bool all = addPlates(view, region, lines);
  all = addPolygons(view, region) && all;
  all = addEvents(view, region, legend) && all;
  legend.insert(legend.end(), lines.begin(), lines.end());
  all = addStations(view, region) && all;
  return addVectors(view, region) && all;
}

QString MapFeatures::title() const {
  return events_.empty() ? QString() : QFileInfo(fileNameFromBytes(events_)).completeBaseName();
}

double fittingVectorScale(const std::vector<float>& east, const std::vector<float>& north) {
  double longest = 0;
  for (std::size_t i = 0; i < std::min(east.size(), north.size()); ++i) {
    const double length = std::hypot(double(east[i]), double(north[i]));
    if (std::isfinite(length)) longest = std::max(longest, length);
  }
  return longest > 0 ? kLongestVector / longest : 1;
}

} // namespace xov::cli
