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
  ~MemoryReserve();
  MemoryReserve(MemoryReserve&& other) noexcept;
  MemoryReserve& operator=(MemoryReserve&& other) noexcept;
  MemoryReserve(const MemoryReserve&) = delete;
  MemoryReserve& operator=(const MemoryReserve&) = delete;

  /// Gives the memory back, for the step that needs it.
  void release();

private:
  std::unique_ptr<std::byte[]> bytes_;
};

/// What a drawing finds free when it begins, in bytes: fonts and their outlines, and what else Qt takes without a
/// look.
inline constexpr std::size_t kMemoryToDraw = std::size_t(40) << 20;

/// Throws std::bad_alloc where there are not so many bytes now.
inline void needMemory(std::size_t bytes) { const MemoryReserve enough(bytes); }

} // namespace xov
