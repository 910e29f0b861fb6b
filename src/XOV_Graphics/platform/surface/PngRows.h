#pragma once

#include "XOV_Graphics/platform/surface/PngColors.h"

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xov {

/// Makes rows of a PNG file of those of a picture: a filter's number and the filtered samples.
///
/// A filter takes from each sample what its neighbours let expect. The one is chosen that leaves the fewest places
/// where a row goes on otherwise than before: an even row or one like that above packs best. Where all of them leave
/// many, as in a photograph, it is the one whose samples are the least.
class PngRows {
public:
  /// Borrows the picture, as leastPngPixels() takes it.
  PngRows(const QImage& image, const PngPixels& pixels);

  /// Bytes of a row in the file.
  std::size_t rowBytes() const { return 1 + sampleBytes(); }

  /// Writes rows first <= y < end to `out`. Returns how many of them are like those of a photograph.
  int write(int first, int end, std::uint8_t* out);

private:
  using Row = std::vector<std::uint8_t>;

  std::size_t sampleBytes() const;
  void load(int y, Row& row) const;
  std::uint8_t chooseFilter(bool& isPhotograph);
  void store(const Row& row, std::uint8_t* out) const;

  const QImage& image_;
  const PngPixels& pixels_;
  PngPalette palette_;
  bool isWide_;      // 4 bytes a pixel, until they are stored
  std::size_t step_; // bytes to the pixel on the left
  Row row_, above_;
  std::vector<Row> filtered_; // by the filter's number
};

} // namespace xov
