#include "XOV_Graphics/seismic/io/mseed/LibmseedMessages.h"

#include "XOV_Graphics/seismic/io/mseed/Libmseed.h"

#include <cstdio>

namespace xov {

namespace {

std::mutex& libraryMutex() {
  static std::mutex mutex;
  return mutex;
}

// The last that libmseed says while this thread uses it; null at other times.
thread_local QString* message = nullptr;

void keepDiagnostic(char* text) {
  if (message == nullptr) {
    std::fputs(text, stderr);
  } else {
    *message = QString::fromLatin1(text).simplified();
  }
}

void keepLog(char* text) {
  if (message == nullptr) std::fputs(text, stdout);
}

} // namespace

LibmseedMessages::LibmseedMessages() : lock_(libraryMutex()) {
  static std::once_flag once;
  std::call_once(once, [] { ms_loginit(keepLog, nullptr, keepDiagnostic, nullptr); });
  message = &text_;
}

LibmseedMessages::~LibmseedMessages() { message = nullptr; }

} // namespace xov
