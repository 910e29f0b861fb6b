#pragma once

#include <QByteArray>

#include <cstdint>

namespace xov {

/// A file in the making: it has no name, or one that nobody can guess, until take() gives it its place. Where the
/// program dies, what is left beside the place is known by its name and by the lock that nobody holds any more;
/// removeUnfinishedFiles() takes it away.
class UnfinishedFile {
public:
  /// Not all file systems know files without a name.
  enum class Name : std::uint8_t { WhereNeeded, Always };

  /// Beside the file `target`, whose permissions it gets where that is there, and else those of the user's mask.
  explicit UnfinishedFile(QByteArray target, Name name = Name::WhereNeeded);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  /// Whether it is there, open for writing; else failure() says why not.
  bool isOpen() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }
  /// The system's number of what failed last, or 0.
  int failure() const { return failure_; }

  /// Makes what was written outlast a loss of power, then takes the place of the target in one step. False when the
  /// system does either not; what stood there is then there yet.
  bool take();

private:
  void open(Name name);
  bool openWithoutName();
  bool openNamed();
  bool givePermissions();
  bool sync();
  bool link(const QByteArray& name) const;
  bool failed();

  QByteArray target_;
  QByteArray folder_; // ends with a slash
  QByteArray name_;   // empty while it has none
  int descriptor_ = -1;
  int failure_ = 0;
};

/// Removes what programs that have died left of unfinished files in a folder: files of this user, of such a name,
/// that no program has open for writing. Folders that take long to look through are looked through seldom.
void removeUnfinishedFiles(const QByteArray& folder);

/// The folder of a file, with a slash at its end where it is not the one that the program is in.
QByteArray folderOfFile(const QByteArray& file);

} // namespace xov
