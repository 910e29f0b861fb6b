#include "XOV_Graphics/base/InputFile.h"

#include "XOV_Graphics/base/ByteNames.h"
#include "XOV_Graphics/base/Guarded.h"

#include <QFileInfo>

#include <algorithm>

namespace xov {

namespace {

constexpr qint64 kChunkBytes = 1 << 20;
constexpr qint64 kBytesBeyond = 64; // what a file has grown by since it told its size shows in these
constexpr QLatin1StringView kNotRead(": cannot be read: ");
constexpr QLatin1StringView kNotOpened(": cannot be opened: ");

Error tooLarge(const QString& name, const QString& size, qint64 mostBytes) {
  return {QStringLiteral("%1: %2 bytes, expected at most %3").arg(name, size, QString::number(mostBytes))};
}

} // namespace

qint64 CheckedFile::readData(char* bytes, qint64 most) {
  qint64 done = 0;
  while (done < most) {
    const qint64 got = QFile::readData(bytes + done, most - done);
    if (got < 0 && error() != NoError && fault_.isEmpty()) fault_ = errorString();
    if (got <= 0) return done > 0 ? done : got;
    done += got;
    if (isSequential()) break; // what has come is not kept back for what may come
  }
  return done;
}

Status readingStatus(const QIODevice& device, const QString& name) {
  const auto* const checked = dynamic_cast<const CheckedFile*>(&device);
  if (checked != nullptr && !checked->readingFault().isEmpty())
    return Error{name + kNotRead + checked->readingFault()};
  const auto* const file = qobject_cast<const QFileDevice*>(&device);
  if (file != nullptr && file->error() == QFileDevice::ReadError) return Error{name + kNotRead + file->errorString()};
  const auto* const other = dynamic_cast<const ReadingFaults*>(&device);
  if (other != nullptr && !other->readingFault().isEmpty()) return Error{other->readingFault()};
  return {};
}

bool isReadingFailure(const QString& error) {
  return error.contains(kNotRead) || error.contains(kNotOpened) ||
         error.endsWith(QLatin1StringView(kNotEnoughMemory));
}

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
  all.reserve(known > 0 ? known + kBytesBeyond : kChunkBytes);
  while (true) {
    const qsizetype before = all.size();
    const qsizetype spare = all.capacity() - before;
    all.resize(before + (spare > 0 ? spare : kChunkBytes));
    const qint64 got = file.read(all.data() + before, all.size() - before);
    all.resize(before + std::max<qint64>(0, got));
    if (all.size() > mostBytes) return tooLarge(name, "more than " + QString::number(mostBytes), mostBytes);
    if (got > 0) continue;
    // At the end of a pipe nothing is read, as after a failure.
    if (Status status = readingStatus(file, name); !status) return Error{status.error()};
    return all;
  }
}

Result<QByteArray> readWholeFile(const QString& path, qint64 mostBytes) {
  CheckedFile file(path);
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
