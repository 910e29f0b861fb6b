#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QByteArray>

namespace xov {

/// Reads a file of stations whole: at most 1 GiB of XML or 16 MiB of text.
Result<QByteArray> readStationFile(const QString& path);

} // namespace xov
