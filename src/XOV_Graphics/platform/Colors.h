#pragma once

#include <QColor>

namespace xov::colors {

// The named colours that the views draw with. QColor has constants of some of these names with other values
// (Qt::lightGray is 192/255), so views take them from here.
inline const QColor black = QColor::fromRgbF(0, 0, 0);
inline const QColor white = QColor::fromRgbF(1, 1, 1);
inline const QColor lightGray = QColor::fromRgbF(2.0f / 3, 2.0f / 3, 2.0f / 3);
inline const QColor gray = QColor::fromRgbF(0.5f, 0.5f, 0.5f);
inline const QColor darkGray = QColor::fromRgbF(1.0f / 3, 1.0f / 3, 1.0f / 3);
inline const QColor red = QColor::fromRgbF(1, 0, 0);
inline const QColor green = QColor::fromRgbF(0, 1, 0);
inline const QColor blue = QColor::fromRgbF(0, 0, 1);
inline const QColor yellow = QColor::fromRgbF(1, 1, 0);
inline const QColor orange = QColor::fromRgbF(1, 0.5f, 0);

} // namespace xov::colors
