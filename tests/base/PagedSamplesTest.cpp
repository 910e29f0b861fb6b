#include "XOV_Graphics/base/PagedSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace xov;

namespace {

constexpr std::size_t kMegabyte = std::size_t(1) << 20;
constexpr std::int64_t kPage = 1024;

/// The limit as it was, after the test.
class HeldLimit {
public:
  ~HeldLimit() { setPagedSamplesLimit(before_); }

private:
  std::size_t before_ = pagedSamplesLimit();
};

/// Sample i is i; counts what is read.
struct Counting {
  std::int64_t samplesRead = 0;

  std::shared_ptr<PagedSamples> make(std::int64_t count) {
    return PagedSamples::make(count, [this](std::int64_t first, std::span<float> samples) {
      samplesRead += std::ssize(samples);
      for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = float(first + std::int64_t(i));
    });
  }
};

} // namespace

TEST(PagedSamples, comeWhenTheyAreHeldAPageAtATime) {
  Counting counting;
  const auto samples = counting.make(100000);
  ASSERT_NE(samples, nullptr);
  EXPECT_EQ(counting.samplesRead, 0);
  {
    const HeldSamples held(samples.get(), samples->data() + 5000, samples->data() + 5001);
    EXPECT_EQ(samples->data()[5000], 5000);
    EXPECT_EQ(counting.samplesRead, kPage);
  }
  const HeldSamples held(samples.get(), samples->data() + 4 * kPage, samples->data() + 6 * kPage);
  EXPECT_EQ(counting.samplesRead, 2 * kPage) << "one of them was there";
  EXPECT_EQ(samples->data()[6 * kPage - 1], float(6 * kPage - 1));
}

TEST(PagedSamples, comeAcrossChunksAndEndWhereTheyEnd) {
  Counting counting;
  const auto samples = counting.make(200001);
  const HeldSamples held(samples.get(), samples->data(), samples->data() + 200001);
  EXPECT_EQ(counting.samplesRead, 200001);
  for (const int i : {0, 65535, 65536, 131071, 131072, 200000})
    EXPECT_EQ(samples->data()[i], float(i));
}

TEST(PagedSamples, passOverOtherAddresses) {
  Counting counting;
  const auto samples = counting.make(1000);
  const std::vector<float> others(10);
  const HeldSamples elsewhere(samples.get(), others.data(), others.data() + 10);
  const HeldSamples nothing(samples.get(), samples->data() + 7, samples->data() + 7);
  const HeldSamples nowhere(samples.get(), nullptr, nullptr);
  EXPECT_EQ(counting.samplesRead, 0);
}

TEST(PagedSamples, takeNoMoreMemoryThanTheyMayAndForgetTheOldestFirst) {
  const HeldLimit limit;
  setPagedSamplesLimit(16 * kMegabyte);
  Counting counting;
  const std::int64_t perMegabyte = std::int64_t(kMegabyte / sizeof(float));
  const auto samples = counting.make(40 * perMegabyte);
  for (std::int64_t megabyte = 0; megabyte < 40; ++megabyte) {
    const float* const begin = samples->data() + megabyte * perMegabyte;
    const HeldSamples held(samples.get(), begin, begin + perMegabyte);
    EXPECT_EQ(begin[17], float(megabyte * perMegabyte + 17));
    EXPECT_LE(pagedSamplesInUse(), 16 * kMegabyte);
  }
  const std::int64_t once = counting.samplesRead;
  const auto hold = [&](std::int64_t megabyte) {
    const HeldSamples held(samples.get(), samples->data() + megabyte * perMegabyte,
                           samples->data() + (megabyte + 1) * perMegabyte);
  };
  hold(39);
  EXPECT_EQ(counting.samplesRead, once) << "the newest are there";
  hold(0);
  EXPECT_EQ(counting.samplesRead, once + perMegabyte) << "the oldest are not";
}

TEST(PagedSamples, stayWhileTheyAreHeldWhateverIsRead) {
  const HeldLimit limit;
  setPagedSamplesLimit(16 * kMegabyte);
  Counting counting;
  const auto samples = counting.make(std::int64_t(10 * kMegabyte));
  const HeldSamples kept(samples.get(), samples->data(), samples->data() + kPage);
  const float* const end = samples->data() + samples->count();
  for (const float* begin = samples->data(); begin < end; begin += 100000)
    const HeldSamples held(samples.get(), begin, std::min(begin + 100000, end));
  const std::int64_t read = counting.samplesRead;
  EXPECT_EQ(samples->data()[100], 100);
  const HeldSamples again(samples.get(), samples->data(), samples->data() + kPage);
  EXPECT_EQ(counting.samplesRead, read);
}

TEST(PagedSamples, giveTheirMemoryBackInTheEnd) {
  const std::size_t before = pagedSamplesInUse();
  {
    Counting counting;
    const auto samples = counting.make(100000);
    samples->hold(samples->data(), samples->data() + 100000); // for good
    EXPECT_GT(pagedSamplesInUse(), before);
  }
  EXPECT_EQ(pagedSamplesInUse(), before);
}

TEST(PagedSamples, areChangedAsTheyComeInTheOrderOfTheChanges) {
  Counting counting;
  const auto samples = counting.make(5000);
  { const HeldSamples held(samples.get(), samples->data(), samples->data() + 1); }
  samples->addChange([](std::span<float> some) {
    for (float& sample : some)
      sample += 1;
  });
  samples->addChange([](std::span<float> some) {
    for (float& sample : some)
      sample *= 2;
  });
  const HeldSamples held(samples.get(), samples->data(), samples->data() + 5000);
  EXPECT_EQ(samples->data()[0], 2);
  EXPECT_EQ(samples->data()[4999], 10000);
}

TEST(PagedSamples, areGapsWhereTheyCannotBeRead) {
  const auto samples =
      PagedSamples::make(10, [](std::int64_t, std::span<float>) { throw std::runtime_error("the disk has gone"); });
  const HeldSamples held(samples.get(), samples->data(), samples->data() + 10);
  EXPECT_TRUE(std::isnan(samples->data()[9]));
}

TEST(PagedSamples, areRightForSeveralThreadsThatMakeEachOthersGo) {
  const HeldLimit limit;
  setPagedSamplesLimit(16 * kMegabyte);
  Counting counting;
  const auto samples = counting.make(std::int64_t(8 * kMegabyte)); // twice as much as may be there
  std::vector<std::thread> threads;
  std::atomic<int> wrong{0};
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, thread] {
      std::uint32_t state = std::uint32_t(thread) + 1;
      for (int i = 0; i < 400; ++i) {
        state = state * 1664525U + 1013904223U;
        const std::int64_t first = std::int64_t(state % std::uint32_t(8 * kMegabyte - 70000));
        const HeldSamples held(samples.get(), samples->data() + first, samples->data() + first + 70000);
        for (const std::int64_t at : {first, first + 35000, first + 69999})
          wrong += samples->data()[at] == float(at) ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST(PagedSamples, areNoneWhereThereAreNoneOrTooMany) {
  EXPECT_EQ(PagedSamples::make(0, {}), nullptr);
  EXPECT_EQ(PagedSamples::make(-1, {}), nullptr);
  EXPECT_EQ(PagedSamples::make(std::numeric_limits<std::int64_t>::max(), {}), nullptr);
}
