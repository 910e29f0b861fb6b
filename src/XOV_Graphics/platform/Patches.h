#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QColor>
#include <QPointF>

#include <span>
#include <vector>

namespace xov {

class Path;

/// Areas with straight edges and a colour each, filled one after the other: later ones lie over earlier ones. Many
/// small ones, such as symbols that are no circles, are drawn much faster so than as a path each.
///
/// Where the contours of a patch lie over each other, those that go around in the same way count as one area, and one
/// that goes around in the opposite way inside another is a hole.
class XOV_EXPORT Patches {
public:
  /// Begins a patch, to which the contours that follow belong.
  void begin(const QColor& color);
  /// Adds a closed contour in view points. One of fewer than three points, or with a coordinate that is not finite,
  /// is left out; so is one before the first patch.
  void addContour(std::span<const QPointF> points);
  /// Takes all patches out and keeps their memory.
  void clear();

  /// Whether there is no patch.
  bool isEmpty() const { return patches_.empty(); }
  /// How many patches there are.
  std::size_t count() const { return patches_.size(); }
  /// The colour that a patch is filled with.
  QColor color(std::size_t patch) const { return patches_[patch].color; }
  /// How many contours a patch has.
  std::size_t contourCount(std::size_t patch) const { return lastContour(patch) - patches_[patch].firstContour; }
  /// The corners of a contour, the first one once.
  std::span<const QPointF> contour(std::size_t patch, std::size_t contour) const;
  /// A patch as a path, which is filled under the non-zero winding rule.
  Path path(std::size_t patch) const;

private:
  struct Patch {
    QColor color;
    std::size_t firstContour;
  };
  std::size_t lastContour(std::size_t patch) const {
    return patch + 1 < patches_.size() ? patches_[patch + 1].firstContour : ends_.size();
  }

  std::vector<Patch> patches_;
  std::vector<std::size_t> ends_; // of the contours, in points_
  std::vector<QPointF> points_;
};

} // namespace xov
