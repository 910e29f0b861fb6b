#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRect>

#include <optional>
#include <vector>

namespace xov {

/// Frames, ticks and marker lines that run along the pixel grid, as whole device pixels: a line of width 1 on the
/// border between two pixels would otherwise become two grey ones. Returns nothing when a piece of `deviceShape`
/// (device pixels) is not straight along x or y, or when the line is wider than kCrispWidthLimit pixels. Lines keep
/// at least one pixel, and those on the outer edge of a picture of `pictureSize` pixels stay inside it.
std::optional<std::vector<QRect>> crispLines(const QPainterPath& deviceShape, double deviceWidth, QSize pictureSize);

/// Wider lines show their position well enough with soft edges.
inline constexpr double kCrispWidthLimit = 4.0;

} // namespace xov
