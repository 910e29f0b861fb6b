#include "XOV_Graphics/views/map/TopoGrid.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"

#include <algorithm>
#include <cstdint>

namespace xov {

namespace {

using Cell = std::int16_t;

Status checkRequest(const TopoFileSize& size, int factor) {
  if (size.rows <= 0 || size.columns <= 0)
    return Error{QStringLiteral("found %1 by %2 cells, expected at least 1 by 1").arg(size.rows).arg(size.columns)};
  if (factor <= 0 || factor > size.rows || factor > size.columns)
    return Error{QStringLiteral("found a reduction by %1, expected 1 to %2")
                     .arg(factor)
                     .arg(std::min(size.rows, size.columns))};
  return {};
}

// The kept rows, one read each.
Status readRows(QFile& file, const TopoFileSize& size, int factor, TopoGrid& grid) {
  std::vector<Cell> row(std::size_t(size.columns));
  const std::span<char> bytes(reinterpret_cast<char*>(row.data()), row.size() * sizeof(Cell));
  auto value = grid.values.begin();
  for (int r = 0; r < grid.rows; ++r) {
    if (!file.seek(qint64(r) * factor * qint64(bytes.size())) || !readFully(file, bytes))
      return Error{QStringLiteral("row %1 cannot be read: %2").arg(qint64(r) * factor).arg(file.errorString())};
    for (int k = 0; k < grid.columns; ++k)
      *value++ = float(row[std::size_t(k) * std::size_t(factor)]);
  }
  return {};
}

Result<TopoGrid> read(const QString& path, const TopoFileSize& size, int factor) {
  const auto fault = [&](const QString& what) { return Error{path + QStringLiteral(": ") + what}; };
  if (Status status = checkRequest(size, factor); !status) return fault(status.error());
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  const qint64 expected = qint64(size.rows) * size.columns * qint64(sizeof(Cell));
  if (file.size() != expected)
    return fault(QStringLiteral("found %1 bytes, expected %2").arg(file.size()).arg(expected));
  TopoGrid grid;
  grid.rows = size.rows / factor;
  grid.columns = size.columns / factor;
  grid.values.resize(std::size_t(grid.rows) * std::size_t(grid.columns));
  if (Status status = readRows(file, size, factor, grid); !status) return fault(status.error());
  return grid;
}

} // namespace

Result<TopoGrid> readTopoGrid(const QString& path, const TopoFileSize& size, int factor) noexcept {
  return guarded(path, [&] { return read(path, size, factor); });
}

} // namespace xov
