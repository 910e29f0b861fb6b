#pragma once

#include <QByteArray>
#include <QtEndian>

#include <array>
#include <bit>
#include <cstdint>
#include <vector>

namespace xov::test {

/// A netCDF file of the classic format with one variable GRID over the dimensions Y and X and their coordinates.
struct NetcdfBytes {
  std::vector<double> rows;
  std::vector<double> columns;
  std::vector<float> values;
  QByteArray variable = "GRID";
  std::uint32_t type = 5; // single precision
  bool hasCoordinates = true;

  QByteArray bytes() const {
    constexpr std::uint32_t kDouble = 6;
    QByteArray head;
    // The offsets follow from the length of the header, which they do not change.
    std::uint32_t begin = 0;
    for (int pass = 0; pass < 2; ++pass) {
      head = QByteArray("CDF\1", 4);
      append(head, std::uint32_t(0));
      list(head, 10, 2);
      name(head, "Y");
      append(head, std::uint32_t(rows.size()));
      name(head, "X");
      append(head, std::uint32_t(columns.size()));
      list(head, 12, 1); // a text of three letters, padded to four
      name(head, "title");
      append(head, std::uint32_t(2));
      append(head, std::uint32_t(3));
      head += QByteArray("abc\0", 4);
      list(head, 11, hasCoordinates ? 3 : 1);
      const std::uint32_t afterRows = begin + std::uint32_t(rows.size() * sizeof(double));
      const std::uint32_t afterColumns = afterRows + std::uint32_t(columns.size() * sizeof(double));
      if (hasCoordinates) {
        describe(head, "Y", {0}, kDouble, begin);
        describe(head, "X", {1}, kDouble, afterRows);
      }
      describe(head, variable, {0, 1}, type, hasCoordinates ? afterColumns : begin);
      begin = std::uint32_t(head.size());
    }
    if (hasCoordinates) {
      for (const double row : rows)
        append(head, std::bit_cast<std::uint64_t>(row));
      for (const double column : columns)
        append(head, std::bit_cast<std::uint64_t>(column));
    }
    QByteArray data(qsizetype(values.size() * sizeof(float)), 0);
    for (std::size_t i = 0; i < values.size(); ++i)
      qToBigEndian(std::bit_cast<std::uint32_t>(values[i]), data.data() + i * sizeof(float));
    return head + data;
  }

private:
  template <typename Number>
  static void append(QByteArray& bytes, Number number) {
    std::array<char, sizeof(Number)> big{};
    qToBigEndian(number, big.data());
    bytes.append(big.data(), qsizetype(big.size()));
  }

  static void list(QByteArray& bytes, std::uint32_t tag, std::uint32_t count) {
    append(bytes, tag);
    append(bytes, count);
  }

  static void name(QByteArray& bytes, const QByteArray& text) {
    append(bytes, std::uint32_t(text.size()));
    bytes += text;
    while (bytes.size() % 4 != 0)
      bytes += '\0';
  }

  static void describe(QByteArray& bytes, const QByteArray& text, const std::vector<std::uint32_t>& dimensions,
                       std::uint32_t type, std::uint32_t begin) {
    name(bytes, text);
    append(bytes, std::uint32_t(dimensions.size()));
    for (const std::uint32_t dimension : dimensions)
      append(bytes, dimension);
    list(bytes, 0, 0); // no attributes
    append(bytes, type);
    append(bytes, std::uint32_t(0));
    append(bytes, begin);
  }
};

} // namespace xov::test
