#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramFile.h"

#include <QByteArrayView>

namespace xov {

/// Reads a miniSEED file: records of versions 2 and 3, also of both, of any length and number of channels, in either
/// byte order and all encodings that hold samples (16- and 32-bit integers, 32- and 64-bit floats, Steim1, Steim2,
/// GEOSCOPE, CDSN, SRO, DWWSSN). Text records and those without samples are passed over, and so are the extra headers
/// of version 3.
///
/// A channel becomes as many records as it has unbroken pieces, in time order: a gap ends a piece, what overlaps
/// becomes pieces of their own, and a record that is in the file twice is taken once. Channels come in the order in
/// which they first appear. The pieces of a channel have one time axis: their reference time is the start of the
/// first piece, cut to the millisecond, and b says when a piece starts (also in double precision). Samples are single
/// precision, which 32-bit integers beyond 16777216 do not fit exactly.
///
/// A record without blockette 1000 is taken for Steim1 that ends where the next one begins. A record that fails its
/// checks is left out, and so are bytes between records; one whose compressed samples do not end at the value that it
/// states, or whose check value is not that of its bytes, is kept. The notes say how many and where the first one
/// was. When no record with samples can be read, the file is refused in one line. When options.channels selects none
/// of those in the file, no records are given, and a note names the channels that there are.
XOV_EXPORT Result<SeismogramFile> readMiniSeed(const QString& path,
                                               const SeismogramReadOptions& options = {}) noexcept;

/// Reads the contents of a miniSEED file from memory; `name` stands for the file in errors and notes. The records'
/// path() is empty.
XOV_EXPORT Result<SeismogramFile> parseMiniSeed(QByteArrayView bytes, const QString& name,
                                                const SeismogramReadOptions& options = {}) noexcept;

} // namespace xov
