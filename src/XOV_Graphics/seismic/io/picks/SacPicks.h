#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/picks/Pick.h"

#include <QStringList>

namespace xov {

/// Writes a SAC file, binary in either byte order and of header version 6 or 7, or alphanumeric, as a copy whose
/// picks are those of its channel among `picks` (isPickOf()): A and F, T0 to T9 with their labels KA, KF, KT0 to KT9,
/// placed as withPicks() does. All picks that the file had give way, none of its channel leaves none. All other bytes
/// stay as they are; of the alphanumeric form all lines on which no pick stands.
///
/// The copy appears whole or not at all; `target` may be the file itself. Gives notes, one line each, of picks that
/// have no room. Refuses a file without a reference time where there are picks of it, and what readSac() refuses.
XOV_EXPORT Result<QStringList> writeSacPicks(const QString& source, const QString& target,
                                             const PickArray& picks) noexcept;

} // namespace xov
