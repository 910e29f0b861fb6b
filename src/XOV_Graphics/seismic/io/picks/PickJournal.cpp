#include "XOV_Graphics/seismic/io/picks/PickJournal.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"
#include "XOV_Graphics/seismic/io/picks/PickTable.h"

#include <QDir>

#include <cerrno>
#include <unistd.h>

namespace xov {

namespace {

constexpr qint64 kLargestJournal = qint64(1) << 30;
constexpr int kMostJournals = 1000;
constexpr qsizetype kSumDigits = 8;
constexpr int kHexadecimal = 16;

const QByteArray kDocumentWord = QByteArrayLiteral("document ");
const QByteArray kSetWord = QByteArrayLiteral("set ");
const QByteArray kRemoveWord = QByteArrayLiteral("remove ");

// A line begins with the check value of what follows.
QByteArray summedLine(const QByteArray& text) {
  return QByteArray::number(crc32c(text), kHexadecimal).rightJustified(kSumDigits, '0') + ' ' + text + '\n';
}

std::optional<QByteArrayView> textOfLine(QByteArrayView line) {
  if (line.size() <= kSumDigits || line[kSumDigits] != ' ') return {};
  bool isNumber = false;
  const quint32 sum = line.first(kSumDigits).toByteArray().toUInt(&isNumber, kHexadecimal);
  const QByteArrayView text = line.sliced(kSumDigits + 1);
  return isNumber && sum == crc32c(text) ? std::optional(text) : std::nullopt;
}

// Texts that may hold anything, on one line.
QByteArray encodedText(const QString& text) { return text.toUtf8().toPercentEncoding("/"); }
QString decodedText(QByteArrayView text) {
  return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toByteArray()));
}

bool takeStep(QByteArrayView text, RecoveredPicks& found) {
  if (text.startsWith(kDocumentWord)) {
    found.document = decodedText(text.sliced(kDocumentWord.size()));
    return true;
  }
  if (text.startsWith(kSetWord)) {
    const std::optional<Pick> pick = pickOfRow(text.sliced(kSetWord.size()));
    if (pick) found.steps.push_back({pick->id, pick});
    return pick.has_value();
  }
  if (!text.startsWith(kRemoveWord)) return false;
  found.steps.push_back({decodedText(text.sliced(kRemoveWord.size())), {}});
  return true;
}

Result<RecoveredPicks> readJournal(const QString& path) {
  const Result<QByteArray> bytes = readWholeFile(path, kLargestJournal);
  if (!bytes) return Error{bytes.error()};
  RecoveredPicks found;
  TextLines lines(*bytes);
  while (const std::optional<QByteArrayView> line = lines.next()) {
    const std::optional<QByteArrayView> text = textOfLine(*line);
    if (text && takeStep(*text, found)) continue;
    found.notes.append(
        QStringLiteral("%1: line %2 is damaged; the journal is read up to it").arg(path).arg(lines.number()));
    break;
  }
  return found;
}

QByteArray setLine(const Pick& pick) { return kSetWord + pickRow(pick); }
QByteArray removeLine(const QString& id) { return kRemoveWord + encodedText(id); }

bool isOnDisk(int descriptor) {
  while (::fsync(descriptor) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

QString lockPathOf(const QString& journal) { return journal + QStringLiteral(".lock"); }

} // namespace

PickJournal::PickJournal(QString folder) : folder_(std::move(folder)) {}

PickJournal::~PickJournal() = default;

QStringList PickJournal::leftBehind() const {
  const QDir folder(folder_);
  QStringList found;
  for (const QString& name : folder.entryList({QStringLiteral("picks-*.journal")}, QDir::Files, QDir::Name)) {
    const QString path = folder.filePath(name);
    if (path == this->path()) continue;
    QLockFile lock(lockPathOf(path));
    lock.setStaleLockTime(0);
    if (lock.tryLock(0)) found.append(path);
  }
  return found;
}

Result<RecoveredPicks> PickJournal::read(const QString& path) noexcept {
  return guarded(path, [&] { return readJournal(path); });
}

// The first name that no running program holds and no dead one has left.
Status PickJournal::open() {
  if (file_.isOpen()) return {};
  const QDir folder(folder_);
  if (!folder.mkpath(QStringLiteral("."))) return Error{folder_ + ": the folder cannot be made"};
  for (int number = 1; number <= kMostJournals; ++number) {
    const QString path = folder.filePath(QStringLiteral("picks-%1.journal").arg(number));
    auto lock = std::make_unique<QLockFile>(lockPathOf(path));
    lock->setStaleLockTime(0);
    if (QFile::exists(path)) continue;
    errno = 0;
    if (!lock->tryLock(0)) {
      if (lock->error() == QLockFile::LockFailedError) continue;
      return Error{path + ": the journal of picks cannot be locked: " + qt_error_string(errno)};
    }
    file_.setFileName(path);
    if (!file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
      return Error{path + ": " + file_.errorString()};
    lock_ = std::move(lock);
    Status begun = write(kDocumentWord + encodedText(document_));
    if (!begun) clear(); // the next change begins it again
    return begun;
  }
  return Error{folder_ + ": holds too many journals of picks"};
}

Status PickJournal::write(const QByteArray& line) {
  const QByteArray summed = summedLine(line);
  const qint64 sound = file_.pos();
  errno = 0;
  if (file_.write(summed) == summed.size() && isOnDisk(file_.handle())) return {};
  const QString reason = errno != 0 ? qt_error_string(errno) : file_.errorString();
  // Half a line would end what is read; where it stays for now, the next line takes its place.
  cutTo(sound);
  return Error{file_.fileName() + ": the journal of picks cannot be written: " + reason};
}

void PickJournal::cutTo(qint64 end) {
  file_.resize(end);
  file_.seek(end);
}

Status PickJournal::append(const PickChange& change) noexcept {
  return guarded(folder_, [&]() -> Status {
    if (!change.before && !change.after) return {};
    if (Status status = open(); !status) return status;
    return write(change.after ? setLine(*change.after) : removeLine(change.before->id));
  });
}

Result<RecoveredPicks> PickJournal::recover(const QString& path, PickDocument& document) noexcept {
  return guarded(path, [&]() -> Result<RecoveredPicks> {
    Result<RecoveredPicks> found = readJournal(path);
    if (!found) return found;
    document_ = found->document;
    if (Status status = open(); !status) return Error{status.error()};
    const qint64 before = file_.pos();
    for (const RecoveredPicks::Step& step : found->steps) {
      const Status status = write(step.pick ? setLine(*step.pick) : removeLine(step.id));
      if (status) continue;
      cutTo(before); // some of them, read after the others, would undo these
      return Error{status.error()};
    }
    for (const RecoveredPicks::Step& step : found->steps)
      document.restore(step.id, step.pick);
    QFile::remove(path);
    return found;
  });
}

void PickJournal::clear() {
  if (!file_.isOpen()) return;
  file_.close();
  file_.remove();
  file_.setFileName(QString());
  lock_.reset();
}

} // namespace xov
