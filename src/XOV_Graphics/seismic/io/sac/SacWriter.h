#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <QIODevice>
#include <QSysInfo>

namespace xov {

/// How a SAC file is written.
struct XOV_EXPORT SacWriteOptions {
  /// How the file is laid out.
  enum class Form : std::uint8_t {
    BinaryVersion6, ///< what every program reads
    BinaryVersion7, ///< with a footer that keeps times and coordinates in double precision
    Alphanumeric,   ///< text; header version 6
  };
  /// Which of these.
  Form form = Form::BinaryVersion6;
  QSysInfo::Endian byteOrder = QSysInfo::ByteOrder; ///< of the binary forms
};

/// Writes a trace as a SAC file. The file appears whole or not at all: it is written beside its place and then moved
/// there. The header goes out as the record has it, apart from what must fit the samples: npts, nvhdr, iftype (time
/// series), leven (even), depmin, depmax and depmen (of the finite samples; unset when there are none). Refuses a
/// sample interval that no reader would accept.
XOV_EXPORT Status writeSac(const SacSeismogram& trace, const QString& path,
                           const SacWriteOptions& options = {}) noexcept;

/// The same into an open device; `name` stands for it in errors.
XOV_EXPORT Status writeSac(const SacSeismogram& trace, QIODevice& device, const QString& name,
                           const SacWriteOptions& options = {}) noexcept;

} // namespace xov
