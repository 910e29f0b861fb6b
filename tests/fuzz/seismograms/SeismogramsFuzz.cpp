// Whatever a file of seismograms holds: reading it, summing its samples up and listing what its headers say agree,
// and a server sends whole records of it.

#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/realtime/seedlink/ServedRecords.h"
#include "tests/fuzz/MemoryFile.h"

#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void requireLine(const QString& error) {
  require(!error.isEmpty() && !error.contains(QLatin1Char('\n')), "an error is one line", error);
}

void serve(const QString& path, std::size_t size) {
  const Result<std::vector<ServedRecord>> records = readServedRecords(path);
  if (!records) return requireLine(records.error());
  std::size_t bytes = 0;
  for (const ServedRecord& record : *records)
    bytes += std::size_t(record.bytes.size());
  require(bytes <= size, "records are parts of the file");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::MemoryFile file;
  file.hold({data, size});
  const QString path = file.path();
  const Result<SeismogramFile> read = readSeismogramFile(path);
  const Result<SeismogramFileSummary> summary = summarizeSeismogramFile(path);
  const Result<SeismogramOutline> outline = outlineSeismogramFile(path);
  require(bool(read) == bool(summary), "what can be read can be summed up", read ? summary.error() : read.error());
  require(!read || outline, "what can be read can be listed");
  if (read) {
    require(read->records.size() == summary->records.size(), "a summary has the records of a reading");
    require(!seismogramFormatOf(path).isEmpty(), "a file that is read has a format");
  } else {
    requireLine(read.error());
  }
  serve(path, size);
  return 0;
}
