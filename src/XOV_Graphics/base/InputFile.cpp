#include "XOV_Graphics/base/InputFile.h"

#include "XOV_Graphics/base/ByteNames.h"

#include <QFileInfo>

#include <algorithm>

namespace xov {

namespace {

constexpr qint64 kChunkBytes = 1 << 20;

Error tooLarge(const QString& name, const QString& size, qint64 mostBytes) {
  return {QStringLiteral("%1: %2 bytes, expected at most %3").arg(name, size, QString::number(mostBytes))};
}

} // namespace

Status openForReading(QFile& file, InputKind kind) {
  const QString name = file.fileName();
  if (name.isEmpty()) return Error{QStringLiteral("there is no file name")};
  const QFileInfo info(name);
  if (info.isDir()) return Error{name + QStringLiteral(": is a folder, expected a file")};
  if (kind == InputKind::OrdinaryFile && info.exists() && !info.isFile())
    return Error{name + QStringLiteral(": is not an ordinary file")};
  return openByName(file, QIODevice::ReadOnly | QIODevice::Unbuffered);
}

Result<QByteArray> readToEnd(QFileDevice& file, const QString& name, qint64 mostBytes) {
  // Files tell their size; pipes, and what the system makes up while it is read, do not.
  const qint64 known = file.isSequential() ? 0 : file.size() - file.pos();
  if (known > mostBytes) return tooLarge(name, QString::number(known), mostBytes);
  QByteArray all;
  all.reserve(known + kChunkBytes);
  while (true) {
    const qsizetype before = all.size();
    all.resize(before + kChunkBytes);
    const qint64 got = file.read(all.data() + before, kChunkBytes);
    all.resize(before + std::max<qint64>(0, got));
    if (all.size() > mostBytes) return tooLarge(name, "more than " + QString::number(mostBytes), mostBytes);
    if (got > 0) continue;
    // At the end of a pipe nothing is read, as after a failure.
    if (file.error() == QFileDevice::NoError) return all;
    return Error{name + QStringLiteral(": cannot be read: ") + file.errorString()};
  }
}

Result<QByteArray> readWholeFile(const QString& path, qint64 mostBytes) {
  QFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  return readToEnd(file, path, mostBytes);
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
