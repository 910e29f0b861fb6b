#pragma once

#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

namespace xov {

/// A miniSEED 3 record is a header of 40 bytes, the identifier of its source, extra headers as JSON, and samples. All
/// numbers of the header are little-endian, and it begins with "MS" and the number of the version:
///
///      0  "MS"                                  16  samples a second, or -1 times seconds a sample (double)
///      2  3                                     24  number of samples (4 bytes)
///      3  flags                                 28  check value: CRC-32C of the record with zeros here
///      4  nanoseconds of the start (4 bytes)    32  version of the publication
///      8  its year, 10 day of the year          33  length of the identifier
///     12  its hour, 13 minute, 14 second        34  length of the extra headers (2 bytes)
///     15  encoding                              36  length of the samples in bytes (4 bytes)
///
/// Encodings have the numbers of miniSEED 2; those in use are text, integers and floats (little-endian), Steim1 and
/// Steim2 (big-endian), and 100, bytes that are no samples. The identifier is "FDSN:" and network, station, location,
/// band, source and subsource with "_" between them: FDSN:IU_COLA_00_B_H_Z is IU.COLA.00.BHZ. The start is that of
/// the first sample with all corrections, so that nothing in the extra headers changes what is drawn; they are
/// passed over.
///
/// Source: FDSN, miniSEED 3 and Source Identifiers (docs.fdsn.org), version 3.

inline constexpr qsizetype kMiniSeed3HeaderBytes = 40;

/// Whether `bytes` begin as a record of miniSEED 3 does: with its letters and a time that can be.
bool beginsMiniSeed3Record(QByteArrayView bytes);

/// Reads and checks the header at the start of `bytes`, which hold all of the header and identifier that the file
/// does; `remaining` is how many bytes the file has from here on. The check value is left to checkValueProblem().
MiniSeedFinding findMiniSeed3Record(QByteArrayView bytes, qint64 remaining);

/// What is wrong with the check value of a record, the whole of `bytes`; empty when nothing is.
QString checkValueProblem(QByteArrayView bytes);

/// The codes of a source identifier; one of another kind is all station.
ChannelCodes sourceCodes(QByteArrayView identifier);

} // namespace xov
