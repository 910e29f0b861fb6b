#pragma once

#include "XOV_Graphics/graphics/AxisCodes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace xov {

/// The rectangle that axes are drawn around, in whole view points; top is the larger y.
struct AxisFrame {
  std::int16_t top = 0;
  std::int16_t left = 0;
  std::int16_t bottom = 0;
  std::int16_t right = 0;
};

/// How far from 0 the edges of a frame may lie, in view points: beyond, they wrap around.
inline constexpr double kAxisReach = 32767;

/// The frame with these edges, each cut off to a whole point and kept as 16 bits.
AxisFrame axisFrame(float left, float right, float top, float bottom);

enum class AxisDirection : std::uint8_t { X, Y };
enum class AxisLine : std::uint8_t {
  AtStart,
  AtEnd
}; ///< the left or lower edge of the frame, the right or upper one

/// What the layout of a linear axis follows from.
struct LinearAxisRequest {
  AxisDirection direction = AxisDirection::X;
  AxisFrame frame;
  AxisLine line = AxisLine::AtStart; ///< where a Y axis has its labels; X axes are the same for both
  AxisDetail detail = AxisDetail::Labels;
  int fontSize = 18;           ///< points; tick lengths, label offsets and the number of ticks follow from it
  float lower = 0;             ///< data value at the left or lower end
  float upper = 1;             ///< data value at the right or upper end
  float interval = 0;          ///< distance of major ticks in data units; 0 chooses one
  bool mayScaleLabels = false; ///< long labels may be divided by a power of ten
  bool minorTicks = true;
  bool invertSigns = false; ///< Y only: labels show the negated values
};

struct AxisSegment {
  float x1 = 0;
  float y1 = 0;
  float x2 = 0;
  float y2 = 0;
  bool operator==(const AxisSegment&) const = default;
};

/// A tick label and the point that it is justified about, in view points: centred on an X axis, ending at the point
/// on a Y axis.
struct AxisLabel {
  std::string text;
  int x = 0;
  int y = 0;
  bool operator==(const AxisLabel&) const = default;
};

/// A linear axis ready to be drawn.
struct LinearAxis {
  std::vector<AxisSegment> frame;
  std::vector<AxisSegment> ticks; ///< in drawing order
  std::vector<AxisLabel> labels;
  std::string suffix; ///< " x 10^+03" where the labels were divided by a power of ten, else empty
  float step = 0;     ///< distance of major ticks in data units
  int minorCount = 0; ///< secondary ticks between two major ones
  int majorCount = 0; ///< major ticks on the axis
};

/// More major ticks than this are not drawn: even the largest screen has no room for them.
inline constexpr int kMostMajorTicks = 5000;
/// Of more ticks than this none has a label, and of more than kFewTickLabels none where they are closer than
/// kClosestLabels points: nobody could read them, and texts take a thousand times as long as ticks.
inline constexpr int kMostTickLabels = 1000;
inline constexpr int kFewTickLabels = 100;
inline constexpr float kClosestLabels = 2;

/// Lays out the axis. Pure: the same request gives the same layout, bit for bit. Limits that are equal or not finite,
/// intervals that are not finite and those with more than kMostMajorTicks ticks give the frame alone. Without a tick
/// inside the limits there may still be secondary ticks before the first would-be tick.
LinearAxis layoutLinearAxis(const LinearAxisRequest& request);

} // namespace xov
