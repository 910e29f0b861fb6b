#pragma once

#include "XOV_Graphics/base/FiniteSum.h"
#include "XOV_Graphics/seismic/SacFooter.h"
#include "XOV_Graphics/seismic/SacHeader.h"

#include <QChar>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace xov {

/// How samples lie in a file.
enum class SampleStorage : std::uint8_t {
  MiniSeed = 0,        ///< in records, which tell how
  LittleEndianSac = 1, ///< single-precision numbers one after the other
  BigEndianSac = 2,
};

/// Samples that lie together in a file: those of a miniSEED record, which begins at `offset`, or those of a SAC file,
/// the first of which lies there.
struct SamplePlace {
  std::int64_t offset = 0;
  std::int64_t count = 0;
};

/// A trace of a file without its samples: where they lie, and what they amount to.
struct ArchivedTrace {
  SacHeader header;
  SacFooter precise;
  std::vector<SamplePlace> places; ///< in the order of the samples
  std::int64_t sampleCount = 0;    ///< of all places; no more than a record may have
  FiniteSum sum;
  std::vector<float> lowest, highest; ///< of each whole block of a SampleIndex
};

/// What a file holds.
struct ArchiveContents {
  SampleStorage storage = SampleStorage::MiniSeed;
  std::vector<ArchivedTrace> traces;
  QStringList notes; ///< as of a SeismogramFile, with kFileName in place of the file's name
};

/// Stands for the name of a file, which another call may know by another one. No text of a format holds it.
inline constexpr QChar kFileName(0x1A);

} // namespace xov
