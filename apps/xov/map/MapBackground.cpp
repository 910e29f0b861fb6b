#include "apps/xov/map/MapBackground.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/map/GridWindow.h"
#include "apps/xov/terminal/Messages.h"

#include <QDir>
#include <QFileInfo>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/Resources.h>
#include <XOV_Graphics/grid/RawGrid.h>
#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace xov::cli {

namespace {

constexpr int kWorldPicture = 2;
constexpr int kRegionalPicture = 10;
constexpr PlotLimits kRegionalExtent = {-130, -105, 30, 52};
constexpr PlotLimits kPictureExtent = {-180, 360, -90, 90};
constexpr PlotLimits kGlobe = {0, 360, -90, 90};
constexpr int kMostCells = 100000; // a side

constexpr char kDefault[] = "default";
constexpr char kGivenAlone[] = "true"; // what the parser stores for an option without its value
constexpr char kSmallGrid[] = "etopo30.i2";
constexpr char kLargeGrid[] = "DATA/Grids/etopo5.i2"; // below the data root
constexpr int kLargeRows = 2160;

std::string limitsText(const PlotLimits& l) {
  return QStringLiteral("%1 %2 %3 %4").arg(l.xmin).arg(l.xmax).arg(l.ymin).arg(l.ymax).toStdString();
}

// A grid of the globe is twice as wide as it is high: 2 · rows² cells of two bytes.
std::optional<int> rowsOfGlobe(qint64 bytes) {
  const qint64 rows = std::llround(std::sqrt(double(bytes) / 4));
  if (rows < 1 || rows > kMostCells || 4 * rows * rows != bytes) return {};
  return int(rows);
}

// Signed 16-bit metres in the machine's byte order, as the views read them, too.
Result<Grid> readElevations(const QString& path, int rows, int columns) {
  RawGridLayout layout;
  layout.rows = rows;
  layout.columns = columns;
  layout.order = std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;
  return readRawGrid(path, layout);
}

void setLimits(geoMapView& view, const PlotLimits& limits) {
  view.setXLimitsMinMax(limits.xmin, limits.xmax);
  view.setYLimitsMinMax(limits.ymin, limits.ymax);
}

} // namespace

void MapBackground::addOptions(const Options& options) {
  Option topo =
      options.add("--topo", topo_, "Colour elevations: a grid file, or 'default' for the library's own grid")
          .typeName("FILE")
          .valueMayLack();
  topoOption_ = topo;
  options.add("--topo-size", topoSize_, "Rows and columns of the grid file (default: twice as wide as high)")
      .typeName("R C")
      .check(wholeNumberFromTo(1, kMostCells))
      .needs(topo)
      .takesExactly(2);
  options.add("--topo-extent", topoExtent_, "What the grid file covers, in degrees (default 0 360 -90 90)")
      .typeName("W E S N")
      .check(numberFromTo(-kLargestLongitude, kLargestLongitude))
      .needs(topo)
      .takesExactly(4);
  options.add("--image", image_, "Background picture: 1, 2, 3, 4, 10, or 0 for none (default 2)")
      .typeName("N")
      .check(oneOf({"0", "1", "2", "3", "4", "10"}))
      .excludes(topo);
}

bool MapBackground::hasTopo() const { return topoOption_ != Option() && topoOption_.count() > 0; }

PlotLimits MapBackground::extent() const {
  if (hasTopo() && topoExtent_) {
    const auto& [west, east, south, north] = *topoExtent_;
    return {float(west), float(east), float(south), float(north)};
  }
  if (hasTopo()) return kGlobe;
  return image_ == kRegionalPicture ? kRegionalExtent : kPictureExtent;
}

MapRegion MapBackground::region() const {
  const PlotLimits all = extent();
  return all.xmax - all.xmin < kGlobe.xmax ? MapRegion(all) : MapRegion();
}

void MapBackground::checkRegion(const MapRegion& region) const {
  const PlotLimits all = extent();
  if (!(all.xmin < all.xmax && all.ymin < all.ymax))
    throw UsageError("--topo-extent", "found " + limitsText(all) + ", expected W below E and S below N");
  const bool isGlobal = all.xmax - all.xmin >= kGlobe.xmax;
  PlotLimits outer = all;
  if (isGlobal) {
    outer.xmin = kPictureExtent.xmin;
    outer.xmax = kPictureExtent.xmax;
  }
  if (!region.liesWithin(outer))
    throw UsageError("--region", "found " + limitsText(region.limits()) + ", expected a part of " +
                                     limitsText(outer) + ", which the background covers");
}

Result<Grid> MapBackground::readTopoFile() const {
  const QString path = QString::fromStdString(topo_);
  auto [rows, columns] = topoSize_;
  if (rows == 0 && QFileInfo(path).isFile()) {
    const qint64 bytes = QFileInfo(path).size();
    rows = rowsOfGlobe(bytes).value_or(0);
    columns = 2 * rows;
    if (rows == 0) {
      return Error{
          QStringLiteral("%1: found %2 bytes, which is no grid of 16-bit cells that is twice as wide as high; "
                         "give its rows and columns with --topo-size")
              .arg(path)
              .arg(bytes)};
    }
  }
  return readElevations(path, std::max(rows, 1), std::max(columns, 1));
}

// The grid of the data root, or else the small one that comes with the library.
Result<Grid> MapBackground::readTopo() const {
  const bool isDefault = topo_ == kDefault || topo_ == kGivenAlone || topo_.empty();
  if (!isDefault) return readTopoFile();
  Result<Grid> large =
      readElevations(QDir(dataRoot()).filePath(QString::fromLatin1(kLargeGrid)), kLargeRows, 2 * kLargeRows);
  if (large) return large;
  const QString small = resourcePath(QString::fromLatin1(kSmallGrid));
  const int rows = small.isEmpty() ? 0 : rowsOfGlobe(QFileInfo(small).size()).value_or(0);
  return rows > 0 ? readElevations(small, rows, 2 * rows) : std::move(large);
}

// The view places a grid only within its own meridians; the part that the map shows begins where its region does.
void MapBackground::showGrid(geoMapView& view, const Grid& grid, const PlotLimits& limits) const {
  GridWindow window = cutGrid(grid.values, grid.rows, grid.columns, extent(), limits);
  setLimits(view, window.extent);
  view.setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(std::move(window.values)), window.rows,
                                window.columns);
}

bool MapBackground::loadPicture(geoMapView& view) const {
  const int index = image_.value_or(kWorldPicture);
  QString error;
  if (index == kNoPicture || view.loadImageWithIndex(index, &error)) return true;
  if (image_ || isReadingFailure(error)) {
    complain(error);
    return false;
  }
  note(error); // nobody has asked for the default picture
  return true;
}

bool MapBackground::show(geoMapView& view, const MapRegion& region) const {
  view.setPlacesCellsExactly(true);
  bool shown = true;
  if (!hasTopo()) {
    shown = loadPicture(view);
  } else if (const Result<Grid> grid = readTopo()) {
    showGrid(view, *grid, region.limits());
  } else {
    complain(grid.error());
    shown = false;
  }
  setLimits(view, region.limits());
  return shown;
}

} // namespace xov::cli
