#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/io/picks/PickFiles.h"

namespace xov {

/// Reads the picks of a QuakeML document.
Result<PickFile> readQuakeMlPicks(QByteArrayView text, const QString& name);

/// The document as writePicks() writes it; `event` may be null.
Result<QByteArray> quakeMlOf(const PickArray& picks, const Hypocentre* event, const QString& name);

/// The id as a resource identifier of QuakeML: itself where it is one, else one with its characters below smi:local.
QString resourceId(const QString& id);

} // namespace xov
