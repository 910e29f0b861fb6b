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

} // namespace xov
