#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace xov {

/// Things that tasks work with one at a time, such as memory for what they find: no more are made than there are
/// threads at work.
template <typename Thing>
class Spares {
public:
  explicit Spares(std::function<Thing()> make) : make_(std::move(make)) {}

  /// One that nobody else has; it comes back here when the pointer goes, which must not outlive this.
  auto take() {
    const auto giveBack = [this](Thing* thing) {
      const std::lock_guard lock(mutex_);
      spare_.emplace_back(thing);
    };
    std::unique_ptr<Thing> thing;
    {
      const std::lock_guard lock(mutex_);
      if (!spare_.empty()) {
        thing = std::move(spare_.back());
        spare_.pop_back();
      }
    }
    if (!thing) thing = std::make_unique<Thing>(make_());
    return std::unique_ptr<Thing, decltype(giveBack)>(thing.release(), giveBack);
  }

private:
  std::function<Thing()> make_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<Thing>> spare_;
};

} // namespace xov
