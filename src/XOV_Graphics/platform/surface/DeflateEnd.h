#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// Where a deflate stream ends, in bits from its start.
struct DeflateEnd {
  std::size_t lastBlock = 0; ///< the bit that says that the last block is the last one
  std::size_t end = 0;       ///< the first bit behind the last block
};

/// Walks through the blocks of a stream (RFC 1951) without unpacking it; nothing where it is damaged or cut off.
std::optional<DeflateEnd> findDeflateEnd(std::span<const std::uint8_t> stream);

} // namespace xov
