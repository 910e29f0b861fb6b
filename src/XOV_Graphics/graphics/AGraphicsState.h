#pragma once

#include "XOV_Graphics/graphics/LinearAxis.h"

#include <memory>

namespace xov {

class Path;
class TextAttributes;

/// What the drawing layer keeps between calls beside the exported globals.
struct AGraphicsState {
  std::weak_ptr<Path> path;
  std::weak_ptr<const TextAttributes> labelAttributes;
  int xPowerFlag = 0;
  int yPowerFlag = 0;
  AxisFrame axisRect;
};

AGraphicsState& aGraphicsState();

/// Whether the power flag of the axes along that side is set, so that their label may grow by a suffix.
bool mayScaleLabels(AxisSide side);

/// The codes of gJustify that axes use.
inline constexpr int kJustifyLeft = 1;
inline constexpr int kJustifyCenter = 2;
inline constexpr int kJustifyRight = 3;

} // namespace xov
