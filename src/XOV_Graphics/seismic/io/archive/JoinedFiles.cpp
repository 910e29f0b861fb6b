#include "XOV_Graphics/seismic/io/archive/JoinedFiles.h"

#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"

#include <QDateTime>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>

namespace xov {

namespace {

std::int64_t modifiedMsOf(const QString& path) { return QFileInfo(path).lastModified().toMSecsSinceEpoch(); }

template <typename Number>
void appendNumber(QByteArray& bytes, Number number) {
  const Number stored = qToLittleEndian(number);
  bytes.append(reinterpret_cast<const char*>(&stored), sizeof stored);
}

} // namespace

Result<JoinedFile> joinedFile(const QString& path) {
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  const ArchiveIdentity identity = identityOf(file, modifiedMsOf(path));
  if (Status status = readingStatus(file, path); !status) return Error{status.error()};
  return JoinedFile{path, identity};
}

ArchiveIdentity jointIdentity(const std::vector<JoinedFile>& files) {
  if (files.size() == 1) return files.front().identity;
  ArchiveIdentity joint;
  QByteArray all;
  for (const JoinedFile& file : files) {
    joint.size += file.identity.size;
    joint.modifiedMs = std::max(joint.modifiedMs, file.identity.modifiedMs);
    appendNumber(all, file.identity.size);
    appendNumber(all, file.identity.modifiedMs);
    appendNumber(all, file.identity.beginSum);
  }
  joint.beginSum = crc32c(all);
  return joint;
}

JoinedFiles::JoinedFiles(std::vector<JoinedFile> files) : files_(std::move(files)) {
  qint64 end = 0;
  for (const JoinedFile& file : files_)
    ends_.push_back(end += file.identity.size);
}

JoinedFiles::~JoinedFiles() = default;

bool JoinedFiles::turnTo(std::size_t number) {
  if (file_ && number_ == number) return true;
  const JoinedFile& wanted = files_[number];
  file_.emplace(wanted.path);
  number_ = number;
  const Status opened = openForReading(*file_);
  if (opened && identityOf(*file_, modifiedMsOf(wanted.path)) == wanted.identity) return true;
  const Status read = opened ? readingStatus(*file_, wanted.path) : opened;
  fail(read ? wanted.path + QStringLiteral(": has changed while it was read") : read.error());
  file_.reset();
  return false;
}

void JoinedFiles::fail(const QString& fault) {
  setErrorString(fault);
  if (fault_.isEmpty()) fault_ = fault;
}

qint64 JoinedFiles::readData(char* bytes, qint64 most) {
  qint64 done = 0;
  while (done < most) {
    const qint64 place = pos() + done;
    const auto number = std::size_t(std::ranges::upper_bound(ends_, place) - ends_.begin());
    if (number == files_.size()) break;
    const qint64 begin = ends_[number] - files_[number].identity.size;
    if (!turnTo(number) || !file_->seek(place - begin)) return done > 0 ? done : -1;
    const qint64 got = file_->read(bytes + done, std::min(most - done, ends_[number] - place));
    if (got <= 0) {
      const Status read = readingStatus(*file_, files_[number].path);
      fail(read ? files_[number].path + QStringLiteral(": has become shorter while it was read") : read.error());
      return done > 0 ? done : -1;
    }
    done += got;
  }
  return done;
}

qint64 JoinedFiles::writeData(const char* /*bytes*/, qint64 /*count*/) { return -1; }

} // namespace xov
