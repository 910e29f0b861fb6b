#include "apps/resources/JpegTiff.h"

#include <QtEndian>

#include <XOV_Graphics/platform/ImageFile.h>
#include <array>
#include <cstdint>
#include <vector>

namespace xov::maker {

namespace {

enum FieldType : std::uint16_t { kShort = 3, kLong = 4 };

struct Field {
  std::uint16_t tag;
  FieldType type;
  std::uint32_t count;
  std::uint32_t value; // or the offset of the values; two short ones lie in it one after the other
};

template <typename Number>
void append(QByteArray& bytes, Number number) {
  std::array<char, sizeof(Number)> little{};
  qToLittleEndian(number, little.data());
  bytes.append(little.data(), qsizetype(little.size()));
}

/// How often a JPEG stream of three components stores brightness for each colour, across and down: the first
/// component's factors in its frame header (ITU-T T.81, B.2.2). 0 when there is no such header.
std::uint32_t subsampling(const QByteArray& jpeg) {
  constexpr uchar kBaseline = 0xc0;
  constexpr uchar kProgressive = 0xc2;
  const auto byte = [&](qsizetype at) { return at < jpeg.size() ? uchar(jpeg[at]) : uchar(0); };
  qsizetype at = 2; // after the start marker
  while (at + 4 <= jpeg.size() && byte(at) == 0xff) {
    const uchar marker = byte(at + 1);
    if (marker >= kBaseline && marker <= kProgressive) {
      constexpr qsizetype kComponents = 9;
      constexpr qsizetype kFirstFactors = 11;
      if (byte(at + kComponents) != 3) return 0;
      const std::uint32_t factors = byte(at + kFirstFactors);
      return factors >> 4 | (factors & 0xf) << 16;
    }
    at += 2 + (byte(at + 2) << 8 | byte(at + 3));
  }
  return 0;
}

} // namespace

Result<QByteArray> jpegTiff(const QImage& image, int quality) {
  QString error;
  const QByteArray jpeg = encodeJpeg(image, quality, &error);
  if (jpeg.isEmpty()) return Error{error};
  const std::uint32_t factors = subsampling(jpeg);
  if (factors == 0) return Error{QStringLiteral("the JPEG writer made no picture of three colours")};

  constexpr std::uint32_t kHeader = 8;
  constexpr std::uint32_t kJpegCompression = 7;
  constexpr std::uint32_t kYCbCr = 6;
  const std::uint32_t length = std::uint32_t(jpeg.size());
  const std::uint32_t bitsAt = kHeader + length + length % 2; // values lie at even offsets
  constexpr std::uint32_t kBitsBytes = 6;
  const std::vector<Field> fields{
      {256, kLong, 1, std::uint32_t(image.width())},
      {257, kLong, 1, std::uint32_t(image.height())},
      {258, kShort, 3, bitsAt},
      {259, kShort, 1, kJpegCompression},
      {262, kShort, 1, kYCbCr},
      {273, kLong, 1, kHeader}, // where the strip is
      {277, kShort, 1, 3},      // samples a pixel
      {278, kLong, 1, std::uint32_t(image.height())},
      {279, kLong, 1, length},
      {284, kShort, 1, 1}, // samples lie together
      {530, kShort, 2, factors},
  };

  QByteArray tiff("II*\0", 4);
  append(tiff, bitsAt + kBitsBytes);
  tiff += jpeg;
  if (length % 2 != 0) tiff += '\0';
  for (int i = 0; i < 3; ++i)
    append(tiff, std::uint16_t(8));
  append(tiff, std::uint16_t(fields.size()));
  for (const Field& field : fields) {
    append(tiff, field.tag);
    append(tiff, std::uint16_t(field.type));
    append(tiff, field.count);
    append(tiff, field.value);
  }
  append(tiff, std::uint32_t(0)); // no further picture
  return tiff;
}

} // namespace xov::maker
