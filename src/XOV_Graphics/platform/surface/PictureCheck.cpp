#include "XOV_Graphics/platform/surface/PictureCheck.h"

#include <QtEndian>

#include <iterator>
#include <libdeflate.h>
#include <optional>
#include <vector>

namespace xov {

namespace {

constexpr QByteArrayView kPngBegin("\x89PNG\r\n\x1a\n", 8);
constexpr QByteArrayView kJpegBegin("\xff\xd8", 2);
constexpr QByteArrayView kJpegEnd("\xff\xd9", 2);

/// A number of the file; nothing beyond its end.
template <typename Number>
std::optional<qint64> numberAt(QByteArrayView file, qint64 at, bool isLittleEndian) {
  if (at < 0 || at > file.size() - qint64(sizeof(Number))) return {};
  return isLittleEndian ? qFromLittleEndian<Number>(file.data() + at) : qFromBigEndian<Number>(file.data() + at);
}

bool isWholePng(QByteArrayView file, const QSize& size) {
  constexpr qint64 kAroundData = 12; // length, kind and sum
  if (numberAt<quint32>(file, 16, false) != size.width() || numberAt<quint32>(file, 20, false) != size.height())
    return false;
  bool hasPixels = false;
  for (qint64 at = kPngBegin.size();;) {
    const auto length = numberAt<quint32>(file, at, false);
    if (!length || *length + kAroundData > file.size() - at) return false;
    const QByteArrayView summed = file.sliced(at + 4, *length + 4);
    if (numberAt<quint32>(file, at + 8 + *length, false) !=
        qint64(libdeflate_crc32(0, summed.data(), std::size_t(summed.size()))))
      return false;
    hasPixels = hasPixels || (summed.startsWith("IDAT") && *length > 0);
    at += *length + kAroundData;
    if (summed.startsWith("IEND")) return hasPixels && at == file.size();
  }
}

// From marker to marker up to the pixels, which the end follows.
bool isWholeJpeg(QByteArrayView file, const QSize& size) {
  constexpr qint64 kStartOfScan = 0xDA;
  bool hasSize = false;
  for (qint64 at = kJpegBegin.size();;) {
    const auto marker = numberAt<quint16>(file, at, false);
    const auto length = numberAt<quint16>(file, at + 2, false);
    if (!marker || !length || *marker >> 8 != 0xFF) return false;
    const qint64 kind = *marker & 0xFF;
    const bool isFrame = kind >= 0xC0 && kind <= 0xC2;
    if (isFrame)
      hasSize = numberAt<quint16>(file, at + 5, false) == size.height() &&
                numberAt<quint16>(file, at + 7, false) == size.width();
    if (kind == kStartOfScan) return hasSize && file.size() > at + 2 + *length + 2 && file.endsWith(kJpegEnd);
    at += 2 + *length;
  }
}

/// The entries of a TIFF file's first directory.
class TiffDirectory {
public:
  explicit TiffDirectory(QByteArrayView file) : file_(file), isLittle_(file.startsWith("II")) {
    begin_ = number<quint32>(4).value_or(file.size());
    count_ = number<quint16>(begin_).value_or(0);
  }

  /// Whether all entries are there, with the values that have no room in them, and the place of the next directory.
  bool isWhole() const {
    constexpr qint64 kSizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8}; // of kinds of values
    for (qint64 i = 0; i < count_; ++i) {
      const qint64 entry = begin_ + 2 + i * kEntry;
      const auto kind = number<quint16>(entry + 2), count = number<quint32>(entry + 4),
                 place = number<quint32>(entry + 8);
      if (!kind || !count || !place || *kind >= std::ssize(kSizes)) return false;
      const qint64 bytes = kSizes[*kind] * *count;
      if (bytes > kInEntry && (bytes > file_.size() || *place > file_.size() - bytes)) return false;
    }
    return number<quint32>(begin_ + 2 + count_ * kEntry).has_value();
  }

  /// The values of a tag, as many as lie within the file.
  std::vector<qint64> values(qint64 tag) const {
    constexpr qint64 kShort = 3, kLong = 4;
    for (qint64 i = 0; i < count_; ++i) {
      const qint64 entry = begin_ + 2 + i * kEntry;
      if (number<quint16>(entry) != tag) continue;
      const qint64 kind = number<quint16>(entry + 2).value_or(0), count = number<quint32>(entry + 4).value_or(0);
      if (kind != kShort && kind != kLong) return {};
      const qint64 bytes = kind == kShort ? 2 : 4;
      const qint64 place = count * bytes <= kInEntry ? entry + 8 : number<quint32>(entry + 8).value_or(file_.size());
      std::vector<qint64> values;
      for (qint64 k = 0; k < count; ++k) {
        const auto value = kind == kShort ? number<quint16>(place + k * bytes) : number<quint32>(place + k * bytes);
        if (!value) break;
        values.push_back(*value);
      }
      return values;
    }
    return {};
  }
  qint64 value(qint64 tag) const {
    const std::vector<qint64> all = values(tag);
    return all.empty() ? 0 : all.front();
  }

private:
  static constexpr qint64 kEntry = 12;
  static constexpr qint64 kInEntry = 4; // bytes of values

  template <typename Number>
  std::optional<qint64> number(qint64 at) const {
    return numberAt<Number>(file_, at, isLittle_);
  }

  QByteArrayView file_;
  bool isLittle_;
  qint64 begin_ = 0;
  qint64 count_ = 0;
};

bool isWholeTiff(QByteArrayView file, const QSize& size) {
  constexpr qint64 kWidth = 256, kHeight = 257, kStrips = 273, kRows = 278, kStripBytes = 279;
  const TiffDirectory directory(file);
  if (!directory.isWhole()) return false;
  const qint64 rows = directory.value(kRows);
  const std::vector<qint64> strips = directory.values(kStrips), bytes = directory.values(kStripBytes);
  if (directory.value(kWidth) != size.width() || directory.value(kHeight) != size.height() || rows < 1) return false;
  if (qint64(strips.size()) != (size.height() + rows - 1) / rows || bytes.size() != strips.size()) return false;
  for (std::size_t i = 0; i < strips.size(); ++i) {
    if (strips[i] < 8 || bytes[i] < 1 || bytes[i] > file.size() - strips[i]) return false;
  }
  return true;
}

} // namespace

bool isWholePicture(QByteArrayView file, const QSize& size) {
  if (file.startsWith(kPngBegin)) return isWholePng(file, size);
  if (file.startsWith(kJpegBegin)) return isWholeJpeg(file, size);
  return (file.startsWith("II") || file.startsWith("MM")) && isWholeTiff(file, size);
}

} // namespace xov
