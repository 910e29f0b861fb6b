#pragma once

#include "XOV_Graphics/base/Lanes.h"

#include <gtest/gtest.h>

#include <vector>

namespace xov::testing {

/// The widths of vectors that this machine can run, narrowest first.
inline std::vector<VectorWidth> vectorWidths() {
  std::vector<VectorWidth> widths;
  for (const VectorWidth width : {VectorWidth::Baseline, VectorWidth::Avx2, VectorWidth::Avx512}) {
    if (width <= widestVectorWidth()) widths.push_back(width);
  }
  return widths;
}

inline const char* nameOf(VectorWidth width) {
  constexpr const char* kNames[] = {"baseline", "AVX2", "AVX-512"};
  return kNames[static_cast<int>(width)];
}

/// Vectors of one width for as long as this lives.
class HeldVectorWidth {
public:
  explicit HeldVectorWidth(VectorWidth width) { holdVectorWidth(width); }
  ~HeldVectorWidth() { holdVectorWidth(widestVectorWidth()); }
  HeldVectorWidth(const HeldVectorWidth&) = delete;
  HeldVectorWidth& operator=(const HeldVectorWidth&) = delete;
};

/// Calls `test` once with each width that this machine can run.
template <class Test>
void forEachVectorWidth(const Test& test) {
  for (const VectorWidth width : vectorWidths()) {
    SCOPED_TRACE(::testing::Message() << nameOf(width) << " vectors");
    const HeldVectorWidth held(width);
    test();
  }
}

} // namespace xov::testing
