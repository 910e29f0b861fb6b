#pragma once

#include <QRectF>

#include <array>

namespace xov {

/// Three square panels beside each other, all as large.
struct MotionPanels {
  QRectF frame; ///< around all of them
  std::array<QRectF, 3> panel;
};

/// The largest panels that fit, with room for labels at the left of each and below, for a title above, and for lines
/// of text at the bottom:
///
///     42        title
///     60 [   ] 60 [   ] 60 [   ] 20
///     44        axes
///     24        text
///
/// Small bounds give panels without a size.
MotionPanels layOutMotionPanels(const QRectF& bounds);

/// How the axes of the panels are labelled.
struct MotionScale {
  int exponent = 0;   ///< labels are divided by ten to this power
  float factor = 1;   ///< 10^-exponent
  float interval = 0; ///< of ticks, in labels: 1, 2 or 5 times a power of ten, two to five intervals over the range
};

/// For axes of that range. Labels of ranges from 0.02 to 20000 are written as they are. A range that is not positive
/// and finite gives the plain scale, with an interval of 0.
MotionScale motionScale(float range);

} // namespace xov
