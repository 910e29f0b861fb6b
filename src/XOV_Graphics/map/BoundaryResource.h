#pragma once

#include "XOV_Graphics/map/BoundaryText.h"

#include <QString>

namespace xov {

/// readBirdBoundaries() or readTypedBoundaries().
using BoundaryReader = void (*)(const QByteArray& text, SegmentCollector& segments);

/// Reads the segments of a resource file. False, said in the log, when it is missing or cannot be read.
bool loadBoundaryResource(const QString& name, BoundaryReader read, SegmentCollector& segments);

} // namespace xov
