#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QFile>

namespace xov {

/// Opens a file for reading, whatever bytes its name is made of (FileName.h).
Status openByName(QFile& file, QIODevice::OpenMode mode);

} // namespace xov
