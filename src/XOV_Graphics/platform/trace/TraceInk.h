#pragma once

#include "XOV_Graphics/platform/trace/TraceUnion.h"

#include <QColor>

#include <array>
#include <cstddef>
#include <cstdint>

namespace xov {

/// Columns of pixels side by side, at most kInkColumns: those first <= column < last may have ink, those from `all`
/// on must not be touched.
struct InkedColumns {
  int first = 0;
  int last = 0;
  int all = 0;
};

/// A pen colour, laid over premultiplied pixels of 32 bits by coverage.
class TraceInk {
public:
  explicit TraceInk(const QColor& color);

  bool isInvisible() const { return alpha_ == 0; }
  /// As if it were opaque.
  std::uint32_t color() const { return color_; }
  /// 0 to 255.
  std::uint32_t alpha() const { return alpha_; }

  /// Sums the changes of columns of ink (see TraceUnion.h) down to some rows, lays that over their pixels, of which
  /// `pixels` is that of column 0 in row `rows.first`, and clears the changes in those rows and the one
  /// behind. Full coverage is `perColumn` sub-columns; rows are `stride` pixels apart.
  void lay(std::int32_t* changes, RowRange rows, int perColumn, const InkedColumns& columns, std::uint32_t* pixels,
           std::ptrdiff_t stride) const;

private:
  std::uint32_t color_ = 0; // opaque
  std::uint32_t alpha_ = 0;
};

/// Inks of columns side by side, which have their opacity in common.
struct ColumnInks {
  ColumnInks() { full.fill(kRowUnit); }

  std::array<std::uint32_t, kInkColumns> colors{}; ///< as if they were opaque
  std::array<std::int32_t, kInkColumns> full{};    ///< what changes sum up to in a row that is all covered; not 0
  std::uint32_t alpha = 0;

  /// As TraceInk::lay().
  void lay(std::int32_t* changes, RowRange rows, const InkedColumns& columns, std::uint32_t* pixels,
           std::ptrdiff_t stride) const;
};

} // namespace xov
