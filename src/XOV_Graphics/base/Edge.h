#pragma once

#include <cstdint>

namespace xov {

/// One of the two upright edges of a plot: the one that a scale counts from, or that stands for a known instant.
enum class Edge : std::uint8_t { Left, Right };

} // namespace xov
