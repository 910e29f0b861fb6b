#pragma once

#include <utility>

namespace xov::cli {

/// Something that a thread has while this lives, such as a listener: every thread has one of its own, at first an
/// empty one.
template <typename Value>
class ThreadScope {
public:
  explicit ThreadScope(Value value) : before_(std::exchange(current(), std::move(value))) {}
  ~ThreadScope() { current() = std::move(before_); }
  ThreadScope(const ThreadScope&) = delete;
  ThreadScope& operator=(const ThreadScope&) = delete;

  static Value& current() {
    thread_local Value value{};
    return value;
  }

private:
  Value before_;
};

} // namespace xov::cli
