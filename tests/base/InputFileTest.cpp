#include "XOV_Graphics/base/InputFile.h"

#include "XOV_Graphics/base/FileName.h"
#include "tests/seismic/TemporaryFiles.h"

#include <cstdio>
#include <sys/stat.h>
#include <thread>

namespace xov {
namespace {

using test::TemporaryFiles;

TEST(InputFile, isReadWhole) {
  const TemporaryFiles files;
  const QByteArray contents = QByteArray(3'000'000, 'x') + "end";
  const Result<QByteArray> read = readWholeFile(files.write("large", contents), contents.size());
  ASSERT_TRUE(read) << qPrintable(read.error());
  EXPECT_EQ(*read, contents);
  const Result<QByteArray> nothing = readWholeFile(files.write("empty", ""), 0);
  EXPECT_TRUE(nothing);
  EXPECT_TRUE(nothing->isEmpty());
}

TEST(InputFile, largerThanItMayBeIsRefusedWithItsSize) {
  const TemporaryFiles files;
  const QString path = files.write("four", "1234");
  EXPECT_TRUE(readWholeFile(path, 4));
  EXPECT_EQ(readWholeFile(path, 3).error(), path + ": 4 bytes, expected at most 3");
}

TEST(InputFile, thatCannotBeOpenedIsNamed) {
  const TemporaryFiles files;
  const QString missing = files.path("none");
  EXPECT_EQ(readWholeFile(missing, 10).error(), missing + ": cannot be opened: No such file or directory");
  EXPECT_EQ(readWholeFile(files.folder(), 10).error(), files.folder() + ": is a folder, expected a file");
  EXPECT_EQ(readWholeFile(QString(), 10).error(), QStringLiteral("there is no file name"));
}

TEST(InputFile, isAnOrdinaryOneUnlessPipesAreTaken) {
  const TemporaryFiles files;
  const QString path = files.path("pipe");
  ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
  QFile refused(path);
  EXPECT_EQ(openForReading(refused).error(), path + ": is not an ordinary file");
  QFile zeros(QStringLiteral("/dev/zero"));
  EXPECT_FALSE(openForReading(zeros));

  std::thread writer([&] {
    QFile pipe(path);
    if (pipe.open(QIODevice::WriteOnly)) pipe.write(QByteArray(100'000, 'y'));
  });
  QFile pipe(path);
  EXPECT_TRUE(openForReading(pipe, InputKind::AlsoPipes));
  const Result<QByteArray> read = readToEnd(pipe, QStringLiteral("in"), 100'000);
  writer.join();
  ASSERT_TRUE(read) << qPrintable(read.error());
  EXPECT_EQ(*read, QByteArray(100'000, 'y'));
}

TEST(InputFile, withoutAnEndIsReadNoFurtherThanItsLimit) {
  QFile zeros(QStringLiteral("/dev/zero"));
  ASSERT_TRUE(openForReading(zeros, InputKind::AlsoPipes));
  EXPECT_EQ(readToEnd(zeros, QStringLiteral("in"), 5'000'000).error(),
            QStringLiteral("in: more than 5000000 bytes, expected at most 5000000"));
}

TEST(InputFile, endsBeforeTheBytesThatAreWanted) {
  const TemporaryFiles files;
  QFile file(files.write("three", "abc"));
  ASSERT_TRUE(openForReading(file));
  char two[2];
  EXPECT_TRUE(readFully(file, two));
  EXPECT_EQ(two[0], 'a');
  EXPECT_EQ(two[1], 'b');
  EXPECT_FALSE(readFully(file, two));
}

TEST(InputFile, isOpenedWhateverBytesItsNameIsMadeOf) {
  const TemporaryFiles files;
  const QByteArray bytes = QFile::encodeName(files.folder()) + "/caf\xE9";
  const QString name = fileNameFromBytes(bytes);
  EXPECT_EQ(readWholeFile(name, 10).error(), name + ": cannot be opened: No such file or directory");
  ASSERT_EQ(std::rename(QFile::encodeName(files.write("plain", "seven b")).constData(), bytes.constData()), 0);
  const Result<QByteArray> read = readWholeFile(name, 10);
  ASSERT_TRUE(read) << qPrintable(read.error());
  EXPECT_EQ(*read, "seven b");
  EXPECT_EQ(std::remove(bytes.constData()), 0); // Qt would not find it
}

TEST(InputFile, whoseNameHasOtherBytesIsAnOrdinaryOneAsWell) {
  const TemporaryFiles files;
  const QByteArray folder = QFile::encodeName(files.folder()) + "/folder\xE9", pipe = folder + "-pipe";
  ASSERT_EQ(::mkdir(folder.constData(), 0700), 0);
  ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0); // nobody writes to it: who waited would wait for ever
  for (const QByteArray& bytes : {folder, pipe}) {
    const QString name = fileNameFromBytes(bytes);
    EXPECT_EQ(readWholeFile(name, 10).error(), name + ": is not an ordinary file");
    EXPECT_EQ(std::remove(bytes.constData()), 0);
  }
}

TEST(InputFile, thatTheSystemDoesNotGiveIsToldFromOneThatHoldsSomethingElse) {
  const TemporaryFiles files;
  EXPECT_TRUE(isReadingFailure(readWholeFile(files.path("none"), 10).error()));
  EXPECT_TRUE(isReadingFailure(QStringLiteral("a.SAC: cannot be read: Input/output error")));
  EXPECT_FALSE(isReadingFailure(readWholeFile(files.write("two", "ab"), 1).error()));
}

} // namespace
} // namespace xov
