#include "XOV_Graphics/base/MemoryReserve.h"

namespace xov {

MemoryReserve::MemoryReserve(std::size_t bytes) : bytes_(std::make_unique_for_overwrite<std::byte[]>(bytes)) {}

MemoryReserve::~MemoryReserve() = default;

MemoryReserve::MemoryReserve(MemoryReserve&& other) noexcept = default;

MemoryReserve& MemoryReserve::operator=(MemoryReserve&& other) noexcept = default;

void MemoryReserve::release() { bytes_.reset(); }

} // namespace xov
