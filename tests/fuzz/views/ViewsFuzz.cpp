// Whatever the bytes are, views of one family draw it.

#include "tests/fuzz/Application.h"
#include "tests/fuzz/views/ViewFuzz.h"

namespace {

constexpr const char* kViews[] = {XOV_FUZZED_VIEWS};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  xov::fuzz::beginApplication();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  xov::fuzz::drawAnyOf(kViews, {data, size});
  return 0;
}
