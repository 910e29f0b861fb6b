#include "XOV_Graphics/seismic/io/mseed/SteimFrames.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace xov {

namespace {

constexpr qsizetype kFrameBytes = 64;
constexpr qsizetype kWordBytes = 4;
constexpr int kFrameWords = 16;
constexpr int kFirstSampleWord = 1;
constexpr int kIntegrationWords = 3; // of the first frame, with the word of marks: before its differences
constexpr int kMostPerWord = 7;
constexpr std::size_t kMostPerFrame = std::size_t(kFrameWords - 1) * kMostPerWord;

/// Sums go round at 32 bits, which signed numbers must not.
using Sum = std::uint32_t;

/// Fills a frame's samples from its differences, one word after the other. Where `values` ends is for the caller to
/// know: a frame never has more than kMostPerFrame.
class Sums {
public:
  Sums(std::int32_t* values, Sum last) : next_(values), last_(last) {}

  /// `Count` differences of `Bits` bits in the lowest bits of a word, the last one lowest.
  template <int Count, int Bits>
  void take(std::uint32_t word) {
    for (int i = 0; i < Count; ++i) {
      const std::uint32_t highest = word << (32 - Bits * (Count - i));
      last_ += Sum(std::int32_t(highest) >> (32 - Bits));
      *next_++ = std::int32_t(last_);
    }
  }

  std::int32_t* next() const { return next_; }
  Sum last() const { return last_; }

private:
  std::int32_t* next_;
  Sum last_;
};

template <bool isBigEndian, typename Number>
Number numberAt(const char* place) {
  return isBigEndian ? qFromBigEndian<Number>(place) : qFromLittleEndian<Number>(place);
}

/// A word of differences as it would be in the other version of Steim1: in the order of its differences.
template <bool isBigEndian>
std::uint32_t halvesInOrder(std::uint32_t word) {
  return isBigEndian ? word : word << 16 | word >> 16;
}

template <bool isBigEndian>
std::uint32_t bytesInOrder(std::uint32_t word) {
  return isBigEndian ? word : qbswap(word);
}

/// Takes a word with the mark `mark`; false when that stands for nothing.
template <SteimVersion version, bool isBigEndian>
bool takeWord(Sums& sums, std::uint32_t mark, std::uint32_t word) {
  if constexpr (version == SteimVersion::Steim1) {
    switch (mark) {
    case 0:
      return true;
    case 1:
      sums.take<4, 8>(bytesInOrder<isBigEndian>(word));
      return true;
    case 2:
      sums.take<2, 16>(halvesInOrder<isBigEndian>(word));
      return true;
    default:
      sums.take<1, 32>(word);
      return true;
    }
  } else {
    if (mark == 0) return true;
    switch (mark << 2 | word >> 30) {
    case 1U << 2:
    case 1U << 2 | 1:
    case 1U << 2 | 2:
    case 1U << 2 | 3:
      sums.take<4, 8>(bytesInOrder<isBigEndian>(word));
      return true;
    case 2U << 2 | 1:
      sums.take<1, 30>(word);
      return true;
    case 2U << 2 | 2:
      sums.take<2, 15>(word);
      return true;
    case 2U << 2 | 3:
      sums.take<3, 10>(word);
      return true;
    case 3U << 2:
      sums.take<5, 6>(word);
      return true;
    case 3U << 2 | 1:
      sums.take<6, 5>(word);
      return true;
    case 3U << 2 | 2:
      sums.take<7, 4>(word);
      return true;
    default:
      return false;
    }
  }
}

template <SteimVersion version, bool isBigEndian>
std::optional<std::int32_t> decode(QByteArrayView frames, std::span<float> samples) {
  if (frames.size() < kFrameBytes) return {};
  std::array<std::int32_t, kMostPerFrame> values; // NOLINT(*-member-init): filled before it is read
  const auto firstSample = numberAt<isBigEndian, Sum>(frames.data() + kFirstSampleWord * kWordBytes);
  Sum last = 0;
  std::size_t done = 0;
  for (qsizetype at = 0; at + kFrameBytes <= frames.size() && done < samples.size(); at += kFrameBytes) {
    const char* const frame = frames.data() + at;
    const auto marks = numberAt<isBigEndian, std::uint32_t>(frame);
    const std::size_t wanted = samples.size() - done;
    Sums sums(values.data(), last);
    for (int i = at == 0 ? kIntegrationWords : 1; i < kFrameWords; ++i) {
      const std::uint32_t mark = marks >> (2 * (kFrameWords - 1 - i)) & 3;
      if (takeWord<version, isBigEndian>(sums, mark, numberAt<isBigEndian, std::uint32_t>(frame + i * kWordBytes)))
        continue;
      // What lies behind the last sample does not matter.
      if (std::size_t(sums.next() - values.data()) >= wanted) break;
      return {};
    }
    const std::size_t held = std::size_t(sums.next() - values.data());
    if (held == 0) continue;
    // The first difference is not one between samples of this record.
    const Sum shift = done == 0 ? firstSample - Sum(values[0]) : 0;
    const std::size_t count = std::min(held, wanted);
    for (std::size_t i = 0; i < count; ++i)
      samples[done + i] = float(std::int32_t(Sum(values[i]) + shift));
    last = Sum(values[count - 1]) + shift;
    done += count;
  }
  if (done < samples.size()) return {};
  return std::int32_t(last);
}

template <SteimVersion version>
std::optional<std::int32_t> decode(bool isBigEndian, QByteArrayView frames, std::span<float> samples) {
  return isBigEndian ? decode<version, true>(frames, samples) : decode<version, false>(frames, samples);
}

} // namespace

std::optional<std::int32_t> decodeSteim(SteimVersion version, bool isBigEndian, QByteArrayView frames,
                                        std::span<float> samples) {
  return version == SteimVersion::Steim1 ? decode<SteimVersion::Steim1>(isBigEndian, frames, samples)
                                         : decode<SteimVersion::Steim2>(isBigEndian, frames, samples);
}

} // namespace xov
