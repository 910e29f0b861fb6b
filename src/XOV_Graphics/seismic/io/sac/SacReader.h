#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <QByteArrayView>

#include <memory>

namespace xov {

/// Reads a SAC file: binary in either byte order, header version 6 or 7, or alphanumeric; the contents decide. All
/// header values, picks and labels come through; the footer of version 7 refines what it repeats.
///
/// Only evenly spaced time series are read. A spectrum, x-y data, uneven spacing, another header version, a sample
/// interval that is not above 0, and a file shorter than its header says are refused in one line that names the file,
/// the field and its byte offset or line, what was found and what was expected, such as
/// "trace.sac: npts at byte 316: found 900000000, but the file holds 1200 samples". Nothing is allocated before the
/// file's size warrants it.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> readSac(const QString& path) noexcept;

/// Reads the contents of a SAC file from memory; `name` stands for the file in errors. The record's path() is empty.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> parseSac(QByteArrayView bytes, const QString& name) noexcept;

} // namespace xov
