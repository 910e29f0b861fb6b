#include "apps/xov/inputs/InputFiles.h"

#include "apps/xov/terminal/System.h"

#include <QTemporaryFile>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/seismic/io/Readers.h>
#include <vector>

namespace xov::cli {

namespace {

constexpr qsizetype kChunkBytes = 1 << 20;

bool isStandardInput(const QString& name) { return name == QLatin1String("-"); }

QString spokenName(const QString& name) { return isStandardInput(name) ? QStringLiteral("standard input") : name; }

bool comesInOrder(const QString& name) { return isStandardInput(name) ? standardInputIsPipe() : isPipe(name); }

Status spool(QFile& pipe, QTemporaryFile& file, const QString& name) {
  if (!file.open())
    return Error{name + QStringLiteral(": there is no place for a temporary file: ") + file.errorString()};
  std::vector<char> chunk(static_cast<std::size_t>(kChunkBytes));
  while (true) {
    const qint64 got = pipe.read(chunk.data(), kChunkBytes);
    if (got == 0 || (got < 0 && pipe.error() == QFileDevice::NoError)) break; // the end of a pipe
    if (got < 0) return Error{name + QStringLiteral(": cannot be read: ") + pipe.errorString()};
    if (file.write(chunk.data(), got) != got)
      return Error{name + QStringLiteral(": cannot be kept in a temporary file: ") + file.errorString()};
  }
  if (file.flush() && file.seek(0)) return {};
  return Error{name + QStringLiteral(": cannot be kept in a temporary file: ") + file.errorString()};
}

// What is read of a pipe or standard input.
template <typename File, typename ReadDevice>
Result<File> readStream(const QString& name, ReadDevice readDevice) {
  const QString spoken = spokenName(name);
  const QString path = isStandardInput(name) ? QStringLiteral("stdin") : name;
  CheckedFile stream(name);
  const bool open = isStandardInput(name) ? stream.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered)
                                          : stream.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  if (!open) return Error{spoken + QStringLiteral(": cannot be opened: ") + stream.errorString()};
  if (!comesInOrder(name)) {
    if (stream.isSequential()) return Error{spoken + QStringLiteral(": is neither a file nor a pipe")};
    return readDevice(stream, spoken, path);
  }
  QTemporaryFile spooled;
  if (Status status = spool(stream, spooled, spoken); !status) return Error{status.error()};
  CheckedFile again;
  if (!again.open(spooled.handle(), QIODevice::ReadOnly | QIODevice::Unbuffered))
    return Error{spoken + QStringLiteral(": cannot be read again: ") + again.errorString()};
  return readDevice(again, spoken, path);
}

} // namespace

Result<SeismogramFile> readInputFile(const QString& name, const SeismogramReadOptions& options) {
  if (!isStandardInput(name) && !isPipe(name)) return readSeismogramFile(name, options);
  return readStream<SeismogramFile>(name, [&options](QIODevice& device, const QString& spoken, const QString& path) {
    return readSeismogramDevice(device, spoken, path, options);
  });
}

Result<SeismogramFile> InputReader::next() {
  if (next_ == firstAhead_ + qsizetype(ahead_.size())) readAhead();
  return std::move(ahead_[std::size_t(next_++ - firstAhead_)]);
}

void InputReader::readAhead() {
  constexpr qsizetype kAhead = 32;
  const auto isFile = [this](qsizetype k) { return !isStandardInput(names_[k]) && !isPipe(names_[k]); };
  firstAhead_ = next_;
  ahead_.clear();
  qsizetype end = next_;
  while (end < names_.size() && end - next_ < kAhead && isFile(end))
    ++end;
  if (end > next_)
    ahead_ = readSeismogramFiles(names_.mid(next_, end - next_), options_);
  else
    ahead_.push_back(readInputFile(names_[next_], options_));
}

Result<SeismogramFileSummary> summarizeInputFile(const QString& name, const SeismogramReadOptions& options) {
  if (!isStandardInput(name) && !isPipe(name)) return summarizeSeismogramFile(name, options);
  return readStream<SeismogramFileSummary>(name,
                                           [&options](QIODevice& device, const QString& spoken, const QString& path) {
                                             return summarizeSeismogramDevice(device, spoken, path, options);
                                           });
}

} // namespace xov::cli
