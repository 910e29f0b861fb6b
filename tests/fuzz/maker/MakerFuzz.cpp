// Whatever the bytes are, what base maps and plate boundaries are made of is read whole or refused in one line. The
// first byte chooses the reader.

#include "apps/resources/BoundaryFiles.h"
#include "apps/resources/Netcdf.h"
#include "apps/resources/PostScriptLines.h"
#include "tests/fuzz/Claims.h"

#include <cmath>
#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void requireReason(const QString& error) {
  require(!error.isEmpty() && !error.contains(QLatin1Char('\n')) && error.size() < 600, "an error is a line", error);
}

void readGrid(const QByteArray& bytes) {
  const Result<maker::NetcdfGrid> grid = maker::readNetcdfGrid(bytes, "GRID");
  if (!grid) return requireReason(grid.error());
  require(grid->values.size() == grid->rows() * grid->columns(), "a grid is whole");
  require(grid->values.size() <= std::size_t(bytes.size()) / sizeof(float), "a grid is no larger than its file");
}

void readLines(const QByteArray& text) {
  const Result<maker::Segments> lines = maker::postScriptLines(text);
  if (!lines) return requireReason(lines.error());
  for (const maker::Segment& line : *lines) {
    for (const QPointF point : line)
      require(std::abs(point.x()) <= 180 && std::abs(point.y()) <= 90, "a line lies on the globe");
    for (const maker::Segment& piece : maker::cutAtMeridians(maker::thinned(line, 0.1)))
      require(piece.size() >= 2, "a piece can be drawn");
    for (const maker::Segment& piece : maker::inPieces(line, 2))
      require(piece.size() <= 2, "a piece has no more points than it may");
  }
}

void extract(const QByteArray& file) {
  const Result<QByteArray> text = maker::selfExtractedText(file);
  if (!text) return requireReason(text.error());
  readLines(*text);
}

// The same with the bytes as rows, which a fuzzer cannot pack by itself.
void extractPacked(const QByteArray& rows) {
  constexpr qsizetype kQtsLength = 4;
  extract("/FlateDecode /Columns 7 exec\n" + qCompress(rows).sliced(kQtsLength));
}

void import(const QByteArray& published) {
  const Result<QByteArray> text = maker::importedBoundaries(published);
  if (!text) return requireReason(text.error());
  require(!maker::areDerivedBoundaries(*text), "what was published is not derived");
}

constexpr void (*kReaders[])(const QByteArray&) = {readGrid, readLines, extract, extractPacked, import};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  kReaders[data[0] % std::size(kReaders)](QByteArray(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1));
  return 0;
}
