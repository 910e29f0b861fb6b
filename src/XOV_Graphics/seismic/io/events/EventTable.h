#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// Whether the first row that is not empty names the columns of a table of events, or begins with a time.
bool isEventTable(QByteArrayView head);

/// Reads a table of events, UTF-8 text. A row ends with its line, also inside of quotes; a quote that is not closed
/// is a character like others.
Result<EventFile> readEventTable(QByteArrayView text, const QString& name);

} // namespace xov
