#include "XOV_Graphics/base/DescriptorDevice.h"

#ifdef Q_OS_UNIX

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace xov {

namespace {

constexpr qsizetype kBufferBytes = qsizetype(1) << 16;
constexpr qint64 kMostAtOnce = qint64(1) << 30; // what every system takes in one call
constexpr int kMostStalls = 10'000;             // in a row

} // namespace

DescriptorDevice::DescriptorDevice(int descriptor) : descriptor_(descriptor) {
  buffer_.reserve(kBufferBytes);
  open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

bool DescriptorDevice::flush() {
  const bool arrived = failure_ == 0 && handOver(buffer_.constData(), buffer_.size());
  buffer_.resize(0);
  return arrived;
}

qint64 DescriptorDevice::readData(char* /*data*/, qint64 /*size*/) { return -1; }

qint64 DescriptorDevice::writeData(const char* data, qint64 size) {
  if (buffer_.size() + size > kBufferBytes && !flush()) return -1;
  if (size >= kBufferBytes) return handOver(data, size) ? size : -1;
  if (failure_ != 0) return -1;
  buffer_.append(data, size);
  return size;
}

// The system may take a part at a time, and be interrupted. A pipe that does not block is waited for.
bool DescriptorDevice::handOver(const char* data, qint64 size) {
  int stalls = 0;
  while (size > 0 && failure_ == 0) {
    const ssize_t taken = ::write(descriptor_, data, std::size_t(std::min(size, kMostAtOnce)));
    if (taken > 0) {
      data += taken;
      size -= taken;
      stalls = 0;
      continue;
    }
    const int reason = taken == 0 ? EIO : errno;
    const bool mayPass = (reason == EINTR || reason == EAGAIN) && ++stalls < kMostStalls;
    if (!mayPass) failure_ = reason;
    if (mayPass && reason == EAGAIN) {
      pollfd ready = {descriptor_, POLLOUT, 0};
      ::poll(&ready, 1, -1);
    }
  }
  if (failure_ != 0) setErrorString(qt_error_string(failure_));
  return failure_ == 0;
}

} // namespace xov

#endif
