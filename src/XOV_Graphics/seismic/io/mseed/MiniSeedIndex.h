#pragma once

#include "XOV_Graphics/base/FileWindow.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedPieces.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

#include <functional>

namespace xov {

/// Counts losses of one kind and keeps the first of them in the file.
struct LossTally {
  qint64 count = 0;
  qint64 firstOffset = -1;
  QString firstProblem;

  void add(qint64 offset, const QString& problem, qint64 amount = 1);
};

/// A record with samples and where it lies in the file. Files hold many of them: it has nothing twice.
struct IndexedRecord {
  qint64 offset = 0;
  MiniSeedSpan span;
  std::uint32_t channel = 0;
  SampleFormat format;
};

/// What a miniSEED file holds, by its headers.
struct MiniSeedIndex {
  std::vector<ChannelCodes> channels;   ///< those selected, as they first appear
  std::vector<ChannelCodes> passedOver; ///< those not selected, as they first appear
  std::vector<IndexedRecord> records;   ///< those of the selected channels that hold samples, by offset
  qint64 recordCount = 0;               ///< of all records, also damaged ones
  qint64 repeatedCount = 0;             ///< of records that the file holds already, as the assembly finds them
  LossTally damagedRecords;
  LossTally doubtfulRecords; ///< whose samples do not end as they say
  LossTally strayBytes;      ///< bytes that belong to no record
  bool isReadable = true;    ///< false when the device failed before its end
};

/// Gets each record of a selected channel that holds samples, with its bytes, in place of the index's records; false
/// ends the walk. The index's lists are filled up to that record.
using RecordSink = std::function<bool(const IndexedRecord& record, QByteArrayView bytes, MiniSeedIndex& index)>;

/// Walks through a file from record to record.
MiniSeedIndex indexMiniSeed(FileWindow& file, const ChannelPatterns& patterns, const RecordSink& sink = {});

} // namespace xov
