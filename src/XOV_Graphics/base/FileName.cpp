#include "XOV_Graphics/base/FileName.h"

#include <QStringConverter>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace xov {

namespace {

constexpr char16_t kFirst = 0xDC80; // of byte 0x80; smaller ones are UTF-8 on their own
constexpr char16_t kLast = 0xDCFF;
constexpr char16_t kByteMask = 0xFF;
constexpr char16_t kByteBase = 0xDC00;

// A low surrogate without the high one before it.
bool isByte(const QString& name, qsizetype i) {
  const char16_t unit = name[i].unicode();
  return unit >= kFirst && unit <= kLast && !(i > 0 && name[i - 1].isHighSurrogate());
}

// How many bytes at the start of `bytes` are one character of UTF-8; 0 when they are none.
qsizetype characterBytes(QByteArrayView bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const qsizetype length = lead < 0x80   ? 1
                           : lead < 0xC2 ? 0
                           : lead < 0xE0 ? 2
                           : lead < 0xF0 ? 3
                           : lead < 0xF5 ? 4
                                         : 0;
  if (length == 0 || length > bytes.size()) return 0;
  return bytes.first(length).isValidUtf8() ? length : 0;
}

} // namespace

QString fileNameFromBytes(QByteArrayView bytes) {
  if (bytes.isValidUtf8()) return QString::fromUtf8(bytes);
  QString name;
  while (!bytes.isEmpty()) {
    const qsizetype length = characterBytes(bytes);
    if (length > 0) {
      name += QString::fromUtf8(bytes.first(length));
    } else {
      name += QChar(char16_t(kByteBase + static_cast<unsigned char>(bytes[0])));
    }
    bytes = bytes.sliced(std::max<qsizetype>(length, 1));
  }
  return name;
}

QByteArray fileNameBytes(const QString& name) {
  QByteArray bytes;
  qsizetype done = 0;
  for (qsizetype i = 0; i < name.size(); ++i) {
    if (!isByte(name, i)) continue;
    bytes += QStringView(name).sliced(done, i - done).toUtf8();
    bytes += char(name[i].unicode() & kByteMask);
    done = i + 1;
  }
  return bytes + QStringView(name).sliced(done).toUtf8();
}

bool makeFolder(const QString& name) {
  std::error_code problem;
  std::filesystem::create_directories(fileNameBytes(name).toStdString(), problem);
  return !problem;
}

bool isFolder(const QString& name) {
  std::error_code unknown;
  return std::filesystem::is_directory(fileNameBytes(name).toStdString(), unknown);
}

bool isByteName(const QString& name) {
  for (qsizetype i = 0; i < name.size(); ++i) {
    if (isByte(name, i)) return true;
  }
  return false;
}

} // namespace xov
