#pragma once

#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedTraces.h"

namespace xov {

/// What becomes of samples.
enum class Samples : std::uint8_t {
  Kept,     ///< in the traces
  SummedUp, ///< tallies take their place: traces have none
  Located,  ///< the places where they lie: traces have none
};

/// Turns the records of an index into traces of a file at `path`. What cannot be decoded, or only with a doubt, and
/// what is there twice is counted in the index.
MiniSeedTraces assembleTraces(FileWindow& file, MiniSeedIndex& index, const QString& path, Samples samples);

/// What became of a record.
struct DecodedRecord {
  bool isDecoded = false;
  QString problem; ///< where it is not
  QString doubt;   ///< where something speaks against its samples
};

/// Decodes a record, whose bytes are given.
DecodedRecord decodeRecord(MiniSeedSamples& decoder, const IndexedRecord& record, QByteArrayView bytes,
                           std::span<float> samples);

/// Counts the losses of a record in the index.
void noteLosses(const IndexedRecord& record, const DecodedRecord& decoded, MiniSeedIndex& index);

} // namespace xov
