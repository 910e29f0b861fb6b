#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/ArchiveContents.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QIODevice>

#include <cstdint>

namespace xov {

/// What tells a file from others, and from itself before it was written to.
struct ArchiveIdentity {
  std::int64_t size = 0;
  std::int64_t modifiedMs = 0; ///< since 1970
  std::uint32_t beginSum = 0;  ///< CRC-32C of the first 64 KiB
  bool operator==(const ArchiveIdentity&) const = default;
};

/// That of an open file, which is at its start afterwards.
ArchiveIdentity identityOf(QIODevice& device, std::int64_t modifiedMs);

/// A file of extremes: what was found in another file, so that this is opened without reading its samples. All
/// numbers are little-endian.
///
///      0   8  the letters XOVINDEX
///      8   4  version, 1
///     12   4  CRC-32C of all bytes from 16 on
///     16   8  size of the other file in bytes
///     24   8  when it was last written to, milliseconds since 1970
///     32   4  CRC-32C of its first 65536 bytes
///     36   4  how its samples are stored: 0 miniSEED, 1 SAC little-endian, 2 SAC big-endian
///     40   4  number of notes; then each as 4 bytes of its length and as many of UTF-8,
///             with U+001A in place of the other file's name
///      .   4  number of traces; then of each:
///             632  header, as in a binary SAC file
///             176  footer, as in a SAC file of version 7
///               8  number of places
///               8  sum of the finite samples, in double precision
///               8  number of finite samples
///              16  for each place: its offset in the other file, 8 bytes; how many samples lie there, 8 bytes
///               8  for each 256 samples: the lowest and the highest, in single precision, NaN where not all are
///               finite
///
/// Samples that fill no block of 256 at the end have no extremes here.
QByteArray extremesFileBytes(const ArchiveContents& contents, const ArchiveIdentity& identity);

/// Reads such a file; an error where it is damaged, of another version, or tells of another file than `identity`.
/// What it tells is within the bounds of that file, and nothing is allocated that its size does not warrant.
Result<ArchiveContents> parseExtremesFile(QByteArrayView bytes, const ArchiveIdentity& identity);

} // namespace xov
