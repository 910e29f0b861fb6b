#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Trace.h"

#include <QColor>

#include <cstddef>
#include <span>
#include <vector>

namespace xov {

class Path;

/// Strokes of traces with one line width and a colour each, drawn one after the other: later ones lie over earlier
/// ones. Many short ones, such as the pieces of a drum, are drawn much faster so than as a path each, and look the
/// same.
///
/// The traces of one stroke are one area of ink that never doubles, with round joins and butt ends, as in a Path.
class XOV_EXPORT TraceStrokes {
public:
  /// In view points, as Path::setLineWidth() takes it.
  explicit TraceStrokes(double lineWidth = 1);

  /// Begins a stroke, to which the traces that follow belong. With an invalid colour it has that of the stroke
  /// before, and the first one the context's.
  void begin(const QColor& color);
  /// Adds a trace by its description, whose samples are borrowed up to the drawing. An empty one is left out; so is
  /// one before the first stroke.
  void addTrace(const Trace& trace);
  /// Makes room for so many strokes of one trace each, as a vector does.
  void reserve(std::size_t strokes);
  /// Takes all strokes out and keeps their memory.
  void clear();

  /// View points.
  double lineWidth() const { return lineWidth_; }
  /// Whether there is no stroke.
  bool isEmpty() const { return strokes_.empty(); }
  /// How many strokes there are.
  std::size_t count() const { return strokes_.size(); }
  /// The colour of a stroke.
  QColor color(std::size_t stroke) const { return strokes_[stroke].color; }
  /// The traces of a stroke, in the order in which they were added.
  std::span<const Trace> traces(std::size_t stroke) const;
  /// A stroke as a path of its own.
  Path path(std::size_t stroke) const;

private:
  struct Stroke {
    QColor color;
    std::size_t firstTrace;
  };

  double lineWidth_;
  std::vector<Stroke> strokes_;
  std::vector<Trace> traces_;
};

} // namespace xov
