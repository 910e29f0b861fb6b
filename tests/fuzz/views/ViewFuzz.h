#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace xov::fuzz {

/// More than this no view draws, whatever its limits and options are: what a host hands it to be named, such as 60
/// labels of a map and 300 captions, is a small part of it.
inline constexpr std::size_t kMostTexts = 3000;
inline constexpr std::size_t kMostItems = 20000;

/// Draws one of the views of these names, chosen by the first byte, as the other bytes say: size, data, options and
/// the part that is shown. It is recorded, drawn into a picture and onto paper, and asked about places.
void drawAnyOf(std::span<const char* const> names, std::span<const std::uint8_t> bytes);

} // namespace xov::fuzz
