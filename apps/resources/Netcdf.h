#pragma once

#include <QByteArray>

#include <XOV_Graphics/base/Result.h>
#include <cstddef>
#include <vector>

namespace xov::maker {

/// A grid of a netCDF file with the coordinates of its rows and columns.
struct NetcdfGrid {
  std::vector<double> rowCoordinates;
  std::vector<double> columnCoordinates;
  std::vector<float> values; ///< row after row

  std::size_t rows() const { return rowCoordinates.size(); }
  std::size_t columns() const { return columnCoordinates.size(); }
};

/// Reads a variable of two dimensions and single precision out of a file in netCDF's classic format (Rew, R., and
/// others: NetCDF Users' Guide, Unidata), and the two double-precision variables that are named
/// as its dimensions. Every count and offset is compared with the length of the file before it is used.
Result<NetcdfGrid> readNetcdfGrid(const QByteArray& file, const QByteArray& variable);

} // namespace xov::maker
