#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QByteArray>
#include <QFile>

#include <span>

namespace xov {

/// What a reader takes beside ordinary files.
enum class InputKind : std::uint8_t {
  OrdinaryFile, ///< nothing: a pipe would block, a device may have no end
  AlsoPipes,    ///< pipes and devices: what is read once from its start to its end
};

/// A file that is read. Where QFile hands out what came before an error of the disk as if the file ended there, and
/// forgets the error with the next seek, this reads on until it is given all that was asked for, the end or the
/// error, and keeps that.
class XOV_EXPORT CheckedFile : public QFile {
public:
  using QFile::QFile;

  /// The system's reason for the first read that failed; empty while none did.
  const QString& readingFault() const { return fault_; }

protected:
  /// Reads on until there is as much, the end or an error.
  qint64 readData(char* bytes, qint64 most) override;

private:
  QString fault_;
};

/// A device that is read and no file of the system, and yet knows why it gave less than was asked for.
class XOV_EXPORT ReadingFaults {
public:
  virtual ~ReadingFaults() = default;
  /// One line that names what failed; empty while nothing did.
  virtual QString readingFault() const = 0;
};

/// Whether all that was read of a device so far is what it holds. A reader asks this when it found the end, or what
/// it cannot understand: the error names `name` and the system's reason.
XOV_EXPORT Status readingStatus(const QIODevice& device, const QString& name);

/// Whether an error says that the system did not give a file's bytes, or the memory for them, and not what is wrong
/// with them.
XOV_EXPORT bool isReadingFailure(const QString& error);

/// What `read` makes of a device, unless the device failed meanwhile: then its error, whatever was made of the rest.
template <typename Read>
auto readChecked(const QIODevice& device, const QString& name, Read&& read) -> decltype(read()) {
  auto result = read();
  if (Status status = readingStatus(device, name); !status) return Error{status.error()};
  return result;
}

/// Opens `file` for reading, without a buffer: samples go straight to where they are kept. Refuses folders, and what
/// `kind` does not take, in one line that names the file.
XOV_EXPORT Status openForReading(QFile& file, InputKind kind = InputKind::OrdinaryFile);

/// All that an open file or pipe holds from its position on. Refuses more than `mostBytes`: a file at once, a pipe
/// when a megabyte more has come out of it. `name` stands for it in errors.
XOV_EXPORT Result<QByteArray> readToEnd(QFileDevice& file, const QString& name, qint64 mostBytes);

/// Reads a whole ordinary file of at most `mostBytes`. The size of a larger one is in the error.
XOV_EXPORT Result<QByteArray> readWholeFile(const QString& path, qint64 mostBytes);

/// Fills `bytes` from the device's position on; false when the device ends or fails before they are full.
bool readFully(QIODevice& device, std::span<char> bytes);

} // namespace xov
