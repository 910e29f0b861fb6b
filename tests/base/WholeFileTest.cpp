#include "XOV_Graphics/base/WholeFile.h"

#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/SmallFilesOnly.h"

#include <QDir>
#include <QIODevice>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int failureOfSync = 0; // the number that the system gives for it, or 0 for none

} // namespace

// Takes the place of the system's, which no ordinary folder lets fail.
extern "C" int fdatasync(int descriptor) {
  if (failureOfSync == 0) return int(::syscall(SYS_fdatasync, descriptor));
  errno = failureOfSync;
  return -1;
}

namespace xov {
namespace {

using test::TemporaryFiles;
using testing::SmallFilesOnly;

QStringList everythingIn(const TemporaryFiles& files) {
  return QDir(files.folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

mode_t permissionsOf(const QString& path) {
  struct stat status = {};
  EXPECT_EQ(::stat(qPrintable(path), &status), 0);
  return status.st_mode & 0777;
}

TEST(WholeFile, takesThePlaceOfAnotherAndLeavesNothingBeside) {
  const TemporaryFiles files;
  const QString path = files.write("plot.bin", "old and long");
  EXPECT_TRUE(writeFileAtomically(path, "new"));
  EXPECT_EQ(files.read(path), "new");
  EXPECT_EQ(QDir(files.folder()).entryList(QDir::Files).size(), 1);
}

TEST(WholeFile, isNotWrittenWhenItsContentsFail) {
  const TemporaryFiles files;
  const QString path = files.write("plot.bin", "precious");
  const auto half = [](QIODevice& device) {
    device.write("half");
    return false;
  };
  QString error;
  EXPECT_FALSE(writeFileAtomically(path, half, &error));
  EXPECT_TRUE(error.startsWith(path + ": ")) << qPrintable(error);
  EXPECT_EQ(files.read(path), "precious");
  EXPECT_EQ(QDir(files.folder()).entryList(QDir::Files).size(), 1);
}

TEST(WholeFile, asksForNoContentsWhenItCannotBeOpened) {
  const TemporaryFiles files;
  const QString path = files.path("none/plot.bin");
  bool asked = false;
  QString error;
  const auto contents = [&](QIODevice&) { return asked = true; };
  EXPECT_FALSE(writeFileAtomically(path, contents, &error));
  EXPECT_FALSE(asked);
  EXPECT_EQ(error, path + ": No such file or directory");
}

TEST(WholeFile, thatDoesNotFitOnTheDiskIsNoticed) {
  if (!QFile::exists(QStringLiteral("/dev/full"))) GTEST_SKIP() << "this system has no /dev/full";
  QString error;
  EXPECT_FALSE(writeFileAtomically(QStringLiteral("/dev/full"), QByteArray(100'000, 'x'), &error));
  EXPECT_EQ(error, QStringLiteral("/dev/full: No space left on device"));
  // Less than a buffer holds fails when it is flushed.
  error.clear();
  EXPECT_FALSE(writeFileAtomically(QStringLiteral("/dev/full"), "x", &error));
  EXPECT_EQ(error, QStringLiteral("/dev/full: No space left on device"));
}

TEST(WholeFile, takesNoPlaceBeforeItIsSafeOnTheDisk) {
  const TemporaryFiles files;
  const QString path = files.write("plot.bin", "precious");
  for (const auto& [number, text] :
       {std::pair(ENOSPC, "No space left on device"), {EIO, "Input/output error"}, {EDQUOT, "Disk quota exceeded"}}) {
    failureOfSync = number;
    QString error;
    EXPECT_FALSE(writeFileAtomically(path, "new", &error)) << text;
    EXPECT_FALSE(writeFileAtomically(files.path("other.bin"), "new")) << text;
    failureOfSync = 0;
    EXPECT_EQ(error, path + ": " + text);
    EXPECT_EQ(files.read(path), "precious");
    EXPECT_EQ(everythingIn(files), QStringList("plot.bin"));
  }
}

TEST(WholeFile, isWrittenWhereTheSystemHasNoWayToMakeItLast) {
  const TemporaryFiles files;
  failureOfSync = EINVAL;
  EXPECT_TRUE(writeFileAtomically(files.path("plot.bin"), "new"));
  failureOfSync = 0;
  EXPECT_EQ(files.read(files.path("plot.bin")), "new");
}

TEST(WholeFile, saysWhatTheSystemSaysOfALimit) {
  const TemporaryFiles files;
  const QString path = files.write("plot.bin", "precious");
  QString large, small, fromContents;
  {
    const SmallFilesOnly limit(50);
    EXPECT_FALSE(writeFileAtomically(path, QByteArray(200'000, 'x'), &large));
    EXPECT_FALSE(writeFileAtomically(path, QByteArray(51, 'x'), &small));
    EXPECT_FALSE(writeFileAtomically(path, [&](QIODevice& device) {
      for (int i = 0; i < 2000; ++i) {
        if (device.write(QByteArray(100, 'x')) == 100) continue;
        fromContents = device.errorString();
        return false;
      }
      return true;
    }));
    EXPECT_TRUE(writeFileAtomically(files.path("fits.bin"), QByteArray(50, 'x')));
  }
  EXPECT_EQ(large, path + ": File too large");
  EXPECT_EQ(small, large);
  EXPECT_EQ(fromContents, "File too large");
  EXPECT_EQ(files.read(path), "precious");
  EXPECT_EQ(everythingIn(files), (QStringList{"fits.bin", "plot.bin"}));
}

TEST(WholeFile, hasThePermissionsOfTheUsersMaskOrOfTheFileBefore) {
  const TemporaryFiles files;
  for (const mode_t mask : {0022, 0077, 0027}) {
    const mode_t before = ::umask(mask);
    const QString path = files.path("plot.bin");
    QFile::remove(path);
    EXPECT_TRUE(writeFileAtomically(path, "new"));
    EXPECT_EQ(permissionsOf(path), mode_t(0666) & ~mask);
    EXPECT_EQ(::chmod(qPrintable(path), 0640), 0);
    EXPECT_TRUE(writeFileAtomically(path, "newer"));
    EXPECT_EQ(permissionsOf(path), mode_t(0640));
    ::umask(before);
  }
}

TEST(WholeFile, mayHaveTheLongestNameThereIs) {
  const TemporaryFiles files;
  const QByteArray longest = QByteArray(251, 'n') + ".pdf";
  const QString path = files.path(longest.constData());
  for (const char* contents : {"first", "second"}) {
    QString error;
    EXPECT_TRUE(writeFileAtomically(path, contents, &error)) << qPrintable(error);
    EXPECT_EQ(files.read(path), contents);
  }
  QString error;
  const QString tooLong = files.path(("x" + longest).constData());
  EXPECT_FALSE(writeFileAtomically(tooLong, "x", &error));
  EXPECT_EQ(error, tooLong + ": File name too long");
  EXPECT_EQ(everythingIn(files).size(), 1);
}

TEST(WholeFile, isWhereALinkPointsAndLeavesTheLink) {
  const TemporaryFiles files;
  const QString path = files.write("plot.bin", "old");
  const QString link = files.path("link.bin"), dangling = files.path("dangling.bin"), ring = files.path("ring.bin");
  ASSERT_TRUE(QFile::link(QStringLiteral("plot.bin"), link));
  ASSERT_TRUE(QFile::link(QStringLiteral("later.bin"), dangling));
  ASSERT_TRUE(QFile::link(QStringLiteral("ring.bin"), ring));
  EXPECT_TRUE(writeFileAtomically(link, "new"));
  EXPECT_EQ(files.read(path), "new");
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_TRUE(writeFileAtomically(dangling, "made"));
  EXPECT_EQ(files.read(files.path("later.bin")), "made");
  EXPECT_TRUE(QFileInfo(dangling).isSymLink());
  QString error;
  EXPECT_FALSE(writeFileAtomically(ring, "x", &error));
  EXPECT_EQ(error, ring + ": Too many levels of symbolic links");
}

TEST(WholeFile, isNoFolderAndHasAName) {
  const TemporaryFiles files;
  QString error;
  EXPECT_FALSE(writeFileAtomically(files.folder(), "x", &error));
  EXPECT_EQ(error, files.folder() + ": Is a directory");
  EXPECT_FALSE(writeFileAtomically(QString(), "x", &error));
  EXPECT_EQ(error, "there is no file name");
}

TEST(WholeFile, intoAPipeThatNobodyReadsFailsAndEndsNoProgram) {
  const TemporaryFiles files;
  const QString path = files.path("pipe.bin");
  ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
  const int reader = ::open(qPrintable(path), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  QString error;
  EXPECT_FALSE(writeFileAtomically(
      path, [&](QIODevice& device) { return ::close(reader) == 0 && device.write("x") == 1; }, &error));
  EXPECT_EQ(error, path + ": Broken pipe");
  sigset_t pending = {};
  ::sigpending(&pending);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST(WholeFile, thrownFromLeavesTheOldOneAndNothingElse) {
  const TemporaryFiles files;
  const QString path = files.write("plot.bin", "precious");
  QString error;
  EXPECT_FALSE(writeFileAtomically(
      path, [](QIODevice&) -> bool { throw std::bad_alloc(); }, &error));
  EXPECT_EQ(error, path + ": not enough memory");
  EXPECT_EQ(everythingIn(files), QStringList("plot.bin"));
  EXPECT_EQ(files.read(path), "precious");
}

TEST(WholeFile, isSetAsideInThePlaceOfTheOneBefore) {
  const TemporaryFiles files;
  const QString path = files.write("settings", "first");
  EXPECT_EQ(setFileAside(path), path + ".broken");
  files.write("settings", "second");
  EXPECT_EQ(setFileAside(path), path + ".broken");
  EXPECT_EQ(files.read(path + ".broken"), "second");
  EXPECT_EQ(everythingIn(files), QStringList("settings.broken"));
  // What is no ordinary file stays, and so does what is not there.
  EXPECT_EQ(setFileAside(path), QString());
  EXPECT_EQ(setFileAside(files.folder()), QString());
  EXPECT_EQ(setFileAside("/dev/null"), QString());
  EXPECT_EQ(everythingIn(files), QStringList("settings.broken"));
}

} // namespace
} // namespace xov
