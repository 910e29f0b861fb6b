#pragma once

#include "SacBytes.h"

#include <QByteArray>

#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <type_traits>
#include <vector>

namespace xov::test {

/// Spells a miniSEED 2 record out byte by byte, knowing nothing of the library: header, blockettes 1000, 1001 and
/// 100, and samples. The default is a record of 512 bytes of XX.TEST.00.BHZ at 2012-05-12 (day 133) 00:00:00, 40 Hz,
/// 32-bit integers, all of it big-endian.
class MiniSeedBytes {
public:
  // Numbers of blockette 1000.
  static constexpr int kText = 0, kInt16 = 1, kInt32 = 3, kFloat32 = 4, kFloat64 = 5, kSteim1 = 10, kSteim2 = 11,
                       kGeoscope24 = 12, kGeoscope163 = 13, kGeoscope164 = 14, kCdsn = 16, kSro = 30, kDwwssn = 32;
  // Places in a record.
  static constexpr int kSampleCountAt = 30, kDataOffsetAt = 44, kChainAt = 46, kFormatAt = 48, kTimingAt = 56,
                       kRateAt = 64, kDataAt = 128;

  explicit MiniSeedBytes(Order header = Order::Big, Order data = Order::Big, int exponent = 9)
      : header_(header),
        data_(data),
        bytes_(qsizetype(1) << exponent, '\0') {
    text(0, "000001D ");
    codes("XX", "TEST", "00", "BHZ").time(2012, 133, 0, 0, 0, 0).rate(40, 1);
    byte(39, 3).number(kDataOffsetAt, std::uint16_t(kDataAt)).number(kChainAt, std::uint16_t(kFormatAt));
    number(kFormatAt, std::uint16_t(1000)).number(kFormatAt + 2, std::uint16_t(kTimingAt));
    encoding(kInt32).byte(kFormatAt + 5, data == Order::Big ? 1 : 0).byte(kFormatAt + 6, exponent);
    number(kTimingAt, std::uint16_t(1001));
  }

  MiniSeedBytes& codes(const char* network, const char* station, const char* location, const char* channel) {
    return padded(8, 5, station).padded(13, 2, location).padded(15, 3, channel).padded(18, 2, network);
  }
  /// `fraction` is in 0.1 ms.
  MiniSeedBytes& time(int year, int day, int hour, int minute, int second, int fraction) {
    number(20, std::uint16_t(year)).number(22, std::uint16_t(day)).number(28, std::uint16_t(fraction));
    return byte(24, hour).byte(25, minute).byte(26, second);
  }
  MiniSeedBytes& rate(int factor, int multiplier) {
    return number(32, std::int16_t(factor)).number(34, std::int16_t(multiplier));
  }
  /// Blockette 100.
  MiniSeedBytes& exactRate(float hertz) {
    number(kTimingAt + 2, std::uint16_t(kRateAt)).number(kRateAt, std::uint16_t(100));
    return number(kRateAt + 4, hertz);
  }
  MiniSeedBytes& microseconds(int value) { return byte(kTimingAt + 5, value); }
  /// In 0.1 ms.
  MiniSeedBytes& correction(int value, bool isApplied) { return number(40, value).byte(36, isApplied ? 2 : 0); }
  MiniSeedBytes& encoding(int value) { return byte(kFormatAt + 4, value); }
  MiniSeedBytes& sampleCount(int value) { return number(kSampleCountAt, std::uint16_t(value)); }

  /// Writes the samples one after the other, and their number.
  template <typename Number>
  MiniSeedBytes& samples(int numbered, const std::vector<Number>& values) {
    encoding(numbered).sampleCount(int(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i)
      put(kDataAt + int(i * sizeof(Number)), values[i], data_);
    return *this;
  }
  MiniSeedBytes& integers(const std::vector<std::int32_t>& values) { return samples(kInt32, values); }

  /// Writes the 16 words of a frame; the number of samples is for the test to set.
  MiniSeedBytes& frame(int number, const std::vector<std::uint32_t>& words) {
    for (std::size_t i = 0; i < words.size(); ++i)
      put(kDataAt + number * 64 + int(i) * 4, words[i], data_);
    return *this;
  }

  template <typename Number>
  MiniSeedBytes& number(int at, Number value) {
    put(at, value, header_);
    return *this;
  }
  MiniSeedBytes& byte(int at, int value) {
    bytes_[at] = char(value);
    return *this;
  }
  MiniSeedBytes& text(int at, const char* value) {
    std::memcpy(bytes_.data() + at, value, std::strlen(value));
    return *this;
  }

  const QByteArray& bytes() const { return bytes_; }

private:
  MiniSeedBytes& padded(int at, int width, const char* value) {
    std::memset(bytes_.data() + at, ' ', std::size_t(width));
    return text(at, value);
  }

  template <typename Number>
  void put(int at, Number value, Order order) {
    constexpr int size = sizeof(Number);
    std::array<char, sizeof(Number)> raw = std::bit_cast<std::array<char, sizeof(Number)>>(value);
    if ((order == Order::Little) != (std::endian::native == std::endian::little))
      std::reverse(raw.begin(), raw.end());
    std::memcpy(bytes_.data() + at, raw.data(), size);
  }

  Order header_;
  Order data_;
  QByteArray bytes_;
};

/// Several records one after the other.
inline QByteArray joined(std::initializer_list<MiniSeedBytes> records) {
  QByteArray all;
  for (const MiniSeedBytes& record : records)
    all += record.bytes();
  return all;
}

} // namespace xov::test
