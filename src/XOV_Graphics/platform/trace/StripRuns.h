#pragma once

#include "XOV_Graphics/platform/trace/TraceFineness.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <functional>
#include <vector>

namespace xov {

/// Draws one strip with that fineness or more, and leaves it as it suits the next one.
using StripDrawing = std::function<void(TraceStrip& strip, TraceFineness& fineness)>;

/// Draws strips of a picture on several threads: as many as `columns` holds from strip.left on, all as wide as
/// `strip` but the last one. Each thread has a drawing of its own from `makeDrawing`.
///
/// The first strip settles the fineness that the others begin with. They are drawn in runs, along which it goes from
/// strip to strip; where runs begin and end depends on nothing but the number of strips. So a picture is the same
/// whoever draws its strips.
void drawStrips(TraceStrip strip, int columns, const TraceFineness& start,
                const std::function<StripDrawing()>& makeDrawing);

/// The lengths of the runs behind the first strip: short ones come last, so that all threads end at about the same
/// time.
std::vector<int> runLengths(int strips);

} // namespace xov
