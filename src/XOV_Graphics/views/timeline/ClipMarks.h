#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QLineF>

#include <vector>

namespace xov {

/// Lines along the limits that a trace is held at, where its samples lie beyond them: those less than 2 points apart
/// are one, and none is shorter than 3 points. Nothing for a trace without both limits. Samples must have even or
/// uniform times.
std::vector<QLineF> clipMarks(const Trace& trace);

} // namespace xov
