#include "apps/resources/Relief.h"

#include <QDir>

#include <XOV_Graphics/base/InputFile.h>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace xov::maker {

namespace {

constexpr int kTileRows = 8;
constexpr int kTileColumns = 16;
constexpr int kLargestTile = 1024;
constexpr double kRadians = std::numbers::pi / 180;
constexpr double kMetresPerDegree = 6371000 * kRadians;

QString tilePath(const QString& folder, int row, int column) {
  const auto number = [](int n) { return QStringLiteral("%1").arg(n, 6, 10, QLatin1Char('0')); };
  return QDir(folder).filePath(QStringLiteral("%1/%1_%2.jpg").arg(number(row), number(column)));
}

void place(const QImage& tile, QImage& mosaic, int left, int top) {
  for (int y = 0; y < tile.height(); ++y)
    std::copy_n(tile.constScanLine(y), tile.width(), mosaic.scanLine(top + y) + left);
}

/// Neighbouring values that stand in the wrong order take their common mean.
struct Pool {
  double value;
  double weight;
  int count;
};

std::vector<double> madeToRise(const std::vector<double>& values, const std::vector<double>& weights) {
  std::vector<Pool> pools;
  for (std::size_t i = 0; i < values.size(); ++i) {
    pools.push_back({values[i], weights[i], 1});
    while (pools.size() > 1 && pools[pools.size() - 2].value > pools.back().value) {
      const Pool last = pools.back();
      pools.pop_back();
      Pool& before = pools.back();
      const double weight = before.weight + last.weight;
      before = {(before.value * before.weight + last.value * last.weight) / weight, weight,
                before.count + last.count};
    }
  }
  std::vector<double> risen;
  for (const Pool& pool : pools)
    risen.insert(risen.end(), std::size_t(pool.count), pool.value);
  return risen;
}

/// The table through points (grey, elevation); the first and last elevation hold beyond them.
ElevationTable interpolatedTable(const std::vector<int>& greys, const std::vector<double>& elevations) {
  ElevationTable table{};
  if (greys.empty()) return table;
  std::size_t next = 0;
  for (int grey = 0; grey < int(table.size()); ++grey) {
    while (next < greys.size() && greys[next] < grey)
      ++next;
    if (next == 0 || next == greys.size() || greys[next] == grey) {
      table.at(std::size_t(grey)) = float(elevations[std::min(next, greys.size() - 1)]);
      continue;
    }
    const double part = double(grey - greys[next - 1]) / (greys[next] - greys[next - 1]);
    table.at(std::size_t(grey)) = float(elevations[next - 1] + part * (elevations[next] - elevations[next - 1]));
  }
  return table;
}

/// Adds the row with a weight to the sums.
void addRow(const uchar* greys, const ElevationTable& table, float weight, std::span<float> sums) {
  for (std::size_t x = 0; x < sums.size(); ++x)
    sums[x] += weight * table[greys[x]];
}

/// The mean of `values` from position `from` to `to`, cells counted in part.
float meanBetween(std::span<const float> values, double from, double to) {
  const int last = int(values.size()) - 1;
  double sum = 0;
  for (int i = std::clamp(int(from), 0, last); i <= last && i < to; ++i)
    sum += double(values[std::size_t(i)]) * (std::min(to, i + 1.0) - std::max(from, double(i)));
  return float(sum / (to - from));
}

// How much of a sea floor's shape comes from the grid: from nothing at the coast to this share at depth.
constexpr double kGridShare = 0.7;
constexpr double kGridShareDepth = 300;
// Shelf ice, which stands this high: flat greys off Antarctica, and south of a latitude all but the deepest water.
constexpr double kShelfMetres = 30;
constexpr double kFlatLatitude = -70;
constexpr double kFlatDepth = -30;
constexpr double kShelfLatitude = -77.5;
constexpr double kShelfDepth = -1500;
// Within this height of sea level, where a few greys stand for all flat coasts, the two agree on where land ends.
constexpr double kCoastMetres = 40;
constexpr double kCoastShare = 0.6;

double coast(double fromPicture, double fromGrid) {
  const double share = kCoastShare * (1 - std::abs(fromPicture) / kCoastMetres);
  return fromPicture + share * (std::clamp(fromGrid, -kCoastMetres, kCoastMetres) - fromPicture);
}

double seaFloor(double fromPicture, double fromGrid) {
  const double share = kGridShare * std::min(1.0, -fromPicture / kGridShareDepth);
  return (1 - share) * fromPicture + share * std::min(fromGrid, -1.0);
}

bool isShelfIce(double fromPicture, double latitude) {
  return (latitude < kFlatLatitude && fromPicture > kFlatDepth) ||
         (latitude < kShelfLatitude && fromPicture > kShelfDepth);
}

/// The elevation of a place out of what the picture and the grid say.
float combined(double fromPicture, double fromGrid, double latitude) {
  double metres = fromPicture;
  if (std::abs(metres) < kCoastMetres) metres = coast(metres, fromGrid);
  if (isShelfIce(fromPicture, latitude)) metres = std::max(metres, kShelfMetres);
  if (metres < 0) return float(seaFloor(metres, fromGrid));
  return float(metres);
}

} // namespace

Result<QImage> readPicture(const QString& path) {
  constexpr qint64 kMostBytes = 64 << 20; // the globe has two megabytes
  // Read as a whole first: what decodes pictures takes an error of the disk for the end of the file.
  const Result<QByteArray> file = readWholeFile(path, kMostBytes);
  if (!file) return Error{file.error()};
  return QImage::fromData(*file);
}

