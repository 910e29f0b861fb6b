#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QRectF>

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace xov {

/// Where labels stand that would lie on each other: each of them wishes to begin at a place along a line and takes
/// `height` of it. They move apart by up to `reach`, in the order of their wishes, and one that finds no room even so
/// is left out: as few as can be. Each stands as near to its wish as those that are kept allow, the last one first.
/// Of labels with one wish the earlier ones come first. A wish that is not finite is left out; without a height all
/// stand where they wish.
XOV_EXPORT std::vector<std::optional<double>> spreadLabels(std::span<const double> wishes, double height,
                                                           double reach);

/// The room that labels of a drawing have taken.
class XOV_EXPORT LabelField {
public:
  /// Takes the room of a label, unless it would cover one that has been taken: then false. Labels may touch. Boxes
  /// without an area take none and fit everywhere; what is not finite never fits.
  bool take(const QRectF& box);

private:
  std::unordered_map<std::int64_t, std::vector<QRectF>> cells_; ///< boxes by the cells of a grid that they touch
};

} // namespace xov
