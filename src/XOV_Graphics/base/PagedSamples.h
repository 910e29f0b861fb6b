#pragma once

#include "XOV_Graphics/base/SampleSource.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace xov {

/// How much memory all paged samples of this process may take together, in bytes; 512 MiB at first, and never less
/// than 16 MiB. Those that are held stay whatever it is, so that more may be taken for as long as they are.
XOV_EXPORT void setPagedSamplesLimit(std::size_t bytes);
/// The limit set last, in bytes.
XOV_EXPORT std::size_t pagedSamplesLimit();
/// How much they take now.
XOV_EXPORT std::size_t pagedSamplesInUse();

/// Samples at consecutive addresses of which only those are in memory that were read lately: pages of 1024 come when
/// they are held, and those that nobody has held for longest go when the memory is used up.
///
/// The addresses are reserved from the system, which backs no more than the pages that came.
class PagedSamples final : public SampleSource {
public:
  /// Fills a stretch of samples, the first of which has that number; NaN for what cannot be read. Called by one
  /// thread at a time.
  using Reader = std::function<void(std::int64_t first, std::span<float> samples)>;
  /// What is done to samples when they come.
  using Change = std::function<void(std::span<float>)>;

  /// Null where so many addresses are not to be had, as on systems without virtual memory.
  static std::shared_ptr<PagedSamples> make(std::int64_t count, Reader reader);
  ~PagedSamples() override;

  /// Where the samples lie, to be read only while they are held.
  const float* data() const { return samples_; }
  /// How many samples there are.
  std::int64_t count() const { return count_; }

  void hold(const float* begin, const float* end) override;
  void letGo(const float* begin, const float* end) noexcept override;

  /// Adds to what is done to samples when they come; those that are in memory are read again. Nobody may hold any.
  void addChange(Change change);

private:
  friend class PageKeeper;

  /// As many pages as there are bits that tell which of them have come.
  struct Chunk {
    std::atomic<std::uint64_t> present{0};
    std::atomic<std::uint32_t> holds{0};
    std::atomic<std::uint64_t> lastHeld{0};
  };

  PagedSamples(float* samples, std::int64_t count, Reader reader);

  template <typename Visit>
  void forEachChunk(const float* begin, const float* end, const Visit& visit);
  void load(std::size_t chunk, std::uint64_t wanted);
  void read(std::int64_t first, std::int64_t last);
  std::size_t drop(std::size_t chunk);

  float* samples_;
  std::int64_t count_;
  Reader reader_;
  std::vector<Change> changes_;
  std::vector<Chunk> chunks_;
};

} // namespace xov
