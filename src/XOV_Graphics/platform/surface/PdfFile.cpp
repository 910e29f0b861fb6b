#include "XOV_Graphics/platform/surface/PdfFile.h"

#include <algorithm>
#include <array>
#include <libdeflate.h>
#include <memory>

namespace xov {

namespace {

constexpr qsizetype kRow = 20;            // bytes of a row of the table: "0000000015 00000 n \n"
constexpr qsizetype kPlace = 10;          // digits of a place in it
constexpr qsizetype kMostDigits = 15;     // of any number
constexpr qsizetype kUsualRatio = 8;      // of operators to their packed form
constexpr qsizetype kLargestRatio = 2048; // zlib reaches half of it
// The fastest level: the usual one, 6, makes pages of traces 4 to 12 % smaller and takes five times as long.
constexpr int kLevel = 1;

/// A zlib stream, which is what a page's content is packed as; empty without memory.
QByteArray packed(const QByteArray& bytes) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
      libdeflate_alloc_compressor(kLevel), &libdeflate_free_compressor);
  if (!compressor) return {};
  const auto size = static_cast<std::size_t>(bytes.size());
  QByteArray result(qsizetype(libdeflate_zlib_compress_bound(compressor.get(), size)), Qt::Uninitialized);
  const std::size_t length = libdeflate_zlib_compress(compressor.get(), bytes.constData(), size, result.data(),
                                                      static_cast<std::size_t>(result.size()));
  result.truncate(qsizetype(length));
  return result;
}

/// What a zlib stream holds; empty when it is damaged.
QByteArray unpacked(QByteArrayView stream) {
  const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> decompressor(
      libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
  if (!decompressor) return {};
  for (qsizetype ratio = kUsualRatio; ratio <= kLargestRatio; ratio *= 4) {
    QByteArray result(ratio * stream.size(), Qt::Uninitialized);
    std::size_t length = 0;
    const libdeflate_result outcome =
        libdeflate_zlib_decompress(decompressor.get(), stream.data(), static_cast<std::size_t>(stream.size()),
                                   result.data(), static_cast<std::size_t>(result.size()), &length);
    if (outcome == LIBDEFLATE_INSUFFICIENT_SPACE) continue;
    result.truncate(outcome == LIBDEFLATE_SUCCESS ? qsizetype(length) : 0);
    return result;
  }
  return {};
}

} // namespace

std::optional<PdfFile> PdfFile::parse(const QByteArray& file) {
  PdfFile result;
  result.file_ = file;
  if (!result.readTable() || !result.readContent()) return std::nullopt;
  return result;
}

/// The number that follows `words` at that place of the file, and where its digits are.
std::optional<qsizetype> PdfFile::numberAfter(const QByteArray& words, qsizetype at, Range* digits) const {
  if (at < 0 || at > file_.size() || !QByteArrayView(file_).sliced(at).startsWith(words)) return std::nullopt;
  const qsizetype begin = at + words.size();
  qsizetype end = begin;
  while (end < file_.size() && end - begin < kMostDigits && file_[end] >= '0' && file_[end] <= '9')
    ++end;
  if (end == begin) return std::nullopt;
  if (digits != nullptr) *digits = {begin, end};
  return file_.sliced(begin, end - begin).toLongLong();
}

std::optional<qsizetype> PdfFile::placeOf(qsizetype object) const {
  if (object <= 0 || object >= qsizetype(objects_.size())) return std::nullopt;
  return objects_[std::size_t(object)];
}

bool PdfFile::readTable() {
  const auto table = numberAfter("startxref\n", file_.lastIndexOf("startxref\n"), &tablePlace_);
  if (!table) return false;
  Range digits;
  const auto count = numberAfter("xref\n0 ", *table, &digits);
  const qsizetype rows = digits.end + 1;
  if (!count || rows > file_.size() || *count > (file_.size() - rows) / kRow) return false;
  table_ = *table;
  rows_ = {rows, rows + *count * kRow};
  for (qsizetype row = rows_.begin; row < rows_.end; row += kRow) {
    const auto place = numberAfter({}, row, &digits);
    if (!place || digits.size() != kPlace || *place > *table) return false;
    objects_.push_back(*place);
  }
  return rows_.end <= tablePlace_.begin;
}

bool PdfFile::readContent() {
  const qsizetype page = file_.indexOf(" 0 obj\n<<\n/Type /Page\n");
  const qsizetype words = page < 0 ? page : file_.indexOf("/Contents ", page);
  const auto content = numberAfter("/Contents ", words);
  const auto place = placeOf(content.value_or(0));
  if (!place) return false;
  Range digits;
  const auto length = numberAfter(QByteArray::number(*content) + " 0 obj\n<<\n/Length ", *place, &digits);
  const QByteArray before = " 0 R\n/Filter /FlateDecode\n>>\nstream\n";
  const auto lengthPlace = placeOf(length.value_or(0));
  if (!lengthPlace || !QByteArrayView(file_).sliced(digits.end).startsWith(before)) return false;
  const auto size = numberAfter(QByteArray::number(*length) + " 0 obj\n", *lengthPlace, &length_);
  stream_.begin = digits.end + before.size();
  if (!size || *size > file_.size() - stream_.begin) return false;
  stream_.end = stream_.begin + *size;
  const bool lengthIsOutside = length_.end <= stream_.begin || stream_.end <= length_.begin;
  if (!lengthIsOutside || std::max(length_.end, stream_.end) > table_) return false;
  content_ = unpacked(QByteArrayView(file_).sliced(stream_.begin, *size));
  return !content_.isEmpty();
}

QByteArray PdfFile::withContent(const QByteArray& content) const {
  struct Change {
    Range place;
    QByteArray bytes;
  };
  const QByteArray stream = packed(content);
  if (stream.isEmpty()) return {};
  std::array<Change, 2> changes{Change{stream_, stream}, Change{length_, QByteArray::number(stream.size())}};
  std::sort(changes.begin(), changes.end(),
            [](const Change& a, const Change& b) { return a.place.begin < b.place.begin; });
  const auto moved = [&changes](qsizetype place) {
    qsizetype by = 0;
    for (const Change& change : changes)
      by += change.place.begin < place ? change.bytes.size() - change.place.size() : 0;
    return QByteArray::number(place + by);
  };

  const QByteArrayView old(file_);
  QByteArray result;
  result.reserve(old.size() + stream.size());
  qsizetype done = 0;
  for (const Change& change : changes) {
    result.append(old.sliced(done, change.place.begin - done)).append(change.bytes);
    done = change.place.end;
  }
  result.append(old.sliced(done, rows_.begin - done));
  for (std::size_t k = 0; k < objects_.size(); ++k) {
    const qsizetype row = rows_.begin + qsizetype(k) * kRow;
    result.append(moved(objects_[k]).rightJustified(kPlace, '0')).append(old.sliced(row + kPlace, kRow - kPlace));
  }
  result.append(old.sliced(rows_.end, tablePlace_.begin - rows_.end));
  return result.append(moved(table_)).append(old.sliced(tablePlace_.end));
}

} // namespace xov