Result<QImage> readReliefTiles(const QString& folder) {
  QImage mosaic;
  for (int row = 0; row < kTileRows; ++row) {
    for (int column = 0; column < kTileColumns; ++column) {
      const QString path = tilePath(folder, row, column);
      const Result<QImage> read = readPicture(path);
      if (!read) return read;
      const QImage tile = read->convertToFormat(QImage::Format_Grayscale8);
      const int size = mosaic.isNull() ? tile.width() : mosaic.width() / kTileColumns;
      if (tile.isNull() || tile.width() != size || tile.height() != size || size > kLargestTile)
        return Error{QStringLiteral("%1: no square picture of the size of the others").arg(path)};
      if (mosaic.isNull()) mosaic = QImage(size * kTileColumns, size * kTileRows, QImage::Format_Grayscale8);
      if (mosaic.isNull()) return Error{QStringLiteral("not enough memory for the relief")};
      place(tile, mosaic, column * size, row * size);
    }
  }
  return mosaic;
}

ElevationTable fittedElevations(const QImage& greys, const ElevationGrid& grid) {
  std::array<std::vector<std::int16_t>, std::tuple_size_v<ElevationTable>> found;
  for (int row = 0; row < grid.rows; ++row) {
    const uchar* line = greys.constScanLine(std::min(row * greys.height() / grid.rows, greys.height() - 1));
    for (int column = 0; column < grid.columns; ++column) {
      // The picture begins half a turn before the grid.
      const int x = int((std::int64_t(column) * greys.width() / grid.columns + greys.width() / 2) % greys.width());
      found.at(line[x]).push_back(grid.at(row, column));
    }
  }
  std::vector<int> present;
  std::vector<double> medians;
  std::vector<double> weights;
  for (std::size_t grey = 0; grey < found.size(); ++grey) {
    std::vector<std::int16_t>& metres = found.at(grey);
    if (metres.empty()) continue;
    const auto middle = metres.begin() + std::ptrdiff_t(metres.size() / 2);
    std::nth_element(metres.begin(), middle, metres.end());
    present.push_back(int(grey));
    medians.push_back(*middle);
    weights.push_back(double(metres.size()));
  }
  return interpolatedTable(present, madeToRise(medians, weights));
}

Relief sampledRelief(const QImage& greys, const ElevationTable& table, const ElevationGrid& grid,
                     const GeoWindow& window, int width, int height) {
  Relief relief{window, width, height, {}};
  relief.metres.reserve(std::size_t(width) * std::size_t(height));
  const double rowsPerDegree = greys.height() / 180.0;
  const double columnsPerDegree = greys.width() / 360.0;
  const double left = (window.west + 180) * columnsPerDegree;
  const double dx = (window.east - window.west) / width * columnsPerDegree;
  const double top = (90 - window.north) * rowsPerDegree;
  const double dy = (window.north - window.south) / height * rowsPerDegree;
  std::vector<float> sums(std::size_t(greys.width()));
  for (int y = 0; y < height; ++y) {
    const double from = top + y * dy;
    const double to = from + dy;
    std::fill(sums.begin(), sums.end(), 0.0F);
    for (int row = int(from); row < greys.height() && row < to; ++row) {
      const double part = std::min(to, row + 1.0) - std::max(from, double(row));
      addRow(greys.constScanLine(row), table, float(part / dy), sums);
    }
    for (int x = 0; x < width; ++x) {
      const float metres = meanBetween(sums, left + x * dx, left + (x + 1) * dx);
      const float fromGrid = grid.interpolated(relief.longitude(x), relief.latitude(y));
      relief.metres.push_back(combined(double(metres), double(fromGrid), relief.latitude(y)));
    }
  }
  return relief;
}

Hillshade::Hillshade(const Relief& relief, double seaFactor, double landFactor)
    : relief_(relief),
      seaFactor_(seaFactor),
      landFactor_(landFactor),
      wraps_(relief.window.east - relief.window.west >= 360) {}

float Hillshade::at(int x, int y) const {
  const int last = relief_.width - 1;
  const int west = x > 0 ? x - 1 : wraps_ ? last : 0;
  const int east = x < last ? x + 1 : wraps_ ? 0 : last;
  const int north = std::max(y - 1, 0);
  const int south = std::min(y + 1, relief_.height - 1);
  // Near the poles, where pixels are slivers, the width of those at 80 degrees.
  const double shrink = std::cos(std::min(std::abs(relief_.latitude(y)), 80.0) * kRadians);
  const double dx = (relief_.window.east - relief_.window.west) / relief_.width * kMetresPerDegree * shrink;
  const double dy = (relief_.window.north - relief_.window.south) / relief_.height * kMetresPerDegree;
  const double factor = relief_.at(x, y) < 0 ? seaFactor_ : landFactor_;
  const double eastward = factor * double(relief_.at(east, y) - relief_.at(west, y)) / (2 * dx);
  const double northward = factor * double(relief_.at(x, north) - relief_.at(x, south)) / (2 * dy);
  // A light 45 degrees high in the north-west: 1/√2 upwards, 1/2 westwards and 1/2 northwards.
  const double lit = std::numbers::sqrt2 / 2 + eastward / 2 - northward / 2;
  const double cosine = lit / std::sqrt(1 + eastward * eastward + northward * northward);
  return float(std::max(cosine, 0.0) * std::numbers::sqrt2);
}

} // namespace xov::maker
