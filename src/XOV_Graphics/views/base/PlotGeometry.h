#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QDateTime>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace xov {

/// The four data limits of a plot, single precision as the data are.
struct XOV_EXPORT PlotLimits {
  float xmin = 0; ///< at the left end of the x axis
  float xmax = 0; ///< at its right end
  float ymin = 0; ///< at the lower end of the y axis
  float ymax = 0; ///< at its upper end

  /// (xmin, ymin, xmax − xmin, ymax − ymin); the differences are taken in single precision.
  QRectF rect() const;
  bool operator==(const PlotLimits&) const = default;
};

/// Which axes of a plot are logarithmic.
struct XOV_EXPORT LogAxes {
  bool x = false; ///< the x axis
  bool y = false; ///< the y axis

  bool operator==(const LogAxes&) const = default;
};

/// The limits of an axis as they are drawn on a logarithmic one: their decimal logarithms. A limit that is not above
/// 0 stands for a millionth of the other one; where neither is above 0, both are NaN.
struct XOV_EXPORT LogRange {
  double lower = 0; ///< of the lower limit
  double upper = 0; ///< of the upper limit
};
/// The range of these limits.
XOV_EXPORT LogRange logRange(float lower, float upper);

/// The limits with those of logarithmic axes as logRange() has them.
XOV_EXPORT PlotLimits drawnLimits(const PlotLimits& limits, LogAxes axes);

/// The data coordinates of a point of a view whose data frame is `frame`: the limits' differences in single
/// precision, the rest in double. Not finite for a frame without width or height.
XOV_EXPORT QPointF viewToData(QPointF point, const QRectF& frame, const PlotLimits& limits);

/// The point of a view at data coordinates; the inverse of viewToData().
XOV_EXPORT QPointF dataToView(QPointF data, const QRectF& frame, const PlotLimits& limits);

/// Both for a plot with logarithmic axes.
XOV_EXPORT QPointF viewToData(QPointF point, const QRectF& frame, const PlotLimits& limits, LogAxes axes);
/// The way back from viewToData() with logarithmic axes.
XOV_EXPORT QPointF dataToView(QPointF data, const QRectF& frame, const PlotLimits& limits, LogAxes axes);

/// Whether a point lies in a rectangle or on any of its four edges. Nothing lies in one of negative size.
XOV_EXPORT bool containsPoint(const QRectF& rect, QPointF point);

/// Where text stands beside the point that it is placed at.
enum class HJust : int { Left = 1, Center = 2, Right = 3 };
/// The same for its height.
enum class VJust : int { Bottom = 1, Center = 2, Top = 3 };

/// The lower left corner of a text box of that size that is placed at (x, y): hjust 1 left, 2 centred, 3 right; vjust
/// 2 centred, 3 hanging below y, anything else standing on y.
XOV_EXPORT QPointF alignedTextOrigin(QPointF at, QSizeF size, int hjust, int vjust);
/// The same by name.
inline QPointF alignedTextOrigin(QPointF at, QSizeF size, HJust hjust, VJust vjust) {
  return alignedTextOrigin(at, size, int(hjust), int(vjust));
}

/// The same for text that is then turned about that corner, made for 90 degrees: the box's height counts along x and
/// its width along y.
XOV_EXPORT QPointF rotatedTextOrigin(QPointF at, QSizeF size, int hjust, int vjust);
/// The same by name.
inline QPointF rotatedTextOrigin(QPointF at, QSizeF size, HJust hjust, VJust vjust) {
  return rotatedTextOrigin(at, size, int(hjust), int(vjust));
}

/// How far a date's zone is from UTC: "+0530".
XOV_EXPORT QString zoneOffsetText(const QDateTime& dateTime);

/// A date as plots are stamped with it: "2011-03-11 05:46:23 +0000", local time with the zone's offset.
XOV_EXPORT QString timeStampText(const QDateTime& dateTime);

} // namespace xov
