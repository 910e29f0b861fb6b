#pragma once

#include <QByteArray>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace xov::test {

enum class Order { Little, Big };

/// Spells a binary SAC file out byte by byte, knowing nothing of the library: numbers are placed by word (a word is
/// four bytes; the floats are words 0 to 69, the integers 70 to 109), texts by byte.
class SacBytes {
public:
  // Words and bytes by the published table of the header.
  static constexpr int kDelta = 0, kB = 5, kE = 6, kO = 7, kA = 8, kT0 = 10, kF = 20, kStla = 31, kStlo = 32,
                       kEvla = 35, kEvlo = 36, kEvdp = 38, kAz = 51, kBaz = 52, kGcarc = 53, kNzyear = 70,
                       kNzjday = 71, kNzhour = 72, kNzmin = 73, kNzsec = 74, kNzmsec = 75, kNvhdr = 76, kNpts = 79,
                       kIftype = 85, kLeven = 105;
  static constexpr int kStation = 440, kEvent = 448, kHole = 464, kFirstArrivalLabel = 480, kT0Label = 488,
                       kEndLabel = 568, kUser0 = 576, kComponent = 600, kNetwork = 608;

  /// A header as a careful program writes it: everything unset but version, type, spacing, interval 1 and start 0.
  explicit SacBytes(Order order = Order::Little, int version = 6) : order_(order) {
    for (int word = 0; word < 70; ++word)
      number(word, -12345.0F);
    for (int word = 70; word < 110; ++word)
      integer(word, -12345);
    for (int byte = 440; byte < 632; byte += 8)
      text(byte, 8, "-12345");
    text(kEvent, 16, "-12345");
    number(kDelta, 1.0F).number(kB, 0.0F);
    integer(kNvhdr, version).integer(kNpts, 0).integer(kIftype, 1).integer(kLeven, 1);
  }

  SacBytes& number(int word, float value) { return put(word * 4, std::bit_cast<std::uint32_t>(value)); }
  SacBytes& integer(int word, int value) { return put(word * 4, std::uint32_t(value)); }
  SacBytes& text(int byte, int width, const char* value) {
    std::memset(header_.data() + byte, ' ', std::size_t(width));
    std::memcpy(header_.data() + byte, value, std::strlen(value));
    return *this;
  }
  SacBytes& raw(int byte, const char* bytes, std::size_t count) {
    std::memcpy(header_.data() + byte, bytes, count);
    return *this;
  }

  /// Sets the samples and npts with them.
  SacBytes& samples(const std::vector<float>& values) {
    data_.clear();
    for (const float value : values)
      append(data_, std::bit_cast<std::uint32_t>(value), 4);
    return integer(kNpts, int(values.size()));
  }

  /// Appends a double to the footer.
  SacBytes& footer(double value) {
    append(footer_, std::bit_cast<std::uint64_t>(value), 8);
    return *this;
  }
  /// Appends a footer of 22 unset values, of which `index` has another.
  SacBytes& footerWith(int index, double value) {
    for (int i = 0; i < 22; ++i)
      footer(i == index ? value : -12345.0);
    return *this;
  }

  QByteArray bytes() const { return QByteArray(header_.data(), qsizetype(header_.size())) + data_ + footer_; }

private:
  SacBytes& put(int byte, std::uint32_t value) {
    QByteArray word;
    append(word, value, 4);
    return raw(byte, word.constData(), 4);
  }

  void append(QByteArray& to, std::uint64_t value, int size) const {
    for (int i = 0; i < size; ++i) {
      const int shift = 8 * (order_ == Order::Little ? i : size - 1 - i);
      to.append(char((value >> shift) & 0xFF));
    }
  }

  Order order_;
  std::array<char, 632> header_{};
  QByteArray data_;
  QByteArray footer_;
};

} // namespace xov::test
