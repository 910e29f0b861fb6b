#include "XOV_Graphics/seismic/io/picks/PickJournal.h"

#include "tests/seismic/PickSamples.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/SmallFilesOnly.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int failureOfJournalSync = 0;

} // namespace

// Takes the place of the system's, which no ordinary folder lets fail.
extern "C" int fsync(int descriptor) {
  if (failureOfJournalSync == 0) return int(::syscall(SYS_fsync, descriptor));
  errno = failureOfJournalSync;
  return -1;
}

using namespace xov;
using test::fullPick;
using test::moment;
using test::TemporaryFiles;
using test::tlyPick;

namespace {

/// The journal that a program leaves that dies after these changes: the lock goes with the process.
QString leftJournal(const TemporaryFiles& files, const std::vector<PickChange>& changes) {
  PickJournal journal(files.path("journals"));
  journal.setDocument(QStringLiteral("/data/my picks,1.xml"));
  for (const PickChange& change : changes)
    EXPECT_TRUE(journal.append(change));
  return journal.path();
}

} // namespace

TEST(PickJournal, tellsAllChangesUpToTheLast) {
  const TemporaryFiles files;
  const Pick full = fullPick();
  Pick moved = full;
  moved.time = moment("2011-03-11T05:53:00Z");
  const Pick s = tlyPick("S", "2011-03-11T05:58:00Z");
  const QString left = leftJournal(files, {{0, {}, full}, {1, {}, s}, {0, full, moved}, {1, s, {}}});
  const Result<RecoveredPicks> found = PickJournal::read(left);
  ASSERT_TRUE(found) << found.error().toStdString();
  EXPECT_EQ(found->document, QStringLiteral("/data/my picks,1.xml"));
  EXPECT_EQ(found->steps.size(), 4U);
  EXPECT_TRUE(found->notes.isEmpty());

  PickJournal next(files.path("journals"));
  EXPECT_EQ(next.leftBehind(), QStringList{left});
  PickDocument document;
  ASSERT_TRUE(next.recover(left, document));
  EXPECT_EQ(document.picks(), PickArray{moved});
  EXPECT_TRUE(document.isModified());
  EXPECT_FALSE(QFile::exists(left));
  EXPECT_TRUE(next.leftBehind().isEmpty());
  EXPECT_EQ(PickJournal::read(next.path())->steps.size(), 4U) << "a second crash loses nothing either";
}

TEST(PickJournal, isReadUpToADamagedLine) {
  const TemporaryFiles files;
  const QString left = leftJournal(files, {{0, {}, tlyPick("P", "2011-03-11T05:52:00Z")}, {1, {}, fullPick()}});
  const QByteArray whole = files.read(left);
  const qsizetype lastLine = whole.lastIndexOf('\n', whole.size() - 2) + 1;
  for (qsizetype size = lastLine + 1; size < whole.size() - 1; ++size) {
    files.write("torn.journal", whole.first(size));
    const Result<RecoveredPicks> found = PickJournal::read(files.path("torn.journal"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->steps.size(), 1U) << size;
    EXPECT_EQ(found->notes,
              QStringList{files.path("torn.journal") + ": line 3 is damaged; the journal is read up to it"});
  }
  QByteArray flipped = whole;
  flipped[lastLine + 20] = char(flipped[lastLine + 20] ^ 1);
  files.write("flipped.journal", flipped);
  EXPECT_EQ(PickJournal::read(files.path("flipped.journal"))->steps.size(), 1U);
  EXPECT_FALSE(PickJournal::read(files.path("none.journal")));
}

TEST(PickJournal, ofARunningProgramIsNotLeftBehind) {
  const TemporaryFiles files;
  PickJournal running(files.path("journals"));
  EXPECT_TRUE(running.path().isEmpty()); // nothing is written before the first change
  ASSERT_TRUE(running.append({0, {}, fullPick()}));
  PickJournal other(files.path("journals"));
  EXPECT_TRUE(other.leftBehind().isEmpty());
  ASSERT_TRUE(other.append({0, {}, fullPick()}));
  EXPECT_NE(other.path(), running.path());
}

TEST(PickJournal, goesAwayWhenPicksAreSaved) {
  const TemporaryFiles files;
  PickJournal journal(files.path("journals"));
  ASSERT_TRUE(journal.append({0, {}, fullPick()}));
  const QString path = journal.path();
  EXPECT_TRUE(QFile::exists(path));
  journal.clear();
  EXPECT_FALSE(QFile::exists(path));
  ASSERT_TRUE(journal.append({0, fullPick(), {}})); // and begins anew
  EXPECT_EQ(PickJournal::read(journal.path())->steps.size(), 1U);
}

TEST(PickJournal, thatCannotBeWrittenIsToldInOneLine) {
  const TemporaryFiles files;
  PickJournal journal(files.write("file", "x"));
  const Status status = journal.append({0, {}, fullPick()});
  EXPECT_EQ(status.error(), files.path("file") + ": the folder cannot be made");
}

TEST(PickJournal, goesOnBehindAChangeThatFoundNoRoom) {
  const TemporaryFiles files;
  PickJournal journal(files.path("journals"));
  const Pick s = tlyPick("S", "2011-03-11T05:58:00Z");
  ASSERT_TRUE(journal.append({0, {}, fullPick()}));
  const QString failed = journal.path() + ": the journal of picks cannot be written: ";
  {
    const xov::testing::SmallFilesOnly limit(rlim_t(QFileInfo(journal.path()).size() + 10));
    EXPECT_EQ(journal.append({1, {}, s}).error(), failed + "File too large");
  }
  failureOfJournalSync = EDQUOT;
  EXPECT_EQ(journal.append({1, {}, s}).error(), failed + "Disk quota exceeded");
  failureOfJournalSync = 0;
  ASSERT_TRUE(journal.append({1, {}, s}));
  const Result<RecoveredPicks> found = PickJournal::read(journal.path());
  ASSERT_TRUE(found) << found.error().toStdString();
  EXPECT_EQ(found->steps.size(), 2U);
  EXPECT_TRUE(found->notes.isEmpty());
}
