#include "XOV_Graphics/base/FileWindow.h"

#include <algorithm>

namespace xov {

QByteArrayView FileWindow::at(qint64 offset, qsizetype wanted) {
  if (offset < 0 || offset >= size_) return {};
  const qsizetype available = qsizetype(std::min<qint64>(wanted, size_ - offset));
  if (offset < start_ || offset + available > start_ + length_) load(offset, available);
  const qsizetype skipped = qsizetype(offset - start_);
  return skipped < length_ ? QByteArrayView(buffer_.data() + skipped, length_ - skipped) : QByteArrayView();
}

void FileWindow::load(qint64 offset, qsizetype wanted) {
  const qsizetype bytes = qsizetype(std::min<qint64>(std::max(wanted, chunkBytes_), size_ - offset));
  if (qsizetype(buffer_.size()) < bytes) buffer_.resize(std::size_t(bytes));
  start_ = offset;
  length_ = 0;
  if (!device_.seek(offset)) return;
  while (length_ < bytes) {
    const qint64 got = device_.read(buffer_.data() + length_, bytes - length_);
    if (got <= 0) return;
    length_ += qsizetype(got);
  }
}

} // namespace xov
