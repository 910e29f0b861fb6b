#include "XOV_Graphics/platform/Patches.h"

#include "XOV_Graphics/platform/Path.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr std::size_t kFewestPoints = 3;

} // namespace

void Patches::begin(const QColor& color) { patches_.push_back({color, ends_.size()}); }

void Patches::addContour(std::span<const QPointF> points) {
  const auto isFinite = [](QPointF point) { return std::isfinite(point.x()) && std::isfinite(point.y()); };
  if (patches_.empty() || points.size() < kFewestPoints || !std::ranges::all_of(points, isFinite)) return;
  points_.insert(points_.end(), points.begin(), points.end());
  ends_.push_back(points_.size());
}

void Patches::clear() {
  patches_.clear();
  ends_.clear();
  points_.clear();
}

std::span<const QPointF> Patches::contour(std::size_t patch, std::size_t contour) const {
  const std::size_t index = patches_[patch].firstContour + contour;
  const std::size_t from = index > 0 ? ends_[index - 1] : 0;
  return {points_.data() + from, ends_[index] - from};
}

Path Patches::path(std::size_t patch) const {
  Path path;
  for (std::size_t i = 0; i < contourCount(patch); ++i) {
    const std::span<const QPointF> points = contour(patch, i);
    path.moveTo(points.front());
    for (const QPointF point : points.subspan(1))
      path.lineTo(point);
    path.close();
  }
  return path;
}

} // namespace xov
