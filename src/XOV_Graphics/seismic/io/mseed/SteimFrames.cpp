#include "XOV_Graphics/seismic/io/mseed/SteimFrames.h"

#include "XOV_Graphics/base/Lanes.h"

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
bool takeDifferences(Sums& sums, std::uint32_t mark, std::uint32_t word) {
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

/// What the words of a kind hold.
struct WordKind {
  int count = 0;
  int bits = 1;
};

constexpr int kKinds = 16;
constexpr int kNoKind = kMostPerWord + 1; // as a count, of words that stand for nothing

/// The kinds by the mark, times four, and the highest two bits of the word.
using WordKinds = std::array<WordKind, kKinds>;

constexpr WordKinds kSteim1Kinds = {{{0, 1},
                                     {0, 1},
                                     {0, 1},
                                     {0, 1},
                                     {4, 8},
                                     {4, 8},
                                     {4, 8},
                                     {4, 8},
                                     {2, 16},
                                     {2, 16},
                                     {2, 16},
                                     {2, 16},
                                     {1, 32},
                                     {1, 32},
                                     {1, 32},
                                     {1, 32}}};
constexpr WordKinds kSteim2Kinds = {{{0, 1},
                                     {0, 1},
                                     {0, 1},
                                     {0, 1},
                                     {4, 8},
                                     {4, 8},
                                     {4, 8},
                                     {4, 8},
                                     {kNoKind, 1},
                                     {1, 30},
                                     {2, 15},
                                     {3, 10},
                                     {5, 6},
                                     {6, 5},
                                     {7, 4},
                                     {kNoKind, 1}}};

/// How far decoding has come.
struct Progress {
  qsizetype frame = 0; ///< its first byte
  int word = kIntegrationWords;
  std::size_t done = 0; ///< samples
  Sum last = 0;         ///< the last of them
  bool isOdd = false;   ///< whether a word stands for nothing
};

std::uint32_t markOf(std::uint32_t marks, int word) { return marks >> (2 * (kFrameWords - 1 - word)) & 3; }

// In lanes, a word costs the same whatever it holds: its differences are moved to the upper end of a lane each, and
// back down with their signs. A branch for each kind, which nothing foretells in noise, costs three times as much.
constexpr int kWordLanes = 8;
using SumLanes = LanesWith<Sum, kWordLanes>::Vector;

struct LaneShifts {
  std::array<Sum, kWordLanes> up{};
  std::array<std::int32_t, kWordLanes> down{};
  int count = 0;
};
using KindShifts = std::array<LaneShifts, kKinds>;

constexpr KindShifts laneShifts(const WordKinds& kinds) {
  KindShifts all;
  for (std::size_t kind = 0; kind < all.size(); ++kind) {
    const auto [count, bits] = kinds[kind];
    all[kind].count = count;
    for (int lane = 0; lane < kWordLanes; ++lane) {
      // What is in the lanes behind the last difference does not matter.
      all[kind].up[std::size_t(lane)] = lane < count && count < kNoKind ? Sum(32 - bits * (count - lane)) : 0;
      all[kind].down[std::size_t(lane)] = 32 - bits;
    }
  }
  return all;
}

constexpr KindShifts kSteim1Shifts = laneShifts(kSteim1Kinds);
constexpr KindShifts kSteim2Shifts = laneShifts(kSteim2Kinds);

/// Makes each lane the sum of all up to it.
XOV_INLINE void sumUp(SumLanes& differences) {
  const SumLanes none{};
  differences += XOV_PICK(none, differences, 0, 8, 9, 10, 11, 12, 13, 14);
  differences += XOV_PICK(none, differences, 0, 1, 8, 9, 10, 11, 12, 13);
  differences += XOV_PICK(none, differences, 0, 1, 2, 3, 8, 9, 10, 11);
}

enum class Room : std::uint8_t {
  ForAny, ///< for whatever a word holds
  Less,   ///< for some of it, it may be
};

/// Takes big-endian words in lanes as long as there is that much room, up to one that stands for nothing.
template <Room kRoom>
XOV_INLINE void takeWordsInLanes(const KindShifts& kinds, QByteArrayView frames, std::span<float> samples,
                                 Progress& progress) {
  std::array<Sum, kWordLanes + 1> sums{}; // of no, one, two ... differences of a word
  for (; progress.frame + kFrameBytes <= frames.size(); progress.frame += kFrameBytes, progress.word = 1) {
    const char* const frame = frames.data() + progress.frame;
    const auto marks = qFromBigEndian<std::uint32_t>(frame);
    for (; progress.word < kFrameWords; ++progress.word) {
      const auto word = qFromBigEndian<std::uint32_t>(frame + progress.word * kWordBytes);
      const LaneShifts& kind = kinds[markOf(marks, progress.word) << 2 | word >> 30];
      const std::size_t room = samples.size() - progress.done;
      if (room < (kRoom == Room::ForAny ? std::size_t(kWordLanes) : 1) || kind.count == kNoKind) return;
      SumLanes up;
      Int8 down;
      loadVector(kind.up.data(), up);
      loadVector(kind.down.data(), down);
      const SumLanes upper = (SumLanes{} + word) << up;
      SumLanes all = XOV_SAME_BITS(SumLanes, XOV_SAME_BITS(Int8, upper) >> down);
      sumUp(all);
      const SumLanes values = all + progress.last;
      const Float8 numbers = XOV_CONVERT(Float8, XOV_SAME_BITS(Int8, values));
      auto count = std::size_t(kind.count);
      if constexpr (kRoom == Room::ForAny) {
        storeVector(numbers, samples.data() + progress.done);
      } else { // what lies behind the last sample does not matter
        std::array<float, kWordLanes> lanes{};
        storeVector(numbers, lanes.data());
        count = std::min(count, room);
        std::copy_n(lanes.data(), count, samples.data() + progress.done);
      }
      storeVector(all, sums.data() + 1);
      progress.last += sums[count];
      progress.done += count;
    }
  }
}

/// Takes big-endian words up to one that stands for nothing. The narrowest vectors have no shifts by lane, and take
/// none.
template <class Vector>
XOV_INLINE void takeWordsWith(const KindShifts& kinds, QByteArrayView frames, std::span<float> samples,
                              Progress& progress) {
  if constexpr (kLanes<Vector> == kWordLanes) {
    Progress own = progress; // stays in registers, as what is reached by reference does not
    takeWordsInLanes<Room::ForAny>(kinds, frames, samples, own);
    takeWordsInLanes<Room::Less>(kinds, frames, samples, own);
    progress = own;
  }
}

XOV_VECTOR8_FUNCTION(void, takeWords,
                     (const KindShifts& kinds, QByteArrayView frames, std::span<float> samples, Progress& progress),
                     (kinds, frames, samples, progress))

/// Takes words one after the other to the end.
template <SteimVersion version, bool isBigEndian>
void takeFrames(QByteArrayView frames, std::span<float> samples, Progress& progress) {
  std::array<std::int32_t, kMostPerFrame> values; // NOLINT(*-member-init): filled before it is read
  for (; progress.frame + kFrameBytes <= frames.size() && progress.done < samples.size();
       progress.frame += kFrameBytes, progress.word = 1) {
    const char* const frame = frames.data() + progress.frame;
    const auto marks = numberAt<isBigEndian, std::uint32_t>(frame);
    Sums sums(values.data(), progress.last);
    const auto held = [&] { return std::size_t(sums.next() - values.data()); };
    for (int i = progress.word; i < kFrameWords; ++i) {
      const auto word = numberAt<isBigEndian, std::uint32_t>(frame + i * kWordBytes);
      if (takeDifferences<version, isBigEndian>(sums, markOf(marks, i), word)) continue;
      // What lies behind the last sample does not matter.
      progress.isOdd = held() < samples.size() - progress.done;
      break;
    }
    if (progress.isOdd) return;
    const std::size_t count = std::min(held(), samples.size() - progress.done);
    for (std::size_t i = 0; i < count; ++i)
      samples[progress.done + i] = float(values[i]);
    if (count > 0) progress.last = Sum(values[count - 1]);
    progress.done += count;
  }
}

/// The first difference of a word with the mark `mark`; nothing when that stands for nothing.
template <SteimVersion version, bool isBigEndian>
std::optional<Sum> firstOfWord(std::uint32_t mark, std::uint32_t word) {
  if constexpr (isBigEndian) {
    const auto [count, bits] =
        (version == SteimVersion::Steim1 ? kSteim1Kinds : kSteim2Kinds)[mark << 2 | word >> 30];
    if (count == kNoKind) return {};
    return Sum(std::int32_t(word << (32 - bits * count)) >> (32 - bits));
  } else {
    std::array<std::int32_t, kMostPerWord> values{};
    Sums sums(values.data(), 0);
    if (!takeDifferences<version, isBigEndian>(sums, mark, word)) return {};
    return Sum(values[0]);
  }
}

/// The first difference there is; nothing when there is none.
template <SteimVersion version, bool isBigEndian>
std::optional<Sum> firstDifference(QByteArrayView frames) {
  int first = kIntegrationWords;
  for (qsizetype at = 0; at + kFrameBytes <= frames.size(); at += kFrameBytes, first = 1) {
    const char* const frame = frames.data() + at;
    const auto marks = numberAt<isBigEndian, std::uint32_t>(frame);
    for (int i = first; i < kFrameWords; ++i) {
      if (const std::uint32_t mark = markOf(marks, i); mark != 0)
        return firstOfWord<version, isBigEndian>(mark, numberAt<isBigEndian, std::uint32_t>(frame + i * kWordBytes));
    }
  }
  return {};
}

template <SteimVersion version, bool isBigEndian>
std::optional<std::int32_t> decode(QByteArrayView frames, std::span<float> samples) {
  const std::optional<Sum> first = firstDifference<version, isBigEndian>(frames);
  if (!first) return {};
  Progress progress;
  // The first difference is not one between samples of this record.
  progress.last = numberAt<isBigEndian, Sum>(frames.data() + kFirstSampleWord * kWordBytes) - *first;
  if constexpr (isBigEndian)
    takeWords(version == SteimVersion::Steim1 ? kSteim1Shifts : kSteim2Shifts, frames, samples, progress);
  takeFrames<version, isBigEndian>(frames, samples, progress);
  if (progress.isOdd || progress.done < samples.size()) return {};
  return std::int32_t(progress.last);
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
