#include "XOV_Graphics/platform/surface/DeflateEnd.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <memory>

namespace xov {

namespace {

constexpr int kLongestCode = 15;
constexpr int kLengthSymbols = 288; // literals, the end and lengths
constexpr int kDistanceSymbols = 30;
constexpr int kEndSymbol = 256;

// Bits behind the code of a length, from symbol 257 on, and of a distance.
constexpr std::array<std::uint8_t, 31> kLengthExtra = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2,
                                                       3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0, 0, 0};
constexpr int distanceExtra(int symbol) { return symbol < 4 ? 0 : symbol / 2 - 1; }

// Bits from the lowest of each byte on; zeros behind the end, which is then found to be passed.
class Bits {
public:
  explicit Bits(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::size_t place() const { return place_; }
  bool isPastEnd() const { return place_ > 8 * bytes_.size(); }

  std::uint32_t peek() const {
    const std::size_t first = place_ / 8;
    if (first + sizeof(quint64) <= bytes_.size())
      return std::uint32_t(qFromLittleEndian<quint64>(bytes_.data() + first) >> (place_ % 8));
    quint64 bits = 0;
    for (std::size_t k = 0; first + k < bytes_.size(); ++k)
      bits |= quint64(bytes_[first + k]) << (8 * k);
    return std::uint32_t(bits >> (place_ % 8));
  }
  void skip(std::size_t bits) { place_ += bits; }
  std::uint32_t take(int bits) {
    const std::uint32_t value = peek() & ((1U << bits) - 1);
    skip(std::size_t(bits));
    return value;
  }
  void toByte() { place_ = (place_ + 7) / 8 * 8; }

private:
  std::span<const std::uint8_t> bytes_;
  std::size_t place_ = 0;
};

// The codes of a block. Short ones are found at once by the bits that come next, others bit by bit.
class CodeTable {
public:
  // Codes of these lengths, 0 for none, in the order that the format gives them. False when there are too many.
  bool build(std::span<const std::uint8_t> lengths) {
    count_.fill(0);
    for (const std::uint8_t length : lengths)
      ++count_[length];
    count_[0] = 0;
    std::array<int, kLongestCode + 1> next{}, place{}; // codes, and where their symbols begin
    for (std::size_t length = 1; length <= kLongestCode; ++length) {
      next[length] = (next[length - 1] + count_[length - 1]) * 2;
      place[length] = place[length - 1] + count_[length - 1];
      if (next[length] + count_[length] > 1 << length) return false;
    }
    quick_.fill({});
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
      const std::uint8_t length = lengths[symbol];
      if (length == 0) continue;
      symbols_[std::size_t(place[length]++)] = std::int16_t(symbol);
      const std::uint32_t start = reversed(std::uint32_t(next[length]++), length);
      for (std::uint32_t at = start; length <= kQuickBits && at < quick_.size(); at += 1U << length)
        quick_[at] = {std::int16_t(symbol), length};
    }
    return true;
  }

  // -1 where there is no such code.
  int take(Bits& bits) const {
    const std::uint32_t ahead = bits.peek();
    const Quick quick = quick_[ahead % quick_.size()];
    if (quick.bits == 0) return takeLong(ahead, bits);
    bits.skip(quick.bits);
    return quick.symbol;
  }

private:
  static constexpr int kQuickBits = 10;
  struct Quick {
    std::int16_t symbol = 0;
    std::uint8_t bits = 0; // of the code; 0 where it is longer, or where there is none
  };

  int takeLong(std::uint32_t ahead, Bits& bits) const {
    int code = 0, first = 0, place = 0; // the first code of a length, and the place of its symbol
    for (std::size_t length = 1; length <= kLongestCode; ++length, ahead >>= 1) {
      code = 2 * code + int(ahead & 1);
      first *= 2;
      if (code - first < count_[length]) {
        bits.skip(length);
        return symbols_[std::size_t(place + code - first)];
      }
      first += count_[length];
      place += count_[length];
    }
    return -1;
  }

  // Codes are written from their highest bit on.
  static std::uint32_t reversed(std::uint32_t code, int length) {
    std::uint32_t result = 0;
    for (int k = 0; k < length; ++k)
      result |= (code >> k & 1) << (length - 1 - k);
    return result;
  }

