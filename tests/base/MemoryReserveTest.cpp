#include "XOV_Graphics/base/MemoryReserve.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace xov {
namespace {

TEST(MemoryReserve, isThereOrThrows) {
  MemoryReserve reserve(1 << 20);
  reserve.release();
  reserve.release();                                                // what is given back already
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // which end a program that asks for too much
  EXPECT_THROW(MemoryReserve(std::numeric_limits<std::size_t>::max() / 4), std::bad_alloc);
#endif
}

} // namespace
} // namespace xov
