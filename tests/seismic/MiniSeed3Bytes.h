#pragma once

#include <QByteArray>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

namespace xov::test {

/// CRC-32C bit by bit: a division by the polynomial, lowest bit first.
inline std::uint32_t bitwiseCrc32c(const QByteArray& bytes) {
  std::uint32_t remainder = 0xFFFFFFFF;
  for (const char byte : bytes) {
    remainder ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit)
      remainder = (remainder & 1) != 0 ? (remainder >> 1) ^ 0x82F63B78 : remainder >> 1;
  }
  return ~remainder;
}

/// Spells a miniSEED 3 record out byte by byte, knowing nothing of the library. The default is one of
/// FDSN:XX_TEST_00_B_H_Z at 2012-05-12 (day 133) 00:00:00 and 40 Hz, without samples.
class MiniSeed3Bytes {
public:
  static constexpr int kText = 0, kInt16 = 1, kInt32 = 3, kFloat32 = 4, kFloat64 = 5, kSteim1 = 10, kSteim2 = 11,
                       kOpaque = 100;
  static constexpr int kDayAt = 10, kEncodingAt = 15, kSampleCountAt = 24, kCheckValueAt = 28, kDataLengthAt = 36,
                       kIdentifierAt = 40;

  MiniSeed3Bytes() {
    std::copy_n("MS\x03", 3, header_.begin());
    time(2012, 133, 0, 0, 0, 0).rate(40).encoding(kInt32).put(32, std::uint8_t(1));
  }

  MiniSeed3Bytes& source(const QByteArray& identifier) {
    identifier_ = identifier;
    return *this;
  }
  MiniSeed3Bytes& time(int year, int day, int hour, int minute, int second, std::uint32_t nanosecond) {
    put(4, nanosecond).put(8, std::uint16_t(year)).put(kDayAt, std::uint16_t(day));
    return put(12, std::uint8_t(hour)).put(13, std::uint8_t(minute)).put(14, std::uint8_t(second));
  }
  /// Samples a second, or negative seconds a sample.
  MiniSeed3Bytes& rate(double value) { return put(16, value); }
  MiniSeed3Bytes& encoding(int value) { return put(kEncodingAt, std::uint8_t(value)); }
  MiniSeed3Bytes& sampleCount(std::uint32_t value) { return put(kSampleCountAt, value); }
  MiniSeed3Bytes& extra(const QByteArray& json) {
    extra_ = json;
    return *this;
  }
  MiniSeed3Bytes& data(const QByteArray& bytes) {
    data_ = bytes;
    return *this;
  }
  /// Writes the samples one after the other, little-endian, and their number.
  template <typename Number>
  MiniSeed3Bytes& samples(int numbered, const std::vector<Number>& values) {
    data_.clear();
    for (const Number value : values)
      data_ += littleEndian(value);
    return encoding(numbered).sampleCount(std::uint32_t(values.size()));
  }
  MiniSeed3Bytes& integers(const std::vector<std::int32_t>& values) { return samples(kInt32, values); }
  /// Appends a frame of compressed samples, big-endian; their number is for the test to set.
  MiniSeed3Bytes& frame(std::vector<std::uint32_t> words) {
    words.resize(16, 0);
    for (const std::uint32_t word : words) {
      const QByteArray bytes = littleEndian(word);
      data_.append(bytes[3]).append(bytes[2]).append(bytes[1]).append(bytes[0]);
    }
    return *this;
  }

  /// The record with its lengths and check value.
  QByteArray bytes() const {
    MiniSeed3Bytes whole = *this;
    whole.put(33, std::uint8_t(identifier_.size())).put(34, std::uint16_t(extra_.size()));
    whole.put(kDataLengthAt, std::uint32_t(data_.size())).put(kCheckValueAt, std::uint32_t(0));
    whole.put(kCheckValueAt, bitwiseCrc32c(whole.joined()));
    return whole.joined();
  }

private:
  template <typename Number>
  static QByteArray littleEndian(Number value) {
    auto raw = std::bit_cast<std::array<char, sizeof(Number)>>(value);
    if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
    return {raw.data(), qsizetype(raw.size())};
  }
  template <typename Number>
  MiniSeed3Bytes& put(int at, Number value) {
    header_.replace(at, sizeof(Number), littleEndian(value));
    return *this;
  }
  QByteArray joined() const { return header_ + identifier_ + extra_ + data_; }

  QByteArray header_ = QByteArray(kIdentifierAt, '\0');
  QByteArray identifier_ = "FDSN:XX_TEST_00_B_H_Z";
  QByteArray extra_;
  QByteArray data_;
};

} // namespace xov::test
