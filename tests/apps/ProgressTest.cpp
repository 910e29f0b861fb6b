#include "apps/xov/terminal/Progress.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

QString marks(int filled) { return QString(filled, '#') + QString(30 - filled, ' '); }

TEST(Progress, fillsItsBarInProportion) {
  EXPECT_EQ(Progress::bar("reading", 0, 200), "reading [" + marks(0) + "]   0 %");
  EXPECT_EQ(Progress::bar("reading", 50, 200), "reading [" + marks(7) + "]  25 %");
  EXPECT_EQ(Progress::bar("reading", 200, 200), "reading [" + marks(30) + "] 100 %");
}

TEST(Progress, isFullWhenThereIsNothingToDo) { EXPECT_EQ(Progress::bar("x", 0, 0), "x [" + marks(30) + "] 100 %"); }

TEST(Progress, staysWithinItsBar) {
  EXPECT_EQ(Progress::bar("x", 7, 2), "x [" + marks(30) + "] 100 %");
  EXPECT_EQ(Progress::bar("x", -7, 2), "x [" + marks(0) + "]   0 %");
}

} // namespace
} // namespace xov::cli
