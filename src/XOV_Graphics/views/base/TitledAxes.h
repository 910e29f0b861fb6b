#pragma once

#include <QRectF>
#include <QString>

namespace xov {

class XOVView;

// Around a plot with a title at each of its two axes, in points:
//
//        +-------------------------+
//        |           52            |
//        |      +-----------+      |
//        | left |   frame   |  24  |
//        |      +-----------+      |
//        |           60            |
//        +-------------------------+

inline constexpr float kTitledAxesFontSize = 14;
/// How far right of the view's left edge the middle of the left axis' title lies.
inline constexpr float kLeftTitlePlace = 32;

QRectF titledFrame(const QRectF& bounds, double left);

/// Draws the titles with the view's labels. An empty one of the bottom axis is left out.
void drawAxisTitles(XOVView& view, const QRectF& frame, const QString& bottom, const QString& left);

} // namespace xov
