#include "apps/resources/Netcdf.h"

#include "tests/apps/resources/NetcdfBytes.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using namespace xov::maker;
using xov::test::NetcdfBytes;

namespace {

NetcdfBytes twoByThree() { return {{-10, 10}, {0, 120, 240}, {1, 2, 3, 4, 5, -6.5F}}; }

} // namespace

TEST(Netcdf, readsValuesRowAfterRowWithTheirCoordinates) {
  const Result<NetcdfGrid> grid = readNetcdfGrid(twoByThree().bytes(), "GRID");
  ASSERT_TRUE(grid) << qPrintable(grid.error());
  EXPECT_EQ(grid->rowCoordinates, (std::vector<double>{-10, 10}));
  EXPECT_EQ(grid->columnCoordinates, (std::vector<double>{0, 120, 240}));
  EXPECT_EQ(grid->values, (std::vector<float>{1, 2, 3, 4, 5, -6.5F}));
}

TEST(Netcdf, refusesAFileThatIsCutOffAnywhere) {
  const QByteArray whole = twoByThree().bytes();
  for (qsizetype length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(readNetcdfGrid(whole.left(length), "GRID")) << length;
}

TEST(Netcdf, readsOrRefusesButNeverLeavesAFileWithOneWrongByte) {
  const QByteArray whole = twoByThree().bytes();
  for (qsizetype at = 0; at < whole.size(); ++at) {
    QByteArray wrong = whole;
    wrong[at] = char(~wrong[at]);
    const Result<NetcdfGrid> grid = readNetcdfGrid(wrong, "GRID");
    if (grid) {
      EXPECT_EQ(grid->values.size(), grid->rows() * grid->columns()) << at;
    } else {
      EXPECT_FALSE(grid.error().isEmpty()) << at;
    }
  }
}

TEST(Netcdf, refusesWhatIsNoSuchFile) {
  EXPECT_EQ(readNetcdfGrid("\x89HDF\r\n", "GRID").error(),
            QStringLiteral("no netCDF file of the classic format: it does not begin with \"CDF\" and 1 or 2"));
}

TEST(Netcdf, namesTheVariableThatIsNotThere) {
  EXPECT_EQ(readNetcdfGrid(twoByThree().bytes(), "ROSE").error(), QStringLiteral("ROSE: there is no such variable"));
}

TEST(Netcdf, refusesAVariableOfAnotherType) {
  NetcdfBytes file = twoByThree();
  file.type = 4; // whole numbers of 32 bits
  EXPECT_EQ(readNetcdfGrid(file.bytes(), "GRID").error(),
            QStringLiteral("GRID: not two dimensions of single-precision numbers"));
  EXPECT_EQ(readNetcdfGrid(twoByThree().bytes(), "X").error(),
            QStringLiteral("X: not two dimensions of single-precision numbers"));
}

TEST(Netcdf, refusesAGridWithoutCoordinates) {
  NetcdfBytes file = twoByThree();
  file.hasCoordinates = false;
  EXPECT_EQ(readNetcdfGrid(file.bytes(), "GRID").error(), QStringLiteral("Y: no double-precision coordinates"));
}
