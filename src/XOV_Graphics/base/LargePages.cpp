#include "XOV_Graphics/base/LargePages.h"

#ifdef __linux__
#include <memory>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace xov {

#ifdef __linux__
void askForLargePages(void* start, std::size_t bytes) {
  constexpr std::size_t page = std::size_t(2) << 20;
  // Only whole pages, so that nothing else gets one. Refused, it is as before.
  if (std::align(page, page, start, bytes) != nullptr) madvise(start, bytes / page * page, MADV_HUGEPAGE);
}

void offerToSystem(void* start, std::size_t bytes) {
  const auto page = std::size_t(sysconf(_SC_PAGESIZE));
  if (std::align(page, page, start, bytes) != nullptr) madvise(start, bytes / page * page, MADV_FREE);
}
#else
void askForLargePages(void*, std::size_t) {}
void offerToSystem(void*, std::size_t) {}
#endif

} // namespace xov
