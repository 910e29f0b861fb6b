#include "XOV_Graphics/base/PagedSamples.h"

#include <algorithm>
#include <bit>
#include <exception>
#include <functional>
#include <limits>
#include <mutex>
#include <utility>

#ifdef __unix__
#include <sys/mman.h>
#endif

namespace xov {

namespace {

constexpr std::int64_t kPage = 1024;      // samples: what the system gives in one piece
constexpr std::int64_t kPagesAChunk = 64; // the bits of a number
constexpr std::int64_t kChunk = kPage * kPagesAChunk;
constexpr std::size_t kPageBytes = kPage * sizeof(float);
constexpr std::size_t kUsualLimit = std::size_t(512) << 20;
constexpr std::size_t kLeastLimit = std::size_t(16) << 20;
// When room is made, a quarter more than needed, so that it is not made at every page.
constexpr std::size_t kSpareShare = 4;

std::uint64_t pagesBetween(std::int64_t first, std::int64_t last) {
  const std::uint64_t upToLast = last == kPagesAChunk ? ~std::uint64_t(0) : (std::uint64_t(1) << last) - 1;
  return upToLast & ~((std::uint64_t(1) << first) - 1);
}

#ifdef __unix__
float* reserve(std::int64_t count) {
  void* const place = mmap(nullptr, std::size_t(count) * sizeof(float), PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  return place == MAP_FAILED ? nullptr : static_cast<float*>(place);
}
/// Has the system put memory under pages that are going to be written, all at once: one by one, as they are touched,
/// takes several times as long. Refused, it is as before.
void fetch([[maybe_unused]] float* place, [[maybe_unused]] std::int64_t count) {
#ifdef MADV_POPULATE_WRITE
  madvise(place, std::size_t(count) * sizeof(float), MADV_POPULATE_WRITE);
#endif
}
void giveBack(float* place, std::int64_t count) { munmap(place, std::size_t(count) * sizeof(float)); }
void forget(float* place, std::int64_t count) { madvise(place, std::size_t(count) * sizeof(float), MADV_DONTNEED); }
#else
float* reserve(std::int64_t) { return nullptr; }
void fetch(float*, std::int64_t) {}
void giveBack(float*, std::int64_t) {}
void forget(float*, std::int64_t) {}
#endif

} // namespace

/// Keeps the pages of all paged samples within the memory that they may take.
class PageKeeper {
public:
  static PageKeeper& instance() {
    static PageKeeper keeper;
    return keeper;
  }

  std::mutex& mutex() { return mutex_; }
  std::uint64_t now() { return clock_.fetch_add(1, std::memory_order_relaxed); }

  // With the mutex held.
  std::size_t limit() const { return limit_; }
  void setLimit(std::size_t bytes) {
    limit_ = std::max(bytes, kLeastLimit);
    makeRoom(0);
  }
  std::size_t inUse() const { return inUse_; }
  void add(PagedSamples* samples) { all_.push_back(samples); }
  void remove(PagedSamples* samples) {
    for (const PagedSamples::Chunk& chunk : samples->chunks_)
      inUse_ -= std::size_t(std::popcount(chunk.present.load())) * kPageBytes;
    std::erase(all_, samples);
  }
  void forgetAll(PagedSamples& samples) {
    for (std::size_t chunk = 0; chunk < samples.chunks_.size(); ++chunk)
      inUse_ -= samples.drop(chunk);
  }

  /// Makes room for so many bytes more, if that can be, and counts them as taken.
  void take(std::size_t bytes) {
    if (inUse_ + bytes > limit_) makeRoom(bytes);
    inUse_ += bytes;
  }

private:
  struct Candidate {
    std::uint64_t lastHeld;
    PagedSamples* samples;
    std::size_t chunk;
  };

  void makeRoom(std::size_t bytes) {
    if (inUse_ + bytes <= limit_) return;
    std::vector<Candidate> candidates;
    for (PagedSamples* samples : all_) {
      for (std::size_t k = 0; k < samples->chunks_.size(); ++k) {
        const PagedSamples::Chunk& chunk = samples->chunks_[k];
        if (chunk.present.load() != 0 && chunk.holds.load() == 0)
          candidates.push_back({chunk.lastHeld.load(std::memory_order_relaxed), samples, k});
      }
    }
    std::ranges::sort(candidates, {}, &Candidate::lastHeld);
    const std::size_t wished = limit_ - std::min(limit_, bytes + limit_ / kSpareShare);
    for (const Candidate& candidate : candidates) {
      if (inUse_ <= wished) return;
      inUse_ -= candidate.samples->drop(candidate.chunk);
    }
  }

