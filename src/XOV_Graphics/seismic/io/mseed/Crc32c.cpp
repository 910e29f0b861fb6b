#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"

#include <QtEndian>

#include <array>

namespace xov {

namespace {

constexpr std::uint32_t kPolynomial = 0x82F63B78;
constexpr int kStep = 8; // bytes taken together: eight small tables instead of eight rounds of one
constexpr int kByteValues = 256;

using Table = std::array<std::uint32_t, kByteValues>;

/// Table n has what a byte does that n further bytes follow.
constexpr std::array<Table, kStep> makeTables() {
  std::array<Table, kStep> tables{};
  for (std::uint32_t byte = 0; byte < kByteValues; ++byte) {
    std::uint32_t value = byte;
    for (int bit = 0; bit < 8; ++bit)
      value = (value >> 1) ^ ((value & 1) != 0 ? kPolynomial : 0);
    tables[0][byte] = value;
  }
  for (std::size_t n = 1; n < kStep; ++n) {
    for (std::size_t byte = 0; byte < kByteValues; ++byte) {
      const std::uint32_t before = tables[n - 1][byte];
      tables[n][byte] = (before >> 8) ^ tables[0][before & 0xFF];
    }
  }
  return tables;
}

constexpr std::array<Table, kStep> kTables = makeTables();

} // namespace

std::uint32_t crc32c(QByteArrayView bytes, std::uint32_t before) {
  std::uint32_t value = ~before;
  qsizetype at = 0;
  for (; at + kStep <= bytes.size(); at += kStep) {
    const std::uint32_t low = value ^ qFromLittleEndian<std::uint32_t>(bytes.data() + at);
    const auto high = qFromLittleEndian<std::uint32_t>(bytes.data() + at + kStep / 2);
    value = kTables[7][low & 0xFF] ^ kTables[6][low >> 8 & 0xFF] ^ kTables[5][low >> 16 & 0xFF] ^
            kTables[4][low >> 24] ^ kTables[3][high & 0xFF] ^ kTables[2][high >> 8 & 0xFF] ^
            kTables[1][high >> 16 & 0xFF] ^ kTables[0][high >> 24];
  }
  for (; at < bytes.size(); ++at)
    value = (value >> 8) ^ kTables[0][(value ^ static_cast<unsigned char>(bytes[at])) & 0xFF];
  return ~value;
}

} // namespace xov
