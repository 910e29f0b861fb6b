// Whatever the bytes are, the readers of grids give a whole grid or one line of error. The first byte decides: below
// 16 the rest is a headerless grid of that many rows, else all of it is text.

#include "XOV_Graphics/grid/RawGrid.h"
#include "XOV_Graphics/grid/XyzGrid.h"
#include "tests/fuzz/Claims.h"

#include <cmath>
#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void requireWhole(const Result<Grid>& grid) {
  if (!grid) {
    fuzz::requireOneLine(grid.error());
    return;
  }
  require(grid->rows > 0 && grid->columns > 0, "a grid has cells");
  require(std::size_t(grid->rows) * std::size_t(grid->columns) == grid->values.size(), "every cell has a value");
  require(std::isfinite(grid->xmax - grid->xmin) && std::isfinite(grid->ymax - grid->ymin), "the extent is finite");
  require(grid->xmin <= grid->xmax && grid->ymin <= grid->ymax, "limits are in order");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  const QString name = QStringLiteral("in");
  if (size >= 2 && data[0] < 16) {
    RawGridLayout layout;
    layout.rows = data[0];
    layout.columns = data[1] % 8;
    layout.cell = (data[1] & 0x40) != 0 ? RawCell::Float32 : RawCell::Int16;
    layout.order = (data[1] & 0x80) != 0 ? ByteOrder::Big : ByteOrder::Little;
    requireWhole(parseRawGrid(bytes.sliced(2), layout, name));
  } else {
    requireWhole(parseXyzGrid(bytes, name));
  }
  return 0;
}
