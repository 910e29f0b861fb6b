#pragma once

#include <QString>

#include <XOV_Graphics/base/Result.h>
#include <optional>

class QSizeF;

namespace xov::cli {

/// The sides of plots, in points.
inline constexpr double kSmallestSide = 1;
inline constexpr double kLargestSide = 20000;

/// A length as a user writes it.
struct WrittenLength {
  double points = 0;
  bool hasUnit = false;
};

/// The length that a text such as "600", "16cm", "80mm", "6in" or "450pt" tells; points where it has no unit. Nothing
/// when it is none.
std::optional<WrittenLength> parsedLength(const QString& text);

/// Width and height of a plot in points. Refuses sides outside of kSmallestSide to kLargestSide, and a unit at one of
/// them only, which the other most likely was meant to have, too.
Result<QSizeF> parsedSize(const QString& width, const QString& height);

} // namespace xov::cli
