#pragma once

#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/io/archive/ExtremesFile.h"

#include <QIODevice>
#include <QStringList>

#include <optional>
#include <vector>

namespace xov {

/// One of the files that are read as one, and what it was when it was first looked at.
struct JoinedFile {
  QString path;
  ArchiveIdentity identity;
};

/// Looks at a file; one line where it cannot be opened.
Result<JoinedFile> joinedFile(const QString& path);

/// What tells files that are read as one from others: of one file its own.
ArchiveIdentity jointIdentity(const std::vector<JoinedFile>& files);

/// Files one after the other as if they were one, of which one at a time is open. Reading stops in front of a file
/// that is no longer what it was.
class JoinedFiles final : public QIODevice, public ReadingFaults {
public:
  explicit JoinedFiles(std::vector<JoinedFile> files);
  ~JoinedFiles() override;

  bool isSequential() const override { return false; }
  qint64 size() const override { return ends_.empty() ? 0 : ends_.back(); }
  /// Names the file among them that failed first.
  QString readingFault() const override { return fault_; }

protected:
  qint64 readData(char* bytes, qint64 most) override;
  qint64 writeData(const char* bytes, qint64 count) override;

private:
  bool turnTo(std::size_t number);
  void fail(const QString& fault);

  std::vector<JoinedFile> files_;
  std::vector<qint64> ends_; // of each file, counted from the beginning of the first
  std::optional<CheckedFile> file_;
  std::size_t number_ = 0; // of the file that is open
  QString fault_;
};

} // namespace xov
