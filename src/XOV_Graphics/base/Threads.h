#pragma once

#include "XOV_Graphics/base/Export.h"

namespace xov {

/// How many threads share one piece of work at most, the calling one among them: drawing a picture or a page, reading
/// a file, writing an image. From 1 to kMostThreads. Unless a host sets it, it is the environment variable
/// XOV_THREADS where that holds a number of threads, else the number of processors that the process may use.
XOV_EXPORT int threadCount();

/// Sets it from now on: 1 means that the library does everything on the calling thread and keeps no other one; 0 and
/// below that it is chosen as if it had never been set. More than kMostThreads count as that many. Any thread may
/// call.
///
/// Pictures, files and numbers are the same with every count. Views are still drawn from the user-interface thread
/// only. A process that forks may go on drawing in the child, which has threads of its own.
XOV_EXPORT void setThreadCount(int count);

inline constexpr int kMostThreads = 256; ///< more than these are not used, whatever is set

} // namespace xov
