#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

#include <QIODevice>

namespace xov {

/// Reads a QuakeML document from a device. A document that is not well-formed, has another root than <quakeml> or
/// declares entities is refused.
Result<EventFile> readQuakeMl(QIODevice& device, const QString& name);

} // namespace xov
