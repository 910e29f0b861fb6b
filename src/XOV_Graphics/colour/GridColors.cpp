#include "XOV_Graphics/colour/GridColors.h"

#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/colour/ColorIndex.h"

#include <algorithm>

namespace xov {

namespace {

// Cells are coloured in blocks, step by step: a block stays in the first cache, and the loops over one have a number
// of rounds that the compiler knows.
constexpr std::size_t kBlock = 256;
constexpr std::size_t kUnrolled = 16;
constexpr std::size_t kPart = 1 << 16; // cells that one thread colours together, whole blocks

using Places = std::array<std::uint16_t, kBlock>;
using Pixels = std::array<std::uint32_t, kBlock>;

constexpr int kRedShift = 16;
constexpr int kGreenShift = 8;
constexpr std::uint32_t kOpaque = 0xff000000;
constexpr std::uint32_t kAllColors = 0x00ffffff;

/// The pixel of each level, or of each row of the topography.
using PixelTable = std::array<std::uint32_t, kLevels>;

std::uint32_t pixelOf(const Rgb& color, bool inverted) {
  const std::uint32_t pixel = kOpaque | (std::uint32_t(color.red) << kRedShift) |
                              (std::uint32_t(color.green) << kGreenShift) | std::uint32_t(color.blue);
  return inverted ? pixel ^ kAllColors : pixel;
}

PixelTable pixelTable(const GridColoring& coloring) {
  PixelTable table{};
  if (coloring.meaning == CellMeaning::Elevation) {
    std::transform(kTopography.begin(), kTopography.end(), table.begin(),
                   [&](const TopoRow& row) { return pixelOf(row.color, coloring.inverted); });
    return table;
  }
  for (std::uint32_t level = 0; level < table.size(); ++level)
    table[level] = pixelOf(paletteColor(coloring.palette, level), coloring.inverted);
  return table;
}

/// Where colour components go.
struct PlanePointers {
  std::uint8_t* red = nullptr;
  std::uint8_t* green = nullptr;
  std::uint8_t* blue = nullptr;

  XOV_INLINE PlanePointers from(std::size_t first) const { return {red + first, green + first, blue + first}; }
};

/// Whole blocks of cells, and the pixels, the planes, or both, that they fill.
template <class Cell>
struct Work {
  explicit Work(const GridColoring& how) : coloring(how), band(bandWidth(how.nShades)), table(pixelTable(how)) {}

