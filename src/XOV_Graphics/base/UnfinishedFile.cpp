#include "XOV_Graphics/base/UnfinishedFile.h"

#ifdef Q_OS_UNIX

#include <QHash>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio> // rename()
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace xov {

namespace {

using Clock = std::chrono::steady_clock;

constexpr mode_t kNewPermissions = 0666; // less what the user's mask takes away
constexpr mode_t kPermissionBits = 0777;
constexpr int kMostNames = 100;
constexpr int kMostSyncs = 10'000; // that a signal interrupts

// ".xov-" and what nobody can guess and ".part"; short, because the target's own name may be as long as names can be.
constexpr std::string_view kNameBegin = ".xov-";
constexpr std::string_view kNameEnd = ".part";
constexpr std::size_t kRandomLetters = 16;
constexpr std::string_view kLetters = "0123456789abcdefghijklmnopqrstuvwxyz";

QByteArray randomName() {
  QByteArray name(kNameBegin.data(), qsizetype(kNameBegin.size()));
  for (std::size_t i = 0; i < kRandomLetters; ++i)
    name += kLetters[QRandomGenerator::system()->bounded(quint32(kLetters.size()))];
  return name.append(kNameEnd.data(), qsizetype(kNameEnd.size()));
}

bool isUnfinishedName(std::string_view name) {
  if (name.size() != kNameBegin.size() + kRandomLetters + kNameEnd.size()) return false;
  if (!name.starts_with(kNameBegin) || !name.ends_with(kNameEnd)) return false;
  const std::string_view letters = name.substr(kNameBegin.size(), kRandomLetters);
  return std::all_of(letters.begin(), letters.end(),
                     [](char c) { return kLetters.find(c) != std::string_view::npos; });
}

bool isOwnOrdinaryFile(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1;
}

// A writer holds the lock for as long as it lives. It asks for it once it has made the file, so that it may find that
// this was faster, and then makes another one.
void removeWhenAbandoned(const QByteArray& file) {
  const int descriptor = ::open(file.constData(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat opened = {}, named = {};
  const bool isAbandoned = ::fstat(descriptor, &opened) == 0 && isOwnOrdinaryFile(opened) &&
                           ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::lstat(file.constData(), &named) == 0 &&
                           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev;
  if (isAbandoned) ::unlink(file.constData());
  ::close(descriptor);
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

void removeAllAbandoned(const QByteArray& folder) {
  const std::unique_ptr<DIR, CloseFolder> entries(::opendir(folder.constData()));
  if (!entries) return;
  while (const dirent* entry = ::readdir(entries.get())) {
    const auto* const name = static_cast<const char*>(entry->d_name);
    if (isUnfinishedName(name)) removeWhenAbandoned(folder + name);
  }
}

/// When a folder was looked through, so that this takes at most a hundredth of the time.
class Looks {
public:
  bool isDue(const QByteArray& folder) {
    const std::lock_guard lock(mutex_);
    const auto found = next_.constFind(folder);
    return found == next_.cend() || Clock::now() >= *found;
  }
  void tookSince(Clock::time_point begin, const QByteArray& folder) {
    constexpr int kShare = 100;
    constexpr qsizetype kMostFolders = 256;
    const Clock::time_point end = Clock::now();
    const std::lock_guard lock(mutex_);
    if (next_.size() >= kMostFolders) next_.clear();
    next_[folder] = end + (end - begin) * kShare;
  }

private:
  std::mutex mutex_;
  QHash<QByteArray, Clock::time_point> next_;
};

} // namespace

QByteArray folderOfFile(const QByteArray& file) {
  const qsizetype slash = file.lastIndexOf('/');
  return slash < 0 ? QByteArrayLiteral("./") : file.first(slash + 1);
}

void removeUnfinishedFiles(const QByteArray& folder) {
  static Looks looks;
  if (!looks.isDue(folder)) return;
  const Clock::time_point begin = Clock::now();
  removeAllAbandoned(folder);
  looks.tookSince(begin, folder);
}

UnfinishedFile::UnfinishedFile(QByteArray target, Name name)
    : target_(std::move(target)),
      folder_(folderOfFile(target_)) {
  open(name);
}

UnfinishedFile::~UnfinishedFile() {
  if (!name_.isEmpty()) ::unlink(name_.constData());
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool UnfinishedFile::failed() {
  failure_ = errno;
  return false;
}

void UnfinishedFile::open(Name name) {
  const bool isOpen = (name == Name::WhereNeeded && openWithoutName()) || openNamed();
  if (!isOpen || givePermissions()) return;
  ::close(descriptor_);
  descriptor_ = -1;
}

// What has no name is gone when the program is.
bool UnfinishedFile::openWithoutName() {
#ifdef O_TMPFILE
  descriptor_ = ::open(folder_.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kNewPermissions);
  if (descriptor_ < 0) return failed();
  const QByteArray self = "/proc/self/fd/" + QByteArray::number(descriptor_);
  struct stat status = {};
  if (::stat(self.constData(), &status) == 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return true;
  ::close(descriptor_); // it could not be given a name
  descriptor_ = -1;
#endif
  return false;
}

bool UnfinishedFile::openNamed() {
  for (int i = 0; i < kMostNames; ++i) {
    const QByteArray name = folder_ + randomName();
    descriptor_ = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kNewPermissions);
    if (descriptor_ < 0) {
      if (errno == EEXIST) continue;
      return failed();
    }
    struct stat status = {};
    ::flock(descriptor_, LOCK_EX); // file systems without locks do without
    if (::fstat(descriptor_, &status) == 0 && status.st_nlink > 0) {
      name_ = name;
      return true;
    }
    ::close(descriptor_); // another program took it for abandoned
    descriptor_ = -1;
  }
  return failed();
}

bool UnfinishedFile::givePermissions() {
  struct stat old = {}, own = {};
  if (::stat(target_.constData(), &old) != 0) return errno == ENOENT || failed();
  // What may not be written is not replaced either.
  if (::access(target_.constData(), W_OK) != 0 || ::fstat(descriptor_, &own) != 0) return failed();
  const mode_t wanted = old.st_mode & kPermissionBits;
  return (own.st_mode & kPermissionBits) == wanted || ::fchmod(descriptor_, wanted) == 0 || failed();
}

bool UnfinishedFile::sync() {
  for (int i = 0; i < kMostSyncs; ++i) {
#ifdef Q_OS_DARWIN
    if (::fsync(descriptor_) == 0) return true;
#else
    if (::fdatasync(descriptor_) == 0) return true;
#endif
    if (errno == EINVAL || errno == ENOTSUP || errno == ENOSYS) return true; // there is nothing to be made to last
    if (errno != EINTR) break;
  }
  return failed();
}

bool UnfinishedFile::link(const QByteArray& name) const {
  const QByteArray self = "/proc/self/fd/" + QByteArray::number(descriptor_);
  return ::linkat(AT_FDCWD, self.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0;
}

bool UnfinishedFile::take() {
  if (!sync()) return false;
  for (int i = 0; name_.isEmpty() && i < kMostNames; ++i) {
    if (link(target_)) return true; // there was none
    if (errno != EEXIST) return failed();
    QByteArray name = folder_ + randomName();
    if (link(name))
      name_ = std::move(name);
    else if (errno != EEXIST)
      return failed();
  }
  if (::rename(name_.constData(), target_.constData()) != 0) return failed();
  name_.clear();
  return true;
}

} // namespace xov

#endif
