#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <span>

namespace xov {

/// What the number in a cell stands for.
enum class CellMeaning : std::uint8_t {
  Value,     ///< a quantity that a palette shows: getColorValues() of (cell - minValue) / scaleFactor
  Elevation, ///< metres: getTopoColorValues() of the cell
};

/// How the cells of a grid become colours.
struct XOV_EXPORT GridColoring {
  CellMeaning meaning = CellMeaning::Value; ///< values on a scale, or elevations in metres
  int nShades = 64;                         ///< as in getColorValues()
  int palette = 0;                          ///< as in getColorValues()
  float minValue = 0;                       ///< the value at the palette's beginning
  float scaleFactor = 1;                    ///< how far above it the palette ends
  bool inverted = false;                    ///< 255 - component instead of each colour component; alpha stays
};

/// Where the components of a grid's colours go: one byte a cell and plane, as in a PlanarBitmap.
struct XOV_EXPORT ColorPlanes {
  std::span<std::uint8_t> red;   ///< 0 to 255, as long as there are cells
  std::span<std::uint8_t> green; ///< as red
  std::span<std::uint8_t> blue;  ///< as red
  std::span<std::uint8_t> alpha; ///< as red; opaque is 1
};

/// Colours a whole grid, cell by cell in the order in which they stand, exactly as the functions of
/// colour/ColorValues.h colour single values, but in a few times the time that copying the result takes. Where the
/// number of cells and that of bytes differ, the smaller one counts. The planes get the alpha of those functions, 1.
XOV_EXPORT void colorGridPlanes(std::span<const float> cells, const GridColoring& coloring,
                                const ColorPlanes& planes);
/// The same for whole numbers.
XOV_EXPORT void colorGridPlanes(std::span<const std::int16_t> cells, const GridColoring& coloring,
                                const ColorPlanes& planes);

/// The same as pixels 0xffRRGGBB, as QImage::Format_RGB32 has them. They are opaque: alpha is 255.
XOV_EXPORT void colorGridPixels(std::span<const float> cells, const GridColoring& coloring,
                                std::span<std::uint32_t> pixels);
/// The same for whole numbers.
XOV_EXPORT void colorGridPixels(std::span<const std::int16_t> cells, const GridColoring& coloring,
                                std::span<std::uint32_t> pixels);

/// Both at once, in one pass over the cells.
XOV_EXPORT void colorGrid(std::span<const float> cells, const GridColoring& coloring, const ColorPlanes& planes,
                          std::span<std::uint32_t> pixels);

} // namespace xov
