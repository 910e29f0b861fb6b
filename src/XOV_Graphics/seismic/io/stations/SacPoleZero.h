#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/StationInventory.h"

#include <QByteArrayView>

namespace xov {

/// Whether a text begins as a SAC file of poles and zeros does: with a comment of an asterisk or one of its three
/// words.
bool isSacPoleZero(QByteArrayView text);

/// Reads the blocks of such a file. ZEROS and POLES are followed by their number, at most 500, and by a line of real
/// and imaginary part for each that does not lie at 0; CONSTANT by the factor. What a block lacks is none, or 1. A
/// line that is nothing of this is refused with its number, and so are more than 20 000 blocks.
Result<StationInventory> parseSacPoleZero(QByteArrayView text, const QString& name);

} // namespace xov
