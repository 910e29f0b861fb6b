#pragma once

#include "XOV_Graphics/base/Threads.h"

namespace xov {

/// Numbers of threads that everything is the same with.
inline constexpr int kThreadCounts[] = {1, 2, 4, 16};

/// Sets the number of threads until it goes.
class WithThreads {
public:
  explicit WithThreads(int count) { setThreadCount(count); }
  WithThreads(const WithThreads&) = delete;
  WithThreads& operator=(const WithThreads&) = delete;
  ~WithThreads() { setThreadCount(0); }
};

} // namespace xov
