#include "XOV_Graphics/base/LargePages.h"

#ifdef __linux__
#include <cstdint>
#include <sys/mman.h>
#endif

namespace xov {

#ifdef __linux__
void askForLargePages(const void* start, std::size_t bytes) {
  constexpr std::uintptr_t page = std::uintptr_t(2) << 20;
  const auto first = (reinterpret_cast<std::uintptr_t>(start) + page - 1) / page * page;
  const auto last = (reinterpret_cast<std::uintptr_t>(start) + bytes) / page * page;
  // Only whole pages, so that nothing else gets one. Refused, it is as before.
  if (last > first) madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}
#else
void askForLargePages(const void*, std::size_t) {}
#endif

} // namespace xov
