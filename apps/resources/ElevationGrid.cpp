#include "apps/resources/ElevationGrid.h"

#include "apps/resources/Netcdf.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov::maker {

namespace {

constexpr double kFullCircleDeg = 360;
constexpr double kPoleDeg = 90;
constexpr double kNearDeg = 0.01; // how far a coordinate may be off: they are rounded steps, added up

bool runsEvenly(const std::vector<double>& coordinates, double first, double last) {
  const double step = (last - first) / double(coordinates.size() - 1);
  for (std::size_t i = 0; i < coordinates.size(); ++i) {
    if (!(std::abs(coordinates[i] - (first + double(i) * step)) < kNearDeg)) return false;
  }
  return true;
}

bool isWholeMetres(float value) {
  using Limits = std::numeric_limits<std::int16_t>;
  return value >= float(Limits::min()) && value <= float(Limits::max()) && value == std::trunc(value);
}

/// The mean of the points of a cell that are on the side, land or sea, of most of them.
std::int16_t cellMean(const ElevationGrid& grid, int firstRow, int firstColumn, int factor) {
  int land = 0;
  std::int64_t landSum = 0;
  std::int64_t seaSum = 0;
  for (int row = firstRow; row < firstRow + factor; ++row) {
    for (int column = firstColumn; column < firstColumn + factor; ++column) {
      const std::int16_t metres = grid.at(row, column);
      if (metres > 0) ++land;
      (metres > 0 ? landSum : seaSum) += metres;
    }
  }
  const int points = factor * factor;
  const bool isLand = 2 * land >= points;
  const double mean = isLand ? double(landSum) / land : double(seaSum) / (points - land);
  return std::int16_t(std::lround(mean));
}

} // namespace

float ElevationGrid::interpolated(double longitude, double latitude) const {
  double x = std::fmod(longitude, kFullCircleDeg);
  if (x < 0) x += kFullCircleDeg;
  x *= columns / kFullCircleDeg;
  const double y = std::clamp((kPoleDeg - latitude) * rows / (2 * kPoleDeg), 0.0, double(rows - 1));
  const int left = std::min(int(x), columns - 1);
  const int top = int(y);
  const int right = (left + 1) % columns;
  const int bottom = std::min(top + 1, rows - 1);
  const double u = x - left;
  const double v = y - top;
  const double upper = at(top, left) * (1 - u) + at(top, right) * u;
  const double lower = at(bottom, left) * (1 - u) + at(bottom, right) * u;
  return float(upper * (1 - v) + lower * v);
}

Result<ElevationGrid> etopo5FromNetcdf(const QByteArray& file) {
  const Result<NetcdfGrid> source = readNetcdfGrid(file, "ROSE");
  if (!source) return Error{source.error()};
  if (source->rows() != kEtopo5Rows + 1 || source->columns() != kEtopo5Columns)
    return Error{QStringLiteral("ROSE: %1 rows of %2 values, not %3 of %4")
                     .arg(source->rows())
                     .arg(source->columns())
                     .arg(kEtopo5Rows + 1)
                     .arg(kEtopo5Columns)};
  if (!runsEvenly(source->rowCoordinates, -kPoleDeg, kPoleDeg) ||
      !runsEvenly(source->columnCoordinates, 0, kFullCircleDeg - kFullCircleDeg / kEtopo5Columns))
    return Error{QStringLiteral("ROSE: rows do not run from -90 to 90 or columns not from 0 to 360 degrees")};

  ElevationGrid grid{kEtopo5Rows, kEtopo5Columns, {}};
  grid.metres.reserve(std::size_t(kEtopo5Rows) * kEtopo5Columns);
  for (std::size_t row = kEtopo5Rows; row >= 1; --row) {
    for (std::size_t column = 0; column < kEtopo5Columns; ++column) {
      const float value = source->values[row * kEtopo5Columns + column];
      if (!isWholeMetres(value))
        return Error{QStringLiteral("ROSE: row %1, column %2: %3 is no whole number of metres")
                         .arg(row)
                         .arg(column)
                         .arg(double(value))};
      grid.metres.push_back(std::int16_t(value));
    }
  }
  return grid;
}

ElevationGrid coarser(const ElevationGrid& grid, int factor) {
  ElevationGrid coarse{grid.rows / factor, grid.columns / factor, {}};
  coarse.metres.reserve(std::size_t(coarse.rows) * std::size_t(coarse.columns));
  for (int row = 0; row < coarse.rows; ++row) {
    for (int column = 0; column < coarse.columns; ++column)
      coarse.metres.push_back(cellMean(grid, row * factor, column * factor, factor));
  }
  return coarse;
}

QByteArray machineOrderBytes(const ElevationGrid& grid) {
  return {reinterpret_cast<const char*>(grid.metres.data()), qsizetype(grid.metres.size() * sizeof(std::int16_t))};
}

} // namespace xov::maker
