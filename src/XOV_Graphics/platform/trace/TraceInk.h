#pragma once

#include "XOV_Graphics/platform/trace/TraceUnion.h"

#include <QColor>

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

  /// Sums the changes of columns of ink (see TraceUnion.h) down to some rows, lays that over their pixels, of which
  /// `pixels` is that of column 0 in row `rows.first`, and clears the changes in those rows and the one
  /// behind. Full coverage is `perColumn` sub-columns; rows are `stride` pixels apart.
  void lay(std::int32_t* changes, RowRange rows, int perColumn, const InkedColumns& columns, std::uint32_t* pixels,
           std::ptrdiff_t stride) const;

private:
  std::uint32_t color_ = 0; // opaque
  std::uint32_t alpha_ = 0;
};

} // namespace xov
