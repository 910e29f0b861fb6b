#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>

namespace xov {

/// One scalar in, one colour out. The functions read only their arguments and constant tables, so that any thread may
/// call them. A result whose pointer is null is left out. To colour a whole grid, see colour/GridColors.h.

/// Palettes whose lightness grows evenly.
inline constexpr int kViridisPalette = 100;
inline constexpr int kCividisPalette = 101; ///< dark blue, grey, yellow: nearly the same with any colour vision
inline constexpr int kDawnPalette = 102;    ///< dark blue, green, ochre, rose

/// `value`, but 255 where it is above that.
XOV_EXPORT std::uint32_t validateColor(std::uint32_t value);

/// Writes the colour (0..255 each) of `value`, a number in 0..1, in one of the palettes; alpha is 1.
///
/// The value is first floored to the lower end of one of `nShades` equal bands and mapped onto the levels 0..255, in
/// single precision; below 0 it takes level 0, above 1 the level goes no further than 255. NaN takes level 0, and so
/// does every value when `nShades` is 0; a negative `nShades` counts as the positive one.
///
/// | palette         | 0         | 1    |                                              |
/// |-----------------|-----------|------|----------------------------------------------|
/// | 0               | white     | black| grey                                         |
/// | 1               | red       | blue | white in the middle                          |
/// | 2               | red       | blue | rainbow of 19 colours                        |
/// | 3               | blue      | red  | the same, the other way around               |
/// | 100             | dark violet | yellow | "viridis": lightness grows evenly         |
/// | 101             | dark blue | yellow | "cividis": the same, and nearly the same with any colour vision |
/// | 102             | dark blue | rose | "dawn": lightness grows evenly, through green and ochre |
/// | any other number| dark red  | blue | 16 of 19 colours, white in the middle of them|
XOV_EXPORT void getColorValues(int nShades, int palette, std::uint32_t* red, std::uint32_t* green,
                               std::uint32_t* blue, std::uint32_t* alpha, float value);

/// Writes the rainbow colour of `value`, 0 (blue) to 1 (red), with components in 0..1; alpha is 1. `nShades` is
/// ignored. Values outside of 0..1 take the colour of the nearer end, NaN that of 0.
XOV_EXPORT void getColorValuesFloat(int nShades, float* red, float* green, float* blue, float* alpha, float value);

/// Writes the colour (0..255 each) of an elevation in metres: blues below sea level, greens and browns above, then
/// greys up to white from 5000 m on. At a bound the colour of the higher side holds, so that 0 m is land. Alpha is 1;
/// `palette` is ignored. NaN is white.
XOV_EXPORT void getTopoColorValues(int palette, std::uint32_t* red, std::uint32_t* green, std::uint32_t* blue,
                                   std::uint32_t* alpha, float elevation);

} // namespace xov
