#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QIODevice>

namespace xov {

/// Writes records as miniSEED 2, one after the other, in data records of 512 bytes, big-endian (SEED Reference
/// Manual, version 2.4, chapter 8). Stretches of whole numbers are compressed as Steim 2, others stored in single
/// precision. Samples that are not finite are a gap. Starts are written to the microsecond (blockette 1001), rates as
/// the record has them (blockette 100).
///
/// The file appears whole or not at all. Refuses, in one line, a record without samples, an interval above 0 or a
/// reference time, and codes that are longer than the format's: network 2, station 5, location 2, channel 3. Records
/// must not be null.
XOV_EXPORT Status writeMiniSeed(const SeismogramArray& records, const QString& path) noexcept;

/// The same into an open device; `name` stands for it in errors.
XOV_EXPORT Status writeMiniSeed(const SeismogramArray& records, QIODevice& device, const QString& name) noexcept;

} // namespace xov
