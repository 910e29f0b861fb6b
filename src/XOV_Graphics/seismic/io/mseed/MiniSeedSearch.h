#pragma once

#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

namespace xov {

/// Reads and checks the header of a record of either version at the start of `bytes`, which are either the rest of
/// the file or kMiniSeedChainBytes; `remaining` is how many bytes the file has from here on.
MiniSeedFinding findAnyRecord(QByteArrayView bytes, qint64 remaining);

/// Where the next record of either version begins in `bytes` from `from` on, if one does, with its whole header. Else
/// the end.
qsizetype findMiniSeedStart(QByteArrayView bytes, qsizetype from);

/// Where another record begins inside of one, with which `bytes` begin: its length is wrong then. 0 where none does.
/// To be asked of a record of miniSEED 3 only when its check value is wrong; for the other's, `bytes` should go on by
/// the length of a record.
qsizetype findRecordInside(const MiniSeedRecord& record, QByteArrayView bytes);

} // namespace xov
