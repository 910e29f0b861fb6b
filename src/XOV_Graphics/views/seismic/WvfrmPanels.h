#pragma once

#include <QRectF>

#include <vector>

namespace xov {

/// The place of one pair of traces.
struct WvfrmPanel {
  QRectF rect;
  /// The lowest panel of its column, under which the time axis runs.
  bool endsColumn = false;
};

/// Panels of 144 × 72 points in columns from left to right, filled from top to bottom: the first one's top lies 64
/// points below the top edge of the bounds, its left side 12 from the left edge, and 12 points lie between panels. A
/// column ends where the next panel's bottom would lie below 0, so it always holds one. Columns go on beyond the
/// right edge.
///
///      12  144  12  144
///     |  [panel]  [panel]        64 above
///     |  [panel]  [panel]        12 between
///     |  --axis-  --axis-
std::vector<WvfrmPanel> layOutWvfrmPanels(const QRectF& bounds, std::size_t count);

} // namespace xov
