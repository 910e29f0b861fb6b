#pragma once

#include "XOV_Graphics/graphics/LinearAxis.h"

#include <ostream>

namespace xov {

// How failing tests show lines and labels.
inline void PrintTo(const AxisSegment& s, std::ostream* os) {
  *os << '(' << s.x1 << ", " << s.y1 << ")-(" << s.x2 << ", " << s.y2 << ')';
}
inline void PrintTo(const AxisLabel& label, std::ostream* os) {
  *os << '"' << label.text << "\" at (" << label.x << ", " << label.y << ')';
}

} // namespace xov
