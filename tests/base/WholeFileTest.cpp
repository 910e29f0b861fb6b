#include "XOV_Graphics/base/WholeFile.h"

#include "tests/seismic/TemporaryFiles.h"

#include <QDir>
#include <QIODevice>

namespace xov {
namespace {

using test::TemporaryFiles;

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
  EXPECT_FALSE(writeFileAtomically(QStringLiteral("/dev/full"), "x", &error));
}

} // namespace
} // namespace xov
