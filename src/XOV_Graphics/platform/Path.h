#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Trace.h"

#include <QPainterPath>
#include <QPolygonF>
#include <QRectF>
#include <QTransform>

#include <cstdint>
#include <vector>

namespace xov {

/// Lines, curves and traces that are stroked or filled together, in view points (y upwards), with the settings of the
/// stroke. A new path has line width 1, butt caps, mitre joins with limit 10, no dashes and the non-zero winding
/// rule.
///
/// A point with a coordinate that is not finite is left out and ends the subpath: the next line starts a new one.
/// Traces are stroked with round joins and butt ends whatever the path's own settings are, since a mitre would draw
/// tips that are not in the data; their ink is one area that never doubles.
class XOV_EXPORT Path {
public:
  /// How lines end: at their last point, or half a line width beyond it, round or square.
  enum class Cap : std::uint8_t { Butt, Round, Square };
  /// How lines meet; mitres are cut off to bevels where they exceed miterLimit().
  enum class Join : std::uint8_t { Miter, Round, Bevel };
  /// What is inside where contours overlap.
  enum class Winding : std::uint8_t { NonZero, EvenOdd };

  /// A closed contour along a rectangle.
  static Path rect(const QRectF& rect);
  /// The lines and curves of a path of Qt's, with the settings of a new path.
  static Path fromShape(const QPainterPath& shape);

  /// Begins a subpath.
  void moveTo(QPointF point);
  /// Without a current point, and after a point that was left out, this moves instead.
  void lineTo(QPointF point);
  /// A cubic Bézier curve from the current point, as lineTo() otherwise.
  void curveTo(QPointF control1, QPointF control2, QPointF point);
  /// Draws a line back to where the subpath began, and ends it.
  void close();
  /// Appends a closed contour along a rectangle.
  void appendRect(const QRectF& rect);
  /// Appends the ellipse that touches the sides of a rectangle.
  void appendOval(const QRectF& rect);
  /// A circular arc, anticlockwise from startDegrees to endDegrees, angles measured anticlockwise from the x axis.
  /// A line joins it to the current point where there is one.
  void appendArc(QPointF center, double radius, double startDegrees, double endDegrees);
  /// Appends a trace by its description. An empty trace adds nothing.
  void appendTrace(const Trace& trace);

  /// Empties the path; the stroke settings stay.
  void removeAllPoints();
  /// Takes the traces out and leaves lines and curves.
  void removeTraces() { traces_.clear(); }
  /// Whether there is neither a line nor a trace.
  bool isEmpty() const { return shape_.elementCount() == 0 && traces_.empty(); }

  /// In view points; 1 at first.
  double lineWidth() const { return lineWidth_; }
  /// View points; negative and non-finite widths count as 0, which draws nothing.
  void setLineWidth(double width);
  /// Butt at first.
  Cap lineCap() const { return cap_; }
  void setLineCap(Cap cap) { cap_ = cap; }
  /// Miter at first.
  Join lineJoin() const { return join_; }
  void setLineJoin(Join join) { join_ = join; }
  /// How far a mitre reaches at most, in line widths; 10 at first.
  double miterLimit() const { return miterLimit_; }
  void setMiterLimit(double limit) { miterLimit_ = limit; }
  /// NonZero at first.
  Winding windingRule() const { return winding_; }
  void setWindingRule(Winding rule) { winding_ = rule; }
  /// Lengths of dashes and gaps in turn, in view points; empty for a solid line.
  const std::vector<double>& dashes() const { return dashes_; }
  /// The offset at which the dashes start, in view points.
  double dashPhase() const { return dashPhase_; }
  /// Lengths of dashes and gaps in turn, in view points, and the offset at which the pattern starts. An empty list, a
  /// list with a length that is negative or not finite, and one that adds up to 0 mean an unbroken line.
  void setDashes(const std::vector<double>& lengths, double phase);

  /// The lines and curves, without the traces.
  const QPainterPath& shape() const { return shape_; }
  /// The traces in the order in which they were appended.
  const std::vector<Trace>& traces() const { return traces_; }

  /// The straight pieces of shape() and of every trace, point by point; curves are flattened. Costs 16 bytes a
  /// sample.
  std::vector<QPolygonF> polylines() const;

  /// The path after a transform, with the same stroke settings. Traces stay descriptions while the transform only
  /// moves and scales; otherwise they are spelled out as lines.
  Path transformed(const QTransform& transform) const;

private:
  bool accepts(QPointF point);

  QPainterPath shape_;
  std::vector<Trace> traces_;
  bool penUp_ = true;
  double lineWidth_ = 1;
  Cap cap_ = Cap::Butt;
  Join join_ = Join::Miter;
  double miterLimit_ = 10;
  Winding winding_ = Winding::NonZero;
  std::vector<double> dashes_;
  double dashPhase_ = 0;
};

} // namespace xov
