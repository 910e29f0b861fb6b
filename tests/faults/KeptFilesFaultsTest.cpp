#include "tests/faults/FaultTest.h"

#include <QDir>
#include <QFile>

namespace xov::cli {
namespace {

constexpr Fault kWriteFaults[] = {{"open", "EMFILE", "fail", "on"}, {"write", "ENOSPC"},
                                  {"write", "EIO", "shortfail"},    {"write", "EDQUOT", "fail", "on"},
                                  {"write", "EIO", "short", "on"},  {"write", "EINTR"},
                                  {"fsync", "EIO", "fail", "on"},   {"fsync", "EINTR"},
                                  {"rename", "EIO", "fail", "on"}};
constexpr Fault kReadFaults[] = {{"open", "EMFILE", "fail", "on"},
                                 {"read", "EIO", "fail", "on"},
                                 {"read", "EIO", "shortfail", "on"},
                                 {"read", "EIO", "short", "on"},
                                 {"read", "EINTR"}};

/// What programs keep for the next time: written whole or not at all, and not lost where it cannot be read.
class KeptFilesFaults : public FaultTest {
protected:
  void SetUp() override { environment_.insert("QT_QPA_PLATFORM", "offscreen"); }

  /// Writing `name` below "kept" fails in each way: the old file or the new one stands there, alone.
  void expectOldOrNew(const QString& what, const QString& name, const QString& argument) {
    SCOPED_TRACE(qPrintable(what));
    QDir(at("kept")).removeRecursively();
    writeFile("kept/" + name, "old");
    ASSERT_EQ(subject(what, argument).status, 0);
    const QByteArray whole = contents("kept/" + name);
    ASSERT_NE(whole, "old");
    for (const Fault& fault : kWriteFaults) {
      writeFile("kept/" + name, "old");
      const Outcome outcome = subjectUnder(fault, at("kept"), what, argument);
      EXPECT_GT(faultsMet(), 0U) << qPrintable(textOf(fault));
      if (outcome.status != 0) {
        EXPECT_TRUE(isToldOnce(outcome, name, fault));
      }
      EXPECT_EQ(contents("kept/" + name), outcome.status == 0 ? whole : QByteArray("old"))
          << qPrintable(textOf(fault));
      EXPECT_EQ(kept(), QStringList(name)) << qPrintable(textOf(fault));
    }
  }

  /// Reading fails in each way: all is there, or one line says why not.
  void expectAllOrTold(const QString& what, const QString& name, const QString& argument, const QByteArray& text,
                       bool isSetAside = false) {
    SCOPED_TRACE(qPrintable(what));
    writeFile("kept/" + name, text);
    const Outcome whole = subject(what, argument);
    ASSERT_EQ(whole.status, 0) << qPrintable(whole.err);
    for (const Fault& fault : kReadFaults) {
      writeFile("kept/" + name, text);
      QFile::remove(at("kept/" + name + ".broken"));
      const Outcome outcome = subjectUnder(fault, at("kept"), what, argument);
      EXPECT_GT(faultsMet(), 0U) << qPrintable(textOf(fault));
      if (outcome.status == 0) {
        EXPECT_EQ(outcome.out, whole.out) << qPrintable(textOf(fault));
      } else {
        EXPECT_TRUE(isToldOnce(outcome, name, fault));
        EXPECT_EQ(contents("kept/" + name + (isSetAside ? ".broken" : "")), text) << qPrintable(textOf(fault));
      }
    }
  }

  static ::testing::AssertionResult isToldOnce(const Outcome& outcome, const QString& name, const Fault& fault) {
    if (outcome.status == 1 && outcome.err.count('\n') == 1 && outcome.err.contains(name) &&
        outcome.err.contains(reasonOf(fault)))
      return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << qPrintable(textOf(fault)) << ": status " << outcome.status << ", " << qPrintable(outcome.err);
  }

