#pragma once

#include <QRectF>

#include <cstdint>
#include <vector>

namespace xov {

/// More rows than a page can tell apart. What would be drawn once for each of more rows is thinned or left out.
inline constexpr int kMostRows = 2048;

/// Rows first <= r <= last of a page.
struct PageRows {
  double first = 0;
  double last = 0;
};

/// Where the rows of a helicorder page lie. Row 0 is the top one; rows above it and below the last one go on in the
/// same way. Rows have no height, or a negative one, where the page has no room for them.
///
///        64  title
///     +-----------------+  top()
///  72 | row 0           |  rowHeight()
///     | ...             |           36 at the right
///     | an empty row    |
///     | minute scale    |  36
///     +-----------------+
///        36
struct HelicorderPage {
  QRectF rect;
  std::int32_t nRows = 0;
  float rowDuration = 0; ///< seconds

  double rowHeight() const;
  double top() const { return rect.y() + rect.height(); }
  /// Points a second.
  double xScale() const { return rect.width() / double(rowDuration); }
  /// The upper edge and the middle, where the zero line is, of a row's band.
  double rowTop(double row) const { return top() - row * rowHeight(); }
  double zeroLine(double row) const { return rowTop(row) - rowHeight() / 2; }
  double xAt(double secondsIntoRow) const { return rect.x() + secondsIntoRow * xScale(); }

  /// Whether traces have a place: rows have a finite height, and time runs to the right.
  bool holdsTraces() const;
  /// The rows that get a zero line and a label: all of them, or every so many-th where there are more than kMostRows.
  std::vector<std::int32_t> markedRows() const;
  /// The rows that reach into the view, margins included, when samples rise and fall by as many row heights. Beyond
  /// any number where rows have no height.
  PageRows rowsInView(double reach) const;
};

/// What stands to the right of the rows.
enum class RightMargin { Paper, Labels };

/// The plotting rectangle of a page. Its lower edge lies 36 above the x of the bounds, which is 0 as a rule. Labels
/// at the right take 72 points, as those at the left do, instead of 36.
QRectF helicorderRect(const QRectF& bounds, RightMargin right = RightMargin::Paper);

} // namespace xov
