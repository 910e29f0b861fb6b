#include "tests/faults/FaultTest.h"

namespace xov::cli {
namespace {

// The faults themselves: that they are met, counted and told apart.
using Faults = FaultTest;

TEST_F(Faults, areCountedOfTheFileThatIsMeant) {
  writeRecord("a.SAC");
  writeRecord("b.SAC");
  const Outcome whole = xov({"info", "a.SAC", "b.SAC"});
  for (const char* call : {"open", "read"}) {
    const Fault count{call, "EIO", "fail", "once", 0};
    EXPECT_EQ(xovUnder(count, "a.SAC", {"info", "a.SAC", "b.SAC"}).out, whole.out);
    EXPECT_GT(callsCounted(), 0U) << call;
    EXPECT_EQ(faultsMet(), 0U) << call;
    (void)xovUnder(count, "c.SAC", {"info", "a.SAC", "b.SAC"});
    EXPECT_EQ(callsCounted(), 0U) << call;
  }
}

TEST_F(Faults, strikeOnceOrFromThenOn) {
  writeRecord("a.SAC");
  EXPECT_EQ(xovUnder({"open", "EMFILE"}, "a.SAC", {"info", "a.SAC"}).status, 1);
  EXPECT_EQ(faultsMet(), 1U);
  const Fault lasting{"open", "EACCES", "fail", "on"};
  EXPECT_TRUE(namesFileAndCause(xovUnder(lasting, "a.SAC", {"info", "a.SAC"}), "a.SAC", lasting));
  EXPECT_EQ(faultsMet(), callsCounted());
}

TEST_F(Faults, shortReadsAndInterruptedOnesAreMadeGood) {
  writeRecord("a.SAC");
  const QString whole = xov({"info", "a.SAC"}).out;
  for (const Fault& fault : {Fault{"read", "EINTR"}, Fault{"read", "EIO", "short", "on"}}) {
    EXPECT_EQ(xovUnder(fault, "a.SAC", {"info", "a.SAC"}).out, whole) << qPrintable(textOf(fault));
    EXPECT_GT(faultsMet(), 0U) << qPrintable(textOf(fault));
  }
}

TEST_F(Faults, ofMemoryStrikeAllocationsOfSomeSize) {
  writeFile("column.txt", "1\n2\n3\n");
  // The chunk that a file is read into.
  const Fault refused{"malloc", "ENOMEM", "fail", "on", 1, 1 << 20};
  const Outcome outcome = xovUnder(refused, {}, {"hist", "column.txt", "--dump"});
  EXPECT_GT(faultsMet(), 0U);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  EXPECT_TRUE(outcome.err.contains("not enough memory")) << qPrintable(outcome.err);
}

TEST_F(Faults, ofWritesLeaveNothingBehind) {
  writeFile("column.txt", "1\n2\n3\n");
  const Fault full{"write", "ENOSPC", "fail", "on"};
  const Outcome outcome = xovUnder(full, folder_.path(), {"hist", "column.txt", "-o", "plot.pdf"});
  EXPECT_GT(faultsMet(), 0U);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(files(), QStringList{"column.txt"});
}

} // namespace
} // namespace xov::cli