  std::array<int, kLongestCode + 1> count_{}; // of codes by their length
  std::array<std::int16_t, kLengthSymbols> symbols_{};
  std::array<Quick, 1U << kQuickBits> quick_{};
};

using CodeLengths = std::array<std::uint8_t, kLengthSymbols + 32>;

struct Tables {
  CodeTable lengths, distances;

  bool buildFixed() {
    CodeLengths bits{};
    for (std::size_t symbol = 0; symbol < kLengthSymbols; ++symbol)
      bits[symbol] = symbol < 144 ? 8 : symbol < 256 ? 9 : symbol < 280 ? 7 : 8;
    std::fill_n(bits.begin() + kLengthSymbols, kDistanceSymbols, std::uint8_t(5));
    const std::span all(bits);
    return lengths.build(all.first(kLengthSymbols)) && distances.build(all.subspan(kLengthSymbols, kDistanceSymbols));
  }

  // Of codes that stand in front of the block, packed themselves.
  bool read(Bits& bits) {
    constexpr std::array<std::uint8_t, 19> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                     11, 4,  12, 3, 13, 2, 14, 1, 15};
    const std::size_t lengthCount = bits.take(5) + 257, distanceCount = bits.take(5) + 1;
    const std::size_t orderCount = bits.take(4) + 4;
    if (lengthCount > kLengthSymbols) return false;
    std::array<std::uint8_t, 19> first{};
    for (std::size_t k = 0; k < orderCount; ++k)
      first[kOrder[k]] = std::uint8_t(bits.take(3));
    if (!lengths.build(first)) return false;
    CodeLengths all{};
    const std::size_t count = lengthCount + distanceCount;
    for (std::size_t done = 0; done < count;) {
      const int symbol = lengths.take(bits);
      if (symbol < 0 || bits.isPastEnd()) return false;
      std::size_t repeats = 1;
      std::uint8_t length = symbol < 16 ? std::uint8_t(symbol) : std::uint8_t(0);
      if (symbol == 16) {
        if (done == 0) return false;
        length = all[done - 1];
        repeats = 3 + bits.take(2);
      }
      if (symbol == 17) repeats = 3 + bits.take(3);
      if (symbol == 18) repeats = 11 + bits.take(7);
      if (repeats > count - done) return false;
      std::fill_n(all.begin() + std::ptrdiff_t(done), repeats, length);
      done += repeats;
    }
    const std::span known(all);
    return lengths.build(known.first(lengthCount)) && distances.build(known.subspan(lengthCount, distanceCount));
  }
};

bool skipStored(Bits& bits) {
  bits.toByte();
  const std::uint32_t length = bits.take(16), check = bits.take(16);
  bits.skip(8 * std::size_t(length));
  return (length ^ check) == 0xFFFF;
}

bool skipPacked(Bits& bits, const Tables& tables) {
  while (!bits.isPastEnd()) {
    const int symbol = tables.lengths.take(bits);
    if (symbol < 0) return false;
    if (symbol < kEndSymbol) continue;
    if (symbol == kEndSymbol) return true;
    bits.skip(kLengthExtra[std::size_t(symbol - kEndSymbol - 1)]);
    const int distance = tables.distances.take(bits);
    if (distance < 0) return false;
    bits.skip(std::size_t(distanceExtra(distance)));
  }
  return false;
}

} // namespace

std::optional<DeflateEnd> findDeflateEnd(std::span<const std::uint8_t> stream) {
  Bits bits(stream);
  const auto tables = std::make_unique<Tables>();
  for (;;) {
    DeflateEnd found{bits.place(), 0};
    const bool isLast = bits.take(1) != 0;
    const std::uint32_t kind = bits.take(2);
    const bool isSkipped = kind == 0   ? skipStored(bits)
                           : kind == 1 ? tables->buildFixed() && skipPacked(bits, *tables)
                           : kind == 2 ? tables->read(bits) && skipPacked(bits, *tables)
                                       : false;
    if (!isSkipped || bits.isPastEnd()) return std::nullopt;
    found.end = bits.place();
    if (isLast) return found;
  }
}

} // namespace xov
