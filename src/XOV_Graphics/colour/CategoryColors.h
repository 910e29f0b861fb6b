#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstddef>
#include <cstdint>

namespace xov {

/// How many colours categoryColor() has before they come again.
inline constexpr std::size_t kCategoryColors = 7;

/// The colour of a kind of things among others (stations, components, types), 0xRRGGBB: black, vermilion, blue,
/// bluish green, reddish purple, sky blue, orange, and from the eighth kind on the same again. Any two of them can be
/// told apart with each kind of colour vision, and each stands out from white paper.
///
/// They are colours of M. Okabe and K. Ito, "Color Universal Design" (2002, revised 2008), who have a yellow besides,
/// which thin lines on white are lost in.
XOV_EXPORT std::uint32_t categoryColor(std::size_t index);

} // namespace xov
