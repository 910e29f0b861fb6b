#pragma once

#include <QByteArrayView>
#include <QIODevice>

#include <vector>

namespace xov {

/// Shows stretches of a file without ever holding more than a few megabytes of it. Made for walking forwards; going
/// back costs a read.
class FileWindow {
public:
  /// So many bytes that one walks through are read together.
  static constexpr qsizetype kWalked = qsizetype(2) << 20;

  explicit FileWindow(QIODevice& device, qsizetype chunkBytes = kWalked)
      : device_(device),
        size_(device.size()),
        chunkBytes_(chunkBytes) {}

  /// One of the same file that reads so many bytes together. Windows of a file are moved one at a time.
  FileWindow another(qsizetype chunkBytes) const { return FileWindow(device_, chunkBytes); }

  qint64 size() const { return size_; }

  /// The bytes from `offset` on: `wanted` of them or more; fewer only where the file ends or cannot be read. Valid
  /// until the next call.
  QByteArrayView at(qint64 offset, qsizetype wanted);

private:
  void load(qint64 offset, qsizetype wanted);

  QIODevice& device_;
  qint64 size_;
  qsizetype chunkBytes_;
  std::vector<char> buffer_;
  qint64 start_ = 0;
  qsizetype length_ = 0;
};

} // namespace xov
