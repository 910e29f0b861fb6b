#pragma once

#include <QColor>

namespace xov::colors {

// The named colours that the views draw with. QColor has constants of some of these names with other values
// (Qt::lightGray is 192/255), so views take them from here.
/// Black.
inline const QColor black = QColor::fromRgbF(0, 0, 0);
/// White.
inline const QColor white = QColor::fromRgbF(1, 1, 1);
/// Two thirds of white.
inline const QColor lightGray = QColor::fromRgbF(2.0f / 3, 2.0f / 3, 2.0f / 3);
/// Half of white.
inline const QColor gray = QColor::fromRgbF(0.5f, 0.5f, 0.5f);
/// A third of white.
inline const QColor darkGray = QColor::fromRgbF(1.0f / 3, 1.0f / 3, 1.0f / 3);
/// Pure red.
inline const QColor red = QColor::fromRgbF(1, 0, 0);
/// Pure green.
inline const QColor green = QColor::fromRgbF(0, 1, 0);
/// Pure blue.
inline const QColor blue = QColor::fromRgbF(0, 0, 1);
/// Red and green.
inline const QColor yellow = QColor::fromRgbF(1, 1, 0);
/// Red and half of green.
inline const QColor orange = QColor::fromRgbF(1, 0.5f, 0);

} // namespace xov::colors
