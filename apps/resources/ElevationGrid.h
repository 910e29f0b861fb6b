#pragma once

#include <QByteArray>

#include <XOV_Graphics/base/Result.h>
#include <cstdint>
#include <vector>

namespace xov::maker {

/// Elevations in metres all around the globe. The first row is that of the north pole, and the south pole has none;
/// the first column is that of Greenwich. Rows and columns are as many degrees apart as there are cells in 180 and
/// 360.
struct ElevationGrid {
  int rows = 0;
  int columns = 0;
  std::vector<std::int16_t> metres; ///< row after row

  std::int16_t at(int row, int column) const {
    return metres[std::size_t(row) * std::size_t(columns) + std::size_t(column)];
  }

  /// The elevation between grid points; longitudes may be any, latitudes beyond the grid take the last row.
  float interpolated(double longitude, double latitude) const;
};

/// Cells of ETOPO5 (Data Announcement 88-MGG-02, Digital relief of the surface of the Earth, NOAA, National
/// Geophysical Data Center, Boulder, 1988): 5 minutes of arc.
inline constexpr int kEtopo5Rows = 2160;
inline constexpr int kEtopo5Columns = 4320;

/// The ETOPO5 grid out of a netCDF file with the variable ROSE, whose rows run from pole to pole, southern first, on
/// 2161 latitudes; the row of the south pole is left out. Refuses a grid of another shape, and values that are no
/// whole metres of 16 bits.
Result<ElevationGrid> etopo5FromNetcdf(const QByteArray& file);

/// A grid with `factor` times fewer rows and columns, which must divide them: a cell is land when half of its points
/// are, and then has the mean of those, else the mean of the others. So small islands and narrow straits go, but
/// coasts stay where they are whatever stands and lies beside them.
ElevationGrid coarser(const ElevationGrid& grid, int factor);

/// The elevations as 16-bit numbers in this machine's byte order.
QByteArray machineOrderBytes(const ElevationGrid& grid);

} // namespace xov::maker
