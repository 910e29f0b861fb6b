#include "XOV_Graphics/grid/RawGrid.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"

#include <QtEndian>

#include <bit>

namespace xov {

namespace {

template <class Number>
Number numberAt(const char* bytes, ByteOrder order) {
  return order == ByteOrder::Little ? qFromLittleEndian<Number>(bytes) : qFromBigEndian<Number>(bytes);
}

float cellAt(const char* bytes, std::size_t index, const RawGridLayout& layout) {
  if (layout.cell == RawCell::Int16) return numberAt<std::int16_t>(bytes + 2 * index, layout.order);
  return std::bit_cast<float>(numberAt<std::uint32_t>(bytes + 4 * index, layout.order));
}

Status checkSize(qint64 bytes, const RawGridLayout& layout, const QString& name) {
  if (layout.rows <= 0 || layout.columns <= 0)
    return Error{QStringLiteral("%1: %2 rows of %3 columns: expected at least one")
                     .arg(name)
                     .arg(layout.rows)
                     .arg(layout.columns)};
  if (bytes == layout.bytes()) return {};
  return Error{QStringLiteral("%1: %2 bytes, expected %3 for %4 rows of %5 columns")
                   .arg(name)
                   .arg(bytes)
                   .arg(layout.bytes())
                   .arg(layout.rows)
                   .arg(layout.columns)};
}

Result<Grid> parse(QByteArrayView bytes, const RawGridLayout& layout, const QString& name) {
  if (Status status = checkSize(bytes.size(), layout, name); !status) return Error{status.error()};
  Grid grid;
  grid.rows = layout.rows;
  grid.columns = layout.columns;
  grid.xmax = layout.columns - 1;
  grid.ymax = layout.rows - 1;
  grid.values.resize(std::size_t(layout.rows) * std::size_t(layout.columns));
  for (std::size_t i = 0; i < grid.values.size(); ++i)
    grid.values[i] = cellAt(bytes.data(), i, layout);
  return grid;
}

} // namespace

Result<Grid> parseRawGrid(QByteArrayView bytes, const RawGridLayout& layout, const QString& name) noexcept {
  return guarded(name, [&] { return parse(bytes, layout, name); });
}

Result<Grid> readRawGrid(const QString& path, const RawGridLayout& layout) noexcept {
  return guarded(path, [&]() -> Result<Grid> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    if (Status status = checkSize(file.size(), layout, path); !status) return Error{status.error()};
    const Result<QByteArray> bytes = readToEnd(file, path, layout.bytes());
    if (!bytes) return Error{bytes.error()};
    return parse(*bytes, layout, path);
  });
}

} // namespace xov
