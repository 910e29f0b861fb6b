#include "XOV_Graphics/base/InputFile.h"

#include <QFileInfo>

namespace xov {

Status openForReading(QFile& file) {
  const QString name = file.fileName();
  const QFileInfo info(name);
  if (info.isDir()) return Error{name + ": is a folder, expected a file"};
  if (info.exists() && !info.isFile()) return Error{name + ": is not an ordinary file"};
  // Unbuffered: samples go straight to where they are kept.
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    return Error{name + ": cannot be opened: " + file.errorString()};
  return {};
}

bool readFully(QIODevice& device, std::span<char> bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const qint64 got = device.read(bytes.data() + done, qint64(bytes.size() - done));
    if (got <= 0) return false;
    done += std::size_t(got);
  }
  return true;
}

} // namespace xov
