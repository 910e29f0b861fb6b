#pragma once

#include <QRectF>

#include <array>

namespace xov {

/// Where a three-component view draws.
struct ThreeCompPanels {
  QRectF frame;                ///< the data frame; its lower edge lies at 48, wherever the bounds begin
  std::array<QRectF, 3> panel; ///< from top to bottom
};

/// Three panels of equal height with 6 points between them, inside margins of 72 points at the sides and 48 above and
/// below. Small bounds give panels of negative size.
///
///     48   header
///     72 [ vertical   ] 72
///      6
///        [ radial     ]
///      6
///        [ transverse ]
///     48   time axis
ThreeCompPanels layOutThreeCompPanels(const QRectF& bounds);

} // namespace xov
