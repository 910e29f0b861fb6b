#pragma once

#include <cstdint>
#include <span>

namespace xov::fuzz {

/// Draws one of the views of these names, chosen by the first byte, as the other bytes say: size, data, options and
/// the part that is shown. It is recorded, drawn into a picture and onto paper, and asked about places.
void drawAnyOf(std::span<const char* const> names, std::span<const std::uint8_t> bytes);

} // namespace xov::fuzz
