#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"

#include <QStringList>

namespace xov {

/// What the user should know of a file called `name`: losses, doubts, and that no channel is selected where
/// `isEmpty`, which is for files without a trace to give.
QStringList miniSeedNotes(const MiniSeedIndex& index, bool isEmpty, const QString& name);

/// Whether a file without traces has none because its channels are not selected.
bool isPassedOver(const MiniSeedIndex& index);

/// Whether a file was gone through to its end; else the system's reason.
Status indexStatus(const MiniSeedIndex& index, const QIODevice& device, const QString& name);

/// Why a file has no traces.
Error nothingRead(const MiniSeedIndex& index, const QString& name);

} // namespace xov
