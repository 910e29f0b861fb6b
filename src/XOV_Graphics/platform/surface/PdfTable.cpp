#include "XOV_Graphics/platform/surface/PdfTable.h"

#include <algorithm>

namespace xov {

namespace {

constexpr qsizetype kRow = 20;        // bytes of a row of the table: "0000000015 00000 n \n"
constexpr qsizetype kPlace = 10;      // digits of a place in it
constexpr qsizetype kMostDigits = 15; // of any number

} // namespace

std::optional<qsizetype> numberAfter(QByteArrayView file, const QByteArray& words, qsizetype at, ByteRange* digits) {
  if (at < 0 || at > file.size() || !file.sliced(at).startsWith(words)) return std::nullopt;
  const qsizetype begin = at + words.size();
  qsizetype end = begin;
  while (end < file.size() && end - begin < kMostDigits && file[end] >= '0' && file[end] <= '9')
    ++end;
  if (end == begin) return std::nullopt;
  if (digits != nullptr) *digits = {begin, end};
  return file.sliced(begin, end - begin).toLongLong();
}

std::optional<PdfTable> PdfTable::parse(const QByteArray& file) {
  PdfTable result;
  const auto begin = numberAfter(file, "startxref\n", file.lastIndexOf("startxref\n"), &result.beginDigits_);
  if (!begin) return std::nullopt;
  result.begin_ = *begin;
  ByteRange digits;
  const auto count = numberAfter(file, "xref\n0 ", *begin, &digits);
  const qsizetype rows = digits.end + 1;
  if (!count || rows > file.size() || *count > (file.size() - rows) / kRow) return std::nullopt;
  result.rows_ = {rows, rows + *count * kRow};
  for (qsizetype row = rows; row < result.rows_.end; row += kRow) {
    const auto place = numberAfter(file, {}, row, &digits);
    if (!place || digits.size() != kPlace || *place > *begin) return std::nullopt;
    result.objects_.push_back(*place);
  }
  if (result.rows_.end > result.beginDigits_.begin) return std::nullopt;
  return result;
}

std::optional<qsizetype> PdfTable::placeOf(qsizetype object) const {
  if (object <= 0 || object >= qsizetype(objects_.size())) return std::nullopt;
  return objects_[std::size_t(object)];
}

QByteArray PdfTable::withChanges(const QByteArray& file, std::vector<PdfChange> changes) const {
  std::sort(changes.begin(), changes.end(),
            [](const PdfChange& a, const PdfChange& b) { return a.place.begin < b.place.begin; });
  qsizetype free = 0;
  std::erase_if(changes, [&free](const PdfChange& change) {
    if (change.place.begin < free) return true;
    free = change.place.end;
    return false;
  });
  const auto moved = [&changes](qsizetype place) {
    qsizetype by = 0;
    for (const PdfChange& change : changes)
      by += change.place.begin < place ? change.bytes.size() - change.place.size() : 0;
    return QByteArray::number(place + by);
  };
  const QByteArrayView old(file);
  qsizetype size = file.size();
  for (const PdfChange& change : changes)
    size += change.bytes.size();
  QByteArray result;
  result.reserve(size);
  qsizetype done = 0;
  for (const PdfChange& change : changes) {
    result.append(old.sliced(done, change.place.begin - done)).append(change.bytes);
    done = change.place.end;
  }
  result.append(old.sliced(done, rows_.begin - done));
  for (std::size_t k = 0; k < objects_.size(); ++k) {
    const qsizetype row = rows_.begin + qsizetype(k) * kRow;
    result.append(moved(objects_[k]).rightJustified(kPlace, '0')).append(old.sliced(row + kPlace, kRow - kPlace));
  }
  result.append(old.sliced(rows_.end, beginDigits_.begin - rows_.end));
  return result.append(moved(begin_)).append(old.sliced(beginDigits_.end));
}

} // namespace xov