  std::mutex mutex_;
  std::atomic<std::uint64_t> clock_{0};
  std::vector<PagedSamples*> all_;
  std::size_t limit_ = kUsualLimit;
  std::size_t inUse_ = 0;
};

void setPagedSamplesLimit(std::size_t bytes) {
  const std::scoped_lock lock(PageKeeper::instance().mutex());
  PageKeeper::instance().setLimit(bytes);
}

std::size_t pagedSamplesLimit() {
  const std::scoped_lock lock(PageKeeper::instance().mutex());
  return PageKeeper::instance().limit();
}

std::size_t pagedSamplesInUse() {
  const std::scoped_lock lock(PageKeeper::instance().mutex());
  return PageKeeper::instance().inUse();
}

std::shared_ptr<PagedSamples> PagedSamples::make(std::int64_t count, Reader reader) {
  constexpr std::int64_t kMost = std::numeric_limits<std::ptrdiff_t>::max() / std::ptrdiff_t(sizeof(float)) - kChunk;
  if (count < 1 || count > kMost) return nullptr;
  float* const place = reserve(count);
  if (place == nullptr) return nullptr;
  return std::shared_ptr<PagedSamples>(new PagedSamples(place, count, std::move(reader)));
}

PagedSamples::PagedSamples(float* samples, std::int64_t count, Reader reader)
    : samples_(samples),
      count_(count),
      reader_(std::move(reader)),
      chunks_(std::size_t((count + kChunk - 1) / kChunk)) {
  const std::scoped_lock lock(PageKeeper::instance().mutex());
  PageKeeper::instance().add(this);
}

PagedSamples::~PagedSamples() {
  {
    const std::scoped_lock lock(PageKeeper::instance().mutex());
    PageKeeper::instance().remove(this);
  }
  giveBack(samples_, count_);
}

/// Visits the chunks that addresses lie in, with those of their pages.
template <typename Visit>
void PagedSamples::forEachChunk(const float* begin, const float* end, const Visit& visit) {
  const std::less<const float*> isBefore;
  if (!isBefore(begin, end) || !isBefore(samples_, end) || !isBefore(begin, samples_ + count_)) return;
  const std::int64_t first = isBefore(begin, samples_) ? 0 : (begin - samples_) / kPage;
  const std::int64_t last = ((isBefore(end, samples_ + count_) ? end - samples_ : count_) + kPage - 1) / kPage;
  for (std::int64_t page = first; page < last;) {
    const std::int64_t chunk = page / kPagesAChunk;
    const std::int64_t next = std::min(last, (chunk + 1) * kPagesAChunk);
    visit(std::size_t(chunk), pagesBetween(page - chunk * kPagesAChunk, next - chunk * kPagesAChunk));
    page = next;
  }
}

// A hold is counted before it is asked what is there, and a chunk is said to be gone before it is asked whether
// anybody holds it: one of the two sees the other.
void PagedSamples::hold(const float* begin, const float* end) {
  forEachChunk(begin, end, [this](std::size_t k, std::uint64_t pages) {
    Chunk& chunk = chunks_[k];
    chunk.holds.fetch_add(1);
    chunk.lastHeld.store(PageKeeper::instance().now(), std::memory_order_relaxed);
    if ((chunk.present.load() & pages) != pages) load(k, pages);
  });
}

void PagedSamples::letGo(const float* begin, const float* end) noexcept {
  forEachChunk(begin, end, [this](std::size_t k, std::uint64_t) { chunks_[k].holds.fetch_sub(1); });
}

void PagedSamples::load(std::size_t k, std::uint64_t wanted) {
  const std::scoped_lock lock(PageKeeper::instance().mutex());
  Chunk& chunk = chunks_[k];
  std::uint64_t missing = wanted & ~chunk.present.load();
  PageKeeper::instance().take(std::size_t(std::popcount(missing)) * kPageBytes);
  while (missing != 0) {
    const int first = std::countr_zero(missing);
    const int length = std::countr_one(missing >> first);
    const std::uint64_t pages = pagesBetween(first, first + length);
    const std::int64_t before = std::int64_t(k) * kChunk + first * kPage;
    read(before, std::min(before + length * kPage, count_));
    chunk.present.fetch_or(pages);
    missing &= ~pages;
  }
}

void PagedSamples::read(std::int64_t first, std::int64_t last) {
  const std::span<float> room(samples_ + first, std::size_t(last - first));
  if (last - first > kPage) fetch(room.data(), std::ssize(room));
  try {
    reader_(first, room);
    for (const Change& change : changes_)
      change(room);
  } catch (const std::exception&) {
    // Drawing goes on without them, as without those of a file that has gone.
    std::ranges::fill(room, std::numeric_limits<float>::quiet_NaN());
  }
}

/// Gives a chunk's memory back unless somebody holds it. How many bytes that were.
std::size_t PagedSamples::drop(std::size_t k) {
  Chunk& chunk = chunks_[k];
  const std::uint64_t present = chunk.present.exchange(0);
  if (present == 0) return 0;
  if (chunk.holds.load() != 0) {
    chunk.present.fetch_or(present);
    return 0;
  }
  const std::int64_t first = std::int64_t(k) * kChunk;
  forget(samples_ + first, std::min(kChunk, count_ - first));
  return std::size_t(std::popcount(present)) * kPageBytes;
}

void PagedSamples::addChange(Change change) {
  const std::scoped_lock lock(PageKeeper::instance().mutex());
  changes_.push_back(std::move(change));
  PageKeeper::instance().forgetAll(*this);
}

} // namespace xov
