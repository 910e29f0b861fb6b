#pragma once

#include "Claims.h"

#include <cstdint>
#include <span>
#include <sys/mman.h>
#include <unistd.h>

namespace xov::fuzz {

/// A file in memory for readers that want a path: no disk slows the fuzzer down.
class MemoryFile {
public:
  MemoryFile() : descriptor_(memfd_create("in", 0)) { require(descriptor_ >= 0, "there is memory for a file"); }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void hold(std::span<const std::uint8_t> bytes) const {
    const bool held =
        ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, bytes.data(), bytes.size(), 0) == ssize_t(bytes.size());
    require(held, "there is memory for a file");
  }
  QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(descriptor_); }

private:
  int descriptor_;
};

} // namespace xov::fuzz
