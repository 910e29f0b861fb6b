#pragma once

#include <csignal>
#include <sys/resource.h>

namespace xov::testing {

/// Lets no file of the process grow beyond some bytes while it lives, as a full disk does; writing then fails with
/// "File too large".
class SmallFilesOnly {
public:
  explicit SmallFilesOnly(rlim_t most) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small = {most, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFilesOnly() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  SmallFilesOnly(const SmallFilesOnly&) = delete;
  SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;

private:
  rlimit before_ = {};
  void (*handler_)(int);
};

} // namespace xov::testing
