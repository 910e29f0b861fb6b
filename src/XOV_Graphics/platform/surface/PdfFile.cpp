#include "XOV_Graphics/platform/surface/PdfFile.h"

#include "XOV_Graphics/platform/surface/Deflate.h"
#include "XOV_Graphics/platform/surface/Inflate.h"

#include <algorithm>

namespace xov {

namespace {

// The fastest level: the usual one, 6, makes pages of traces 4 to 12 % smaller and takes five times as long.
constexpr int kLevel = 1;

} // namespace

std::optional<PdfFile> PdfFile::parse(const QByteArray& file) {
  const std::optional<PdfTable> table = PdfTable::parse(file);
  if (!table) return std::nullopt;
  PdfFile result;
  result.file_ = file;
  result.table_ = *table;
  if (!result.readContent()) return std::nullopt;
  return result;
}

bool PdfFile::readContent() {
  const qsizetype page = file_.indexOf(" 0 obj\n<<\n/Type /Page\n");
  const qsizetype words = page < 0 ? page : file_.indexOf("/Contents ", page);
  const auto content = numberAfter(file_, "/Contents ", words);
  const auto place = table_.placeOf(content.value_or(0));
  if (!place) return false;
  ByteRange digits;
  const auto length = numberAfter(file_, QByteArray::number(*content) + " 0 obj\n<<\n/Length ", *place, &digits);
  const QByteArray before = " 0 R\n/Filter /FlateDecode\n>>\nstream\n";
  const auto lengthPlace = table_.placeOf(length.value_or(0));
  if (!lengthPlace || !QByteArrayView(file_).sliced(digits.end).startsWith(before)) return false;
  const auto size = numberAfter(file_, QByteArray::number(*length) + " 0 obj\n", *lengthPlace, &length_);
  stream_.begin = digits.end + before.size();
  if (!size || *size > file_.size() - stream_.begin) return false;
  stream_.end = stream_.begin + *size;
  const bool lengthIsOutside = length_.end <= stream_.begin || stream_.end <= length_.begin;
  if (!lengthIsOutside || std::max(length_.end, stream_.end) > table_.begin()) return false;
  content_ = unpackedZlib(QByteArrayView(file_).sliced(stream_.begin, *size)).value_or(QByteArray());
  return !content_.isEmpty();
}

QByteArray PdfFile::withContent(const QByteArray& content) const {
  const QByteArray stream = packedZlib(content, kLevel);
  return table_.withChanges(file_, {{stream_, stream}, {length_, QByteArray::number(stream.size())}});
}

} // namespace xov
