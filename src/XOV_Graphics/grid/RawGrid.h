#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/grid/Grid.h"

#include <QByteArrayView>
#include <QString>

#include <limits>

namespace xov {

/// What the cells of a headerless grid are.
enum class RawCell : std::uint8_t { Int16, Float32 };
/// Which byte of a number comes first in the file: that of the lowest digits, or that of the highest.
enum class ByteOrder : std::uint8_t { Little, Big };

/// How a headerless grid lies in its file: row after row from the top, without anything before or between.
struct XOV_EXPORT RawGridLayout {
  std::int32_t rows = 0;               ///< 1 or more
  std::int32_t columns = 0;            ///< 1 or more
  RawCell cell = RawCell::Int16;       ///< what a cell is
  ByteOrder order = ByteOrder::Little; ///< of each cell

  /// The size of the file; the largest number where it is beyond that.
  std::int64_t bytes() const {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    const std::int64_t cells = std::int64_t(rows) * columns;
    const std::int64_t width = cell == RawCell::Int16 ? 2 : 4;
    return cells > kMost / width ? kMost : cells * width;
  }
};

/// Reads a headerless grid. A file of another size than the layout's is refused with both sizes.
XOV_EXPORT Result<Grid> readRawGrid(const QString& path, const RawGridLayout& layout) noexcept;

/// The same from memory; `name` stands for the file in errors.
XOV_EXPORT Result<Grid> parseRawGrid(QByteArrayView bytes, const RawGridLayout& layout, const QString& name) noexcept;

} // namespace xov
