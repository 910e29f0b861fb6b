#pragma once

#include <cstddef>
#include <memory>

namespace xov {

/// Memory that is set aside for a step of another library that does not look whether it was given any: what comes
/// before has to do without it, and fails where there is too little for both. It is only reserved, and never touched.
class MemoryReserve {
public:
  /// Throws std::bad_alloc where there are not so many bytes.
  explicit MemoryReserve(std::size_t bytes);

  /// Gives the memory back, for the step that needs it.
  void release() { bytes_.reset(); }

private:
  std::unique_ptr<std::byte[]> bytes_;
};

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define XOV_MEMORY_IS_MAPPED 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(XOV_MEMORY_IS_MAPPED)
/// What is set aside of so many bytes. AddressSanitizer marks each byte that is given and given back, so that a
/// reserve takes more time than the page it is for; nor does memory end there by being refused.
constexpr std::size_t setAside(std::size_t bytes) { return bytes >> 10; }
#else
/// What is set aside of so many bytes: all of them.
constexpr std::size_t setAside(std::size_t bytes) { return bytes; }
#endif

/// What a drawing finds free when it begins, in bytes: fonts and their outlines, and what else Qt takes without a
/// look.
inline constexpr std::size_t kMemoryToDraw = setAside(std::size_t(40) << 20);

/// Throws std::bad_alloc where there are not so many bytes now.
inline void needMemory(std::size_t bytes) { const MemoryReserve enough(bytes); }

} // namespace xov