  GridColoring coloring;
  float band;
  PixelTable table;
  const Cell* cells = nullptr;
  std::size_t count = 0; ///< a multiple of kBlock
  std::uint32_t* pixels = nullptr;
  PlanePointers planes;
};

template <class Vector>
XOV_INLINE void loadCells(const float* cells, Vector& values) {
  loadVector(cells, values);
}
template <class Vector>
XOV_INLINE void loadCells(const std::int16_t* cells, Vector& values) {
  typename LanesWith<std::int16_t, kLanes<Vector>>::Vector shorts;
  loadVector(cells, shorts);
  values = XOV_CONVERT(Vector, shorts);
}

template <class Vector>
XOV_INLINE void storePlaces(const Vector& values, std::uint16_t* places) {
  using Shorts = typename LanesWith<std::uint16_t, kLanes<Vector>>::Vector;
  const auto integers = XOV_CONVERT(WordsOf<Vector>, values);
  storeVector(XOV_CONVERT(Shorts, integers), places);
}

template <class Vector, class Cell>
XOV_INLINE void findLevels(const Work<Cell>& work, const Cell* cells, Places& places) {
  for (std::size_t i = 0; i < kBlock; i += kLanes<Vector>) {
    Vector values;
    loadCells(cells + i, values);
    values -= work.coloring.minValue;
    values /= work.coloring.scaleFactor;
    toLevel(work.band, values);
    storePlaces(values, &places[i]);
  }
}

template <class Vector, class Cell>
XOV_INLINE void findMeters(const Cell* cells, Places& places) {
  for (std::size_t i = 0; i < kBlock; i += kLanes<Vector>) {
    Vector values;
    loadCells(cells + i, values);
    toMeterPlace(values);
    storePlaces(values, &places[i]);
  }
}

template <class Lookup>
XOV_INLINE void lookUp(const Places& places, const Lookup& lookup, std::uint32_t* pixels) {
  for (std::size_t i = 0; i < kBlock; i += kUnrolled) {
    for (std::size_t k = i; k < i + kUnrolled; ++k)
      pixels[k] = lookup(places[k]);
  }
}

/// Hides a number from the compiler, which would otherwise load many places at once into a vector and take them out
/// one by one.
XOV_INLINE void keepScalar([[maybe_unused]] std::size_t& place) {
#if defined(__GNUC__)
  asm("" : "+r"(place));
#endif
}

/// Colours kBlock cells.
template <class Vector, class Cell>
XOV_INLINE void colorBlock(const Work<Cell>& work, const Cell* cells, std::uint32_t* pixels) {
  Places places;
  const std::uint32_t* const table = work.table.data();
  if (work.coloring.meaning == CellMeaning::Elevation) {
    findMeters<Vector>(cells, places);
    const auto lookup = [table](std::size_t meter) XOV_INLINE_LAMBDA { return table[kRowOfMeter[meter]]; };
    lookUp(places, lookup, pixels);
  } else {
    findLevels<Vector>(work, cells, places);
    const auto lookup = [table](std::size_t level) XOV_INLINE_LAMBDA {
      keepScalar(level);
      return table[level];
    };
    lookUp(places, lookup, pixels);
  }
}

/// Takes one component out of kBlock pixels.
XOV_INLINE void takeComponent(const std::uint32_t* pixels, int shift, std::uint8_t* to) {
  for (std::size_t i = 0; i < kBlock; ++i)
    to[i] = std::uint8_t(pixels[i] >> shift);
}

template <class Vector, class Cell>
XOV_INLINE void colorCells(const Work<Cell>& work) {
  Pixels block;
  for (std::size_t first = 0; first < work.count; first += kBlock) {
    std::uint32_t* const pixels = work.pixels != nullptr ? work.pixels + first : block.data();
    colorBlock<Vector>(work, work.cells + first, pixels);
    if (work.planes.red == nullptr) continue;
    const PlanePointers planes = work.planes.from(first);
    takeComponent(pixels, kRedShift, planes.red);
    takeComponent(pixels, kGreenShift, planes.green);
    takeComponent(pixels, 0, planes.blue);
  }
}

template <class Vector>
XOV_INLINE void colorFloatsWith(const Work<float>& work) {
  colorCells<Vector>(work);
}
XOV_VECTOR_FUNCTION(void, colorFloats, (const Work<float>& work), (work))

template <class Vector>
XOV_INLINE void colorShortsWith(const Work<std::int16_t>& work) {
  colorCells<Vector>(work);
}
XOV_VECTOR_FUNCTION(void, colorShorts, (const Work<std::int16_t>& work), (work))

void run(const Work<float>& work) { colorFloats(work); }
void run(const Work<std::int16_t>& work) { colorShorts(work); }

/// Part of the work: `count` cells from `first` on, whole blocks.
template <class Cell>
Work<Cell> partOf(const Work<Cell>& work, std::size_t first, std::size_t count) {
  Work<Cell> part = work;
  part.cells += first;
  part.count = count;
  if (part.pixels != nullptr) part.pixels += first;
  if (part.planes.red != nullptr) part.planes = part.planes.from(first);
  return part;
}

/// The same in parts that threads share.
template <class Cell>
void runInParts(const Work<Cell>& work) {
  const std::size_t parts = (work.count + kPart - 1) / kPart;
  runTasks(int(parts), TaskStart::FirstAlone, [&work](int k) {
    const std::size_t first = std::size_t(k) * kPart;
    run(partOf(work, first, std::min(kPart, work.count - first)));
  });
}

/// What whole blocks leave over of a grid, filled up to a block of its own.
template <class Cell>
std::array<Cell, kBlock> paddedRest(std::span<const Cell> rest) {
  std::array<Cell, kBlock> block{};
  std::copy(rest.begin(), rest.end(), block.begin());
  return block;
}

template <class Cell>
void fill(std::span<const Cell> grid, const GridColoring& coloring, std::uint32_t* pixels,
          const PlanePointers& planes) {
  const std::size_t rest = grid.size() % kBlock;
  Work<Cell> work(coloring);
  work.cells = grid.data();
  work.count = grid.size() - rest;
  work.pixels = pixels;
  work.planes = planes;
  runInParts(work);
  if (rest == 0) return;
  const std::size_t end = work.count;
  const auto cells = paddedRest(grid.subspan(end, rest));
  Pixels block;
  work.cells = cells.data();
  work.count = kBlock;
  work.pixels = block.data();
  work.planes = {};
  run(work);
  if (pixels != nullptr) std::copy_n(block.begin(), rest, pixels + end);
  for (std::size_t i = 0; planes.red != nullptr && i < rest; ++i) {
    planes.red[end + i] = std::uint8_t(block[i] >> kRedShift);
    planes.green[end + i] = std::uint8_t(block[i] >> kGreenShift);
    planes.blue[end + i] = std::uint8_t(block[i]);
  }
}

template <class Cell>
void fillPlanes(std::span<const Cell> grid, const GridColoring& coloring, const ColorPlanes& planes,
                std::uint32_t* pixels) {
  const std::size_t count =
      std::min({grid.size(), planes.red.size(), planes.green.size(), planes.blue.size(), planes.alpha.size()});
  fill(grid.first(count), coloring, pixels, {planes.red.data(), planes.green.data(), planes.blue.data()});
  runTasks(int((count + kPart - 1) / kPart), TaskStart::FirstAlone, [&](int k) {
    const std::size_t first = std::size_t(k) * kPart;
    std::fill_n(planes.alpha.begin() + std::ptrdiff_t(first), std::min(kPart, count - first), std::uint8_t(kAlpha));
  });
}

template <class Cell>
void fillPixels(std::span<const Cell> grid, const GridColoring& coloring, std::span<std::uint32_t> pixels) {
  fill(grid.first(std::min(grid.size(), pixels.size())), coloring, pixels.data(), {});
}

} // namespace

void colorGridPlanes(std::span<const float> cells, const GridColoring& coloring, const ColorPlanes& planes) {
  fillPlanes(cells, coloring, planes, nullptr);
}

void colorGridPlanes(std::span<const std::int16_t> cells, const GridColoring& coloring, const ColorPlanes& planes) {
  fillPlanes(cells, coloring, planes, nullptr);
}

void colorGrid(std::span<const float> cells, const GridColoring& coloring, const ColorPlanes& planes,
               std::span<std::uint32_t> pixels) {
  fillPlanes(cells.first(std::min(cells.size(), pixels.size())), coloring, planes, pixels.data());
}

void colorGridPixels(std::span<const float> cells, const GridColoring& coloring, std::span<std::uint32_t> pixels) {
  fillPixels(cells, coloring, pixels);
}

void colorGridPixels(std::span<const std::int16_t> cells, const GridColoring& coloring,
                     std::span<std::uint32_t> pixels) {
  fillPixels(cells, coloring, pixels);
}

} // namespace xov
