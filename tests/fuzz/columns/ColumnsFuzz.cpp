// Whatever the bytes are, the reader of columns gives as many columns as were asked for, equally long, or one line of
// error. The first byte chooses what is asked for.

#include "apps/xov/inputs/ColumnFile.h"
#include "tests/fuzz/Claims.h"

#include <cstdint>

using namespace xov;

namespace {

const QStringList kWanted[] = {
    {QStringLiteral("1")},
    {QStringLiteral("1"), QStringLiteral("2")},
    {QStringLiteral("x"), QStringLiteral("Y")},
    {QStringLiteral("3"), QStringLiteral("depth km"), QStringLiteral("3")},
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const QStringList& wanted = kWanted[data[0] % std::size(kWanted)];
  const QByteArray text(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1);
  const Result<cli::ColumnData> found = cli::parseColumns(text, QStringLiteral("in"), wanted);
  if (!found) {
    fuzz::requireOneLine(found.error());
    return 0;
  }
  fuzz::require(found->columns.size() == std::size_t(wanted.size()), "each column that is wanted is there");
  fuzz::require(found->names.isEmpty() || found->names.size() == wanted.size(), "columns have names, or none");
  for (const std::vector<float>& column : found->columns)
    fuzz::require(column.size() == found->columns.front().size(), "columns are equally long");
  return 0;
}
