#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/SeismogramSummary.h"

#include <QByteArrayView>
#include <QIODevice>
#include <QSysInfo>

#include <memory>
#include <optional>

namespace xov {

/// The binary form of a SAC file: the header (632 bytes), npts four-byte floats, and for header version 7 the footer
/// (176 bytes); all of it in one byte order, which the header version at byte 304 gives away. Bytes that follow are
/// ignored; where they are samples by their number, there is something to note.

/// The byte order of a binary SAC header: the one in which byte 304 holds a version, 1 to 7. Nothing when neither
/// does, or when `head` ends before.
std::optional<QSysInfo::Endian> sacByteOrder(QByteArrayView head);

/// Reads the binary form from a device at its start. Only what the device's size warrants is allocated.
Result<std::shared_ptr<SacSeismogram>> readSacBinary(QIODevice& device, const QString& name, const QString& path);

/// The same without ever holding more than a stretch of the samples.
Result<SeismogramSummary> summarizeSacBinary(QIODevice& device, const QString& name, const QString& path);

/// Where the samples of a binary SAC file lie, which are not read: npts of them from `offset` on.
struct SacLocation {
  SacHeader header;
  std::optional<SacFooter> footer;
  QSysInfo::Endian order = QSysInfo::ByteOrder;
  qint64 offset = 0;
};
Result<SacLocation> locateSacBinary(QIODevice& device, const QString& name);

/// What to note of a file that holds more than its header says, when the binary form has been read from the device;
/// empty when it does not.
QString excessNote(QIODevice& device, const SacHeader& header, const QString& name);

/// Writes the binary form, with the footer when header.nvhdr is 7. `header` goes out as it is.
Status writeSacBinary(QIODevice& device, const SacHeader& header, std::span<const float> samples,
                      const SacFooter& footer, QSysInfo::Endian order, const QString& name);

} // namespace xov
