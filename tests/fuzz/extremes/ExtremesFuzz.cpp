// Whatever the bytes behind a right check value are, an index is refused in one line or tells what lies within its
// file, and is written again as it was.

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/seismic/io/archive/ExtremesFile.h"
#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"
#include "tests/fuzz/Claims.h"

#include <QtEndian>

#include <cstdint>
#include <cstring>
#include <limits>

using namespace xov;
using xov::fuzz::require;

namespace {

constexpr qsizetype kSumOffset = 12;
constexpr qsizetype kSummedFrom = 16;
constexpr qsizetype kIdentityBytes = 20;

/// The file that an index tells of, so that it is not refused for being of another one.
ArchiveIdentity identityIn(const QByteArray& bytes) {
  const char* const from = bytes.constData() + kSummedFrom;
  return {qFromLittleEndian<std::int64_t>(from), qFromLittleEndian<std::int64_t>(from + 8),
          qFromLittleEndian<std::uint32_t>(from + 16)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  ArchiveIdentity identity;
  if (bytes.size() >= kSummedFrom + kIdentityBytes) {
    identity = identityIn(bytes);
    const std::uint32_t sum = qToLittleEndian(crc32c(QByteArrayView(bytes).sliced(kSummedFrom)));
    std::memcpy(bytes.data() + kSumOffset, &sum, sizeof sum);
  }
  const Result<ArchiveContents> found = parseExtremesFile(bytes, identity);
  if (!found) {
    require(!found.error().isEmpty() && !found.error().contains(QLatin1Char('\n')), "an error is one line");
    return 0;
  }
  for (const ArchivedTrace& trace : found->traces) {
    require(trace.sampleCount > 0 && trace.sampleCount <= std::numeric_limits<int>::max(),
            "a record has room for all");
    require(std::int64_t(trace.lowest.size()) == trace.sampleCount / SampleIndex::kBlock,
            "each block has its extremes");
    for (const SamplePlace& place : trace.places)
      require(place.offset >= 0 && place.offset < identity.size && place.count > 0, "places lie in the file");
  }
  // Texts that are no UTF-8 become others.
  require(!found->notes.isEmpty() || extremesFileBytes(*found, identity) == bytes, "an index is written as it was");
  return 0;
}
