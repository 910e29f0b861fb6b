#pragma once

#include "XOV_Graphics/base/SampleSource.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

namespace xov::testing {

/// Samples that read as something else wherever they are not held: a picture drawn from one that nobody held differs.
class GuardedSamples : public SampleSource {
public:
  explicit GuardedSamples(const std::vector<float>& truth)
      : truth_(truth),
        shown_(truth.size(), kWrong),
        holds_(truth.size() / kPage + 1) {}

  const float* data() const { return shown_.data(); }

  void hold(const float* begin, const float* end) override { change(begin, end, 1); }
  void letGo(const float* begin, const float* end) noexcept override { change(begin, end, -1); }

  bool isEverythingLetGo() const {
    return std::ranges::all_of(holds_, [](int holds) { return holds == 0; });
  }
  /// The most samples that were held at the same time.
  std::size_t mostHeld() const { return mostHeld_ * std::size_t(kPage); }
  /// The share of all samples that somebody held at one time or another.
  double shareHeld() const { return double(std::ranges::count(wasHeld_, true)) / double(holds_.size()); }

private:
  static constexpr std::int64_t kPage = 64;
  static constexpr float kWrong = 1e6F;

  void change(const float* begin, const float* end, int by) {
    const auto count = std::int64_t(shown_.size());
    const std::int64_t first = std::clamp<std::int64_t>(begin - shown_.data(), 0, count);
    const std::int64_t last = std::clamp<std::int64_t>(end - shown_.data(), 0, count);
    const std::scoped_lock lock(mutex_);
    wasHeld_.resize(holds_.size());
    for (std::int64_t page = first / kPage; page * kPage < last; ++page) {
      const auto k = std::size_t(page);
      const bool wasHeld = holds_[k] > 0;
      holds_[k] += by;
      wasHeld_[k] = true;
      if (wasHeld == (holds_[k] > 0)) continue;
      wasHeld ? --held_ : ++held_;
      mostHeld_ = std::max(mostHeld_, held_);
      const auto from = page * kPage, to = std::min(count, (page + 1) * kPage);
      if (wasHeld)
        std::fill(shown_.begin() + from, shown_.begin() + to, kWrong);
      else
        std::copy(truth_.begin() + from, truth_.begin() + to, shown_.begin() + from);
    }
  }

  std::mutex mutex_;
  const std::vector<float>& truth_;
  std::vector<float> shown_;
  std::vector<int> holds_;
  std::vector<bool> wasHeld_;
  std::size_t held_ = 0; // pages
  std::size_t mostHeld_ = 0;
};

} // namespace xov::testing
