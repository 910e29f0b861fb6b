#include "XOV_Graphics/base/UnfinishedFile.h"

#include "tests/seismic/TemporaryFiles.h"

#include <QDir>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace xov {
namespace {

using test::TemporaryFiles;

const char kLeftover[] = ".xov-0123456789abcdef.part";

QStringList namesIn(const TemporaryFiles& files) {
  return QDir(files.folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QByteArray folderOf(const TemporaryFiles& files) { return QFile::encodeName(files.folder()) + '/'; }

bool writeX(const UnfinishedFile& file) { return ::write(file.descriptor(), "x", 1) == 1; }

TEST(UnfinishedFile, isNothingOfTheFolderUntilItIsTaken) {
  const TemporaryFiles files;
  {
    const UnfinishedFile file(folderOf(files) + "plot");
    ASSERT_TRUE(file.isOpen());
    EXPECT_TRUE(writeX(file));
    EXPECT_EQ(namesIn(files), QStringList());
  }
  EXPECT_EQ(namesIn(files), QStringList());
}

// As on file systems that know no files without a name.
TEST(UnfinishedFile, hasANameThatNobodyKnowsWhereItNeedsOne) {
  const TemporaryFiles files;
  const QString path = files.write("plot", "old");
  UnfinishedFile one(folderOf(files) + "plot", UnfinishedFile::Name::Always);
  const UnfinishedFile two(folderOf(files) + "plot", UnfinishedFile::Name::Always);
  ASSERT_TRUE(one.isOpen() && two.isOpen());
  EXPECT_EQ(namesIn(files).size(), 3); // two different names
  removeUnfinishedFiles(folderOf(files));
  EXPECT_EQ(namesIn(files).size(), 3);
  EXPECT_TRUE(writeX(one) && one.take());
  EXPECT_EQ(files.read(path), "x");
  EXPECT_EQ(namesIn(files).size(), 2);
}

TEST(UnfinishedFile, thatADeadProgramLeftIsRemoved) {
  const TemporaryFiles files;
  files.write(kLeftover, "half");
  removeUnfinishedFiles(folderOf(files));
  EXPECT_EQ(namesIn(files), QStringList());
}

TEST(UnfinishedFile, thatALivingProgramHoldsIsLeftToIt) {
  const TemporaryFiles files;
  const QString path = files.write(kLeftover, "half");
  const int living = ::open(qPrintable(path), O_WRONLY);
  ASSERT_EQ(::flock(living, LOCK_EX | LOCK_NB), 0);
  removeUnfinishedFiles(folderOf(files));
  EXPECT_EQ(files.read(path), "half");
  ::close(living);
}

TEST(UnfinishedFile, isNoOtherFileOfASimilarName) {
  const TemporaryFiles files;
  const QStringList others = {".xov-0123456789abcdeF.part", ".xov-0123456789abcde.part", ".xov-0123456789abcdef.par",
                              "plot.pdf.aBcDeF", "xov-0123456789abcdef.part"};
  for (const QString& name : others)
    files.write(name.toLatin1().constData(), "mine");
  // Neither what a link of such a name points to, nor a file that has another name besides, nor a folder.
  const QString mine = files.write("mine", "mine");
  ASSERT_TRUE(QFile::link(mine, files.path(".xov-aaaaaaaaaaaaaaaa.part")));
  ASSERT_EQ(::link(qPrintable(mine), qPrintable(files.path(".xov-bbbbbbbbbbbbbbbb.part"))), 0);
  ASSERT_TRUE(QDir().mkdir(files.path(".xov-cccccccccccccccc.part")));
  removeUnfinishedFiles(folderOf(files));
  EXPECT_EQ(namesIn(files).size(), others.size() + 4);
  EXPECT_EQ(files.read(mine), "mine");
}

} // namespace
} // namespace xov
