#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/base/WholeFile.h"

#include <QFile>

namespace xov {

/// Opens a file for reading, whatever bytes its name is made of (FileName.h).
Status openByName(QFile& file, QIODevice::OpenMode mode);

/// Writes a file whose name holds bytes that are not UTF-8, whole or not at all.
Status writeByteName(const QString& path, const FileContents& contents);

} // namespace xov
