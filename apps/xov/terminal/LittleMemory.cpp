#include "apps/xov/terminal/LittleMemory.h"

#include "apps/xov/terminal/Messages.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace xov::cli {

namespace {

// More than what any of the many small objects needs that libraries make without looking.
constexpr std::size_t kReserveBytes = std::size_t(4) << 20;

std::atomic<void*> reserve = nullptr;
std::terminate_handler formerTerminate = nullptr;

void handOutReserve() {
  void* const kept = reserve.exchange(nullptr);
  if (kept == nullptr) throw std::bad_alloc();
  std::free(kept);
}

void endInALine() {
  try {
    if (const std::exception_ptr thrown = std::current_exception()) std::rethrow_exception(thrown);
  } catch (const std::bad_alloc&) {
    // Without a buffer, and without what runs at the end of programs: both may want memory.
    std::fputs("xov: not enough memory\n", stderr);
    std::_Exit(int(ExitCode::Failed));
  } catch (...) { // the former handler says what it is
  }
  formerTerminate();
}

void keepReserve() {
  if (reserve != nullptr) return;
  void* none = nullptr;
  void* const kept = std::malloc(kReserveBytes);
  if (!reserve.compare_exchange_strong(none, kept)) std::free(kept);
}

} // namespace

void prepareForLittleMemory() {
  keepReserve();
  std::set_new_handler(handOutReserve);
  const std::terminate_handler former = std::set_terminate(endInALine);
  if (former != endInALine) formerTerminate = former;
}

} // namespace xov::cli
