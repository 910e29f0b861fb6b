#include "XOV_Graphics/colour/CategoryColors.h"

#include <array>

namespace xov {

namespace {

constexpr std::array<std::uint32_t, kCategoryColors> kColors = {
    0x000000, 0xd55e00, 0x0072b2, 0x009e73, 0xcc79a7, 0x56b4e9, 0xe69f00,
};

} // namespace

std::uint32_t categoryColor(std::size_t index) { return kColors[index % kCategoryColors]; }

} // namespace xov
