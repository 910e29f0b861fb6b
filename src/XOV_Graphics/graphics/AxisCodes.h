#pragma once

#include <cstdint>

namespace xov {

/// The edge of a frame that an axis runs along. The values are the codes `side` of the axis functions; Y axes have 1
/// and 2, X axes 3 and 4.
enum class AxisSide : std::uint8_t { Left = 1, Right = 2, Bottom = 3, Top = 4 };

/// How much of an axis is drawn, each with what the one before draws. The values are the codes `mode` of the axis
/// functions.
enum class AxisDetail : std::uint8_t { Frame = 0, Ticks = 1, Labels = 2 };

/// The distance of major ticks that stands for one that suits the length of the axis and the font size.
inline constexpr float kAutomaticInterval = 0;

} // namespace xov
