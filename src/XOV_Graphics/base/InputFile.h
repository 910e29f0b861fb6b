#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QFile>

#include <span>

namespace xov {

/// Opens `file` for reading. Refuses what is not an ordinary file: a pipe would block, a device may have no end.
Status openForReading(QFile& file);

/// Fills `bytes` from the device's position on; false when the device ends or fails before they are full.
bool readFully(QIODevice& device, std::span<char> bytes);

} // namespace xov
