// Whatever a journal of picks holds, what it tells up to its first damaged line is read; each line gets its right
// check value first, or no fuzzer would come past it.

#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"
#include "XOV_Graphics/seismic/io/picks/PickJournal.h"
#include "tests/fuzz/MemoryFile.h"

#include <cstdint>

using namespace xov;

namespace {

QByteArray summed(QByteArrayView text) {
  constexpr int kHexadecimal = 16;
  constexpr qsizetype kDigits = 8;
  QByteArray all;
  TextLines lines(text);
  while (const std::optional<QByteArrayView> line = lines.next())
    all += QByteArray::number(crc32c(*line), kHexadecimal).rightJustified(kDigits, '0') + ' ' + line->toByteArray() +
           '\n';
  return all;
}

void readJournal(const fuzz::MemoryFile& file) {
  const Result<RecoveredPicks> found = PickJournal::read(file.path());
  fuzz::require(bool(found), "a journal is read as far as it goes", found.error());
  fuzz::require(found->notes.size() <= 1, "a journal is read up to its first damage");
  PickDocument document;
  for (const RecoveredPicks::Step& step : found->steps) {
    document.restore(step.id, step.pick);
    fuzz::require((document.find(step.id) != nullptr) == step.pick.has_value(), "a step is done");
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::MemoryFile file;
  file.hold({data, size});
  readJournal(file);
  const QByteArray right = summed(QByteArrayView(reinterpret_cast<const char*>(data), qsizetype(size)));
  file.hold({reinterpret_cast<const std::uint8_t*>(right.constData()), std::size_t(right.size())});
  readJournal(file);
  return 0;
}