  QStringList kept() const {
    return QDir(at("kept")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
};

TEST_F(KeptFilesFaults, ofASeedLinkClientLoseNoPlace) {
  expectOldOrNew("write-state", "state", at("kept/state"));
  QByteArray state;
  for (int i = 0; i < 300; ++i)
    state += "XX_S" + QByteArray::number(i) + " 1 2\n";
  expectAllOrTold("read-state", "state", at("kept/state"), state);
}

TEST_F(KeptFilesFaults, ofTheDeskAreTheOldOrTheNew) {
  expectOldOrNew("write-settings", "desk.json", at("kept/desk.json"));
  expectOldOrNew("write-preset", "steps.txt", at("kept/steps.txt"));
}

TEST_F(KeptFilesFaults, ofTheDeskThatCannotBeReadAreNotLost) {
  expectAllOrTold("read-settings", "desk.json", at("kept/desk.json"), "{\"theme\": \"dark\"}", true);
  expectAllOrTold("read-preset", "steps.txt", at("kept/steps.txt"), "demean\n");
  // Where it cannot even be laid aside, that is said, and it stays.
  writeFile("kept/desk.json", "{");
  const Fault fault{"rename", "EACCES", "fail", "on"};
  const Outcome outcome = subjectUnder(fault, at("kept"), "read-settings", at("kept/desk.json"));
  EXPECT_TRUE(outcome.err.endsWith("; it cannot be kept beside new ones\n")) << qPrintable(outcome.err);
  EXPECT_EQ(contents("kept/desk.json"), "{");
}

TEST_F(KeptFilesFaults, ofTheWholeDeskAreToldWhenItCloses) {
  environment_.insert("XDG_CONFIG_HOME", folder_.path());
  writeFile("xov/desk.json", "{}");
  ASSERT_EQ(subject("desk", "xov").out, "kept\n");
  ASSERT_NE(contents("xov/desk.json"), "{}");
  writeFile("xov/desk.json", "{}");
  const Fault full{"write", "ENOSPC", "fail", "on"};
  const Outcome outcome = subjectUnder(full, at("xov"), "desk", "xov");
  EXPECT_EQ(outcome.out, "not kept\n");
  // Beside what Qt says of windows that nobody sees.
  EXPECT_EQ(outcome.err.split('\n').filter("xov: "),
            QStringList("xov: " + at("xov/desk.json") + ": No space left on device"));
  EXPECT_EQ(contents("xov/desk.json"), "{}");
  EXPECT_EQ(QDir(at("xov")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList("desk.json"));
}

// A line that could not be written is told and missing, and all others are there.
TEST_F(KeptFilesFaults, ofTheJournalOfPicksCostNoOtherPick) {
  for (const Fault& kind :
       {Fault{"write", "ENOSPC"}, Fault{"write", "EIO", "shortfail"}, Fault{"fsync", "EIO"}, Fault{"fsync", "EINTR"},
        Fault{"write", "EINTR"}, Fault{"write", "EIO", "short", "on"}, Fault{"open", "EACCES"}}) {
    for (int n = 1; n <= 6; ++n) { // the lock, the document, then four picks
      Fault fault = kind;
      fault.at = n;
      SCOPED_TRACE(qPrintable(textOf(fault)));
      QDir(at("journals")).removeRecursively();
      const Outcome kept = subjectUnder(fault, "picks-1.journal", "keep-journal", at("journals"));
      if (faultsMet() == 0) { // of lock and journal, one is opened, written and synced less often
        EXPECT_GT(n, 2);
        break;
      }
      EXPECT_EQ(kept.err.count('\n'), kept.status) << qPrintable(kept.err);
      if (kept.status == 1) {
        EXPECT_TRUE(kept.err.contains(reasonOf(fault))) << qPrintable(kept.err);
        EXPECT_TRUE(kept.err.contains("picks-1.journal")) << qPrintable(kept.err);
      }
      const Outcome found = subject("recover-journal", at("journals"));
      EXPECT_EQ(found.status, 0) << qPrintable(found.err);
      EXPECT_EQ(found.out.trimmed(), ("picks.xml: " + kept.out).trimmed());
    }
  }
}

// Of a journal that cannot be taken over nothing is done: the next program finds all of it.
TEST_F(KeptFilesFaults, ofARecoveryLeaveTheOldJournal) {
  for (const Fault& kind : {Fault{"write", "ENOSPC"}, Fault{"fsync", "EIO"}, Fault{"read", "EIO"}}) {
    const char* const failing = QByteArrayView(kind.call) == "read" ? "picks-1.journal" : "picks-2.journal";
    for (int n = 1; n <= 6; ++n) {
      Fault fault = kind;
      fault.at = n;
      SCOPED_TRACE(qPrintable(textOf(fault)));
      QDir(at("journals")).removeRecursively();
      ASSERT_EQ(subject("keep-journal", at("journals")).status, 0);
      const Outcome outcome = subjectUnder(fault, failing, "recover-journal", at("journals"));
      if (faultsMet() == 0) break;
      if (outcome.status == 1) {
        EXPECT_TRUE(outcome.err.contains(reasonOf(fault))) << qPrintable(outcome.err);
        EXPECT_EQ(outcome.out, "");
      } else { // the end of a file; a lock that is not on the disk
        EXPECT_EQ(outcome.out, "picks.xml: P S PP SS\n");
        EXPECT_TRUE(QByteArrayView(fault.call) == "read" || n == 1);
      }
      EXPECT_EQ(subject("recover-journal", at("journals")).out.trimmed().section(' ', -4), "P S PP SS");
    }
  }
}

TEST_F(KeptFilesFaults, ofTheBaseMapsMakeNothingAnew) {
  ASSERT_TRUE(QDir(at("kept")).mkpath("resources"));
  ASSERT_EQ(subject("mark-maps", at("kept")).status, 0);
  EXPECT_EQ(subject("missing-maps", at("kept")).out, "10 missing\n");
  const Fault failing{"read", "EIO", "fail", "on"};
  const Outcome version = subjectUnder(failing, "made-by", "missing-maps", at("kept"));
  EXPECT_TRUE(isToldOnce(version, "made-by", failing));
  // A text that a user imported, if it could be read.
  writeFile("kept/resources/PB2002_boundaries.txt", "AF-AN\n1 2\n3 4\n***\n");
  EXPECT_EQ(subject("missing-maps", at("kept")).out, "9 missing\n");
  const Outcome imported = subjectUnder(failing, "PB2002", "missing-maps", at("kept"));
  EXPECT_TRUE(isToldOnce(imported, "PB2002_boundaries.txt", failing));
  const Fault full{"write", "ENOSPC", "fail", "on"};
  EXPECT_TRUE(isToldOnce(subjectUnder(full, at("kept"), "mark-maps", at("kept")), "made-by", full));
  EXPECT_EQ(contents("kept/resources/made-by"), "1\n");
}

} // namespace
} // namespace xov::cli
