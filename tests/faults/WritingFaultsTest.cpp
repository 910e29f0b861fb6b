#include "tests/apps/CliExports.h"
#include "tests/faults/FaultTest.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

/// Writes files with the command while the disk or the memory gives way: the old file or the new one stands there,
/// whole, and nothing beside it.
class WritingFaults : public CliExports<FaultTest> {
protected:
  /// Runs an export under a fault of the calls about files in its folder.
  void expectOldOrNew(const Export& made, const Fault& fault, const QByteArray& whole) {
    putOldFile(made);
    const Outcome outcome = xovUnder(fault, at("out/"), arguments(made));
    const QByteArray found = contents(pathOf(made));
    if (outcome.status == 0) {
      EXPECT_TRUE(found == whole) << qPrintable(textOf(fault)) << ": " << made.name << " is not whole";
      EXPECT_EQ(outcome.err, "") << qPrintable(textOf(fault));
    } else {
      EXPECT_TRUE(namesFileAndCause(outcome, QLatin1String(made.name), fault));
      EXPECT_EQ(found, "old") << qPrintable(textOf(fault)) << ": " << made.name;
    }
    EXPECT_EQ(written(), QLatin1String(made.name)) << qPrintable(textOf(fault));
  }
};

constexpr Fault kDiskFaults[] = {{"write", "ENOSPC"},
                                 {"write", "EIO", "shortfail"},
                                 {"write", "EDQUOT", "fail", "on"},
                                 {"write", "EIO", "short", "on"},
                                 {"write", "EINTR"},
                                 {"fsync", "EIO"},
                                 {"fsync", "EINTR"},
                                 {"rename", "EIO"},
                                 {"link", "ENOSPC", "fail", "on"},
                                 {"open", "EMFILE"},
                                 {"open", "EMFILE", "fail", "on"}};

TEST_F(WritingFaults, ofDisksLeaveTheOldFileOrTheNew) {
  const Export made = everyExport().front();
  const QByteArray all = whole(made);
  for (Fault fault : kDiskFaults) {
    fault.at = 0;
    putOldFile(made);
    EXPECT_EQ(xovUnder(fault, at("out/"), arguments(made)).status, 0);
    EXPECT_GT(callsCounted(), 0U) << fault.call;
    for (const int n : callsToFail(callsCounted())) {
      fault.at = n;
      expectOldOrNew(made, fault, all);
    }
  }
}

TEST_F(WritingFaults, ofDisksAreNoticedByEveryExport) {
  for (const Export& made : everyExport()) {
    const QByteArray all = whole(made);
    for (const Fault& fault :
         {Fault{"write", "EDQUOT", "fail", "on"}, Fault{"fsync", "ENOSPC"}, Fault{"rename", "EIO"}}) {
      expectOldOrNew(made, fault, all);
      EXPECT_GT(faultsMet(), 0U) << made.name << ": " << fault.call;
      EXPECT_EQ(contents(pathOf(made)), "old") << fault.call;
    }
  }
}

// The command has blocks of this size for pictures, pages and what it packs; small ones are mostly those of libraries
// of fonts.
TEST_F(WritingFaults, ofMemoryLeaveTheOldFileOrTheNew) {
  constexpr qint64 kLarge = 65536;
  constexpr std::size_t kKinds = 6;
  std::vector<Export> exports = everyExport();
  if (!triesAllFaults()) exports.resize(kKinds);
  for (const Export& made : exports) {
    const QByteArray all = whole(made);
    const QStringList words = arguments(made);
    xovUnder({"malloc", "ENOMEM", "fail", "once", 0, kLarge}, {}, words);
    const quint64 calls = callsCounted();
    for (const int n : callsToFail(calls)) {
      const Fault fault = {"malloc", "ENOMEM", "fail", "once", n, kLarge};
      putOldFile(made);
      const Outcome outcome = xovUnder(fault, {}, words);
      const QByteArray found = contents(pathOf(made));
      const QString what = QStringLiteral("%1: %2 of %3").arg(QLatin1String(made.name)).arg(n).arg(calls);
      if (outcome.status == 0) {
        // With another font, when that of plots could not be loaded, or without a base picture, which cannot be told
        // from a damaged one then.
        const bool isOther = outcome.err.startsWith("xov: the font ") || outcome.err.contains("natural_wide.jpg: ");
        const bool isTold = isOther && outcome.err.count('\n') == 1;
        EXPECT_TRUE(found == all || isTold) << qPrintable(what) << " is not whole: " << qPrintable(outcome.err);
      } else {
        // Qt does not look at the memory for the fonts that it puts into a page.
        const bool isOfQt = outcome.status == -1 && QByteArrayView(made.name).endsWith(".pdf");
        // Beside what the library of TIFF files says by itself.
        const QStringList lines = outcome.err.split('\n', Qt::SkipEmptyParts);
        const bool isToldInALine = outcome.status == 1 && lines.filter("xov: ").size() == 1 &&
                                   lines.size() == 1 + lines.filter(QRegularExpression("^TIFF")).size();
        EXPECT_TRUE(isToldInALine || isOfQt) << qPrintable(what) << ": " << qPrintable(outcome.err);
        EXPECT_EQ(found, "old") << qPrintable(what);
      }
      EXPECT_EQ(written(), QLatin1String(made.name)) << qPrintable(what);
    }
  }
}

} // namespace
} // namespace xov::cli
