#include "XOV_Graphics/views/map/TopoGrid.h"

#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <new>

namespace xov {

namespace {

using Cell = std::int16_t;

QString checkRequest(const TopoFileSize& size, int factor) {
  if (size.rows <= 0 || size.columns <= 0)
    return QStringLiteral("found %1 by %2 cells, expected at least 1 by 1").arg(size.rows).arg(size.columns);
  if (factor <= 0 || factor > size.rows || factor > size.columns)
    return QStringLiteral("found a reduction by %1, expected 1 to %2")
        .arg(factor)
        .arg(std::min(size.rows, size.columns));
  return {};
}

QString checkFile(const QString& path, qint64 expected) {
  const QFileInfo info(path);
  if (!info.exists()) return QStringLiteral("there is no such file");
  if (!info.isFile()) return QStringLiteral("is not an ordinary file");
  if (info.size() != expected) return QStringLiteral("found %1 bytes, expected %2").arg(info.size()).arg(expected);
  return {};
}

// The kept rows, one read each.
QString readRows(QFile& file, const TopoFileSize& size, int factor, TopoGrid& grid) {
  std::vector<Cell> row(std::size_t(size.columns));
  const qint64 rowBytes = qint64(size.columns) * qint64(sizeof(Cell));
  auto value = grid.values.begin();
  for (int r = 0; r < grid.rows; ++r) {
    const bool read = file.seek(qint64(r) * factor * rowBytes) &&
                      file.read(reinterpret_cast<char*>(row.data()), rowBytes) == rowBytes;
    if (!read) return QStringLiteral("row %1 cannot be read: %2").arg(qint64(r) * factor).arg(file.errorString());
    for (int k = 0; k < grid.columns; ++k)
      *value++ = float(row[std::size_t(k) * std::size_t(factor)]);
  }
  return {};
}

} // namespace

std::optional<TopoGrid> readTopoGrid(const QString& path, const TopoFileSize& size, int factor, QString& error) {
  QString fault = checkRequest(size, factor);
  if (fault.isEmpty()) fault = checkFile(path, qint64(size.rows) * size.columns * qint64(sizeof(Cell)));
  TopoGrid grid;
  if (fault.isEmpty()) {
    QFile file(path);
    grid.rows = size.rows / factor;
    grid.columns = size.columns / factor;
    try {
      grid.values.resize(std::size_t(grid.rows) * std::size_t(grid.columns));
      fault = file.open(QIODevice::ReadOnly) ? readRows(file, size, factor, grid)
                                             : QStringLiteral("cannot be opened: ") + file.errorString();
    } catch (const std::bad_alloc&) {
      fault = QStringLiteral("not enough memory");
    }
  }
  if (fault.isEmpty()) return grid;
  error = path + QStringLiteral(": ") + fault;
  return {};
}

} // namespace xov
