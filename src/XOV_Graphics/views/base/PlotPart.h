#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

namespace xov {

/// A stretch of an axis in the axis's own unit: from its left or lower end to its right or upper one, which may have
/// the smaller value.
struct XOV_EXPORT PlotSpan {
  double lower = 0; ///< at the left or lower end
  double upper = 0; ///< at the right or upper end

  /// From end to end; negative where the axis falls.
  double width() const { return upper - lower; }
  /// Halfway between both ends.
  double center() const { return lower + (upper - lower) / 2; }
  bool operator==(const PlotSpan&) const = default;
};

/// The part of its data that a plot shows, in double precision: limits are single precision, which a tenth of a
/// second after a day is too much for.
struct XOV_EXPORT PlotPart {
  PlotSpan x;      ///< seconds on the records' axis where it is one of time
  PlotSpan y;      ///< of plots without an axis of y that can be moved, what they have
  double gain = 1; ///< how many times larger than by themselves amplitudes without an axis are drawn

  bool operator==(const PlotPart&) const = default;
};

/// Where a plot can be moved.
struct XOV_EXPORT PlotReach {
  /// How an axis can be moved.
  enum class Motion {
    None,        ///< it stays put
    Linear,      ///< equal differences are equally wide
    Logarithmic, ///< equal factors are equally wide
  };
  Motion x = Motion::None;  ///< of the x axis
  Motion y = Motion::None;  ///< of the y axis
  bool gain = false;        ///< whether amplitudes have a gain
  bool together = false;    ///< whether x and y are zoomed by the same factor only, as on a map
  bool wheelZoomsY = false; ///< whether the wheel zooms y with x
  PlotPart whole;           ///< what the plot shows by itself
  PlotSpan farthestX;       ///< what no part reaches beyond; it holds the whole
  PlotSpan farthestY;       ///< the same for y
  double leastX = 0;        ///< the smallest width of a part; of logarithmic axes in decades
  double leastY = 0;        ///< the same for y

  /// Whether an axis or the gain can be moved.
  bool movesAnything() const { return x != Motion::None || y != Motion::None || gain; }
  /// Makes an axis one that moves within `farthest`, no closer than `least` or than single precision tells positions
  /// apart that differ by a thousandth of a part. One without extent, or with ends that are not finite, stays put.
  void setX(const PlotSpan& whole, const PlotSpan& farthest, bool logarithmic, double least = 0);
  /// The same for y.
  void setY(const PlotSpan& whole, const PlotSpan& farthest, bool logarithmic, double least = 0);
};

/// The smallest and the largest gain.
inline constexpr double kLeastGain = 1e-9;
inline constexpr double kLargestGain = 1e9; ///< the largest

/// The span that holds both.
XOV_EXPORT PlotSpan united(const PlotSpan& span, const PlotSpan& other);

/// A span `factor` times as wide in which `about` lies at the same share of it; about its middle where that is not
/// finite. A logarithmic span is measured by its logarithms. A factor that is not positive changes nothing.
XOV_EXPORT PlotSpan zoomedSpan(const PlotSpan& span, double about, double factor, PlotReach::Motion motion);

/// The span moved on by `share` of its width, to the right or upwards.
XOV_EXPORT PlotSpan shiftedSpan(const PlotSpan& span, double share, PlotReach::Motion motion);

/// The share of a span's width at which a value lies; not finite where the span has none.
XOV_EXPORT double shareOfSpan(const PlotSpan& span, double value, PlotReach::Motion motion);

/// The part nearest to a wish that the plot can show: of finite, positive width, neither narrower nor wider than the
/// reach allows, moved inside it. What a plot does not move is that of the whole, and what lies by a millionth of a
/// width beside the whole is the whole.
XOV_EXPORT PlotPart nearestPart(const PlotReach& reach, const PlotPart& wish);

} // namespace xov
