#include "XOV_Graphics/views/seismic/TraceWindow.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>

namespace xov {

TraceWindow windowStartingAtLimit(const SeismogramRecord& record, float xmin, float xmax) {
  const float delta = record.delta();
  TraceWindow window{0, record.npts(), record.b()};
  if (record.b() < xmin) {
    window.first = towardZero((xmin - record.b()) / delta);
    window.firstTime = xmin;
  }
  if (record.e() > xmax) {
    const int end = towardZero((xmax - xmin) / delta + float(window.first));
    window.last = std::min<std::int64_t>(window.last, end);
  }
  return window;
}

TraceWindow windowBetweenLimits(const SeismogramRecord& record, float xmin, float xmax) {
  const float b = record.b();
  const float delta = record.delta();
  TraceWindow window;
  window.first = std::max(0, towardZero((xmin - b) / delta));
  window.last = std::min(record.npts(), towardZero((xmax - b) / delta));
  window.firstTime = delta * float(window.first) + b;
  return window;
}

} // namespace xov
