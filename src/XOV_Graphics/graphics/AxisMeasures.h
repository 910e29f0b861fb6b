#pragma once

/// Lengths and offsets of axes, in font sizes.
namespace xov::axis_measures {

inline constexpr float kMajorTick = 0.75f;
inline constexpr float kMinorTickX = 0.375f;
inline constexpr float kMinorTickY = 0.5f;
inline constexpr float kLabelBelowX = 1.25f;     ///< tick labels of an X axis below its line
inline constexpr float kLabelBesideY = 0.2f;     ///< tick labels of a Y axis left of its line
inline constexpr float kLabelBelowTickY = 0.5f;  ///< and below their ticks
inline constexpr float kTitleBelowX = 2.5f;      ///< the axis label below the frame, or above it
inline constexpr float kTitleLeftY = 2.0f;       ///< the label of a left axis left of its line
inline constexpr float kTitleAboveY = 0.5f;      ///< and above the frame
inline constexpr float kTitleOfRightAxis = 3.5f; ///< the label of a right axis from the left edge of the frame

} // namespace xov::axis_measures
