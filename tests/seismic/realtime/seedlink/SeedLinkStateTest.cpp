#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkState.h"

#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using test::TemporaryFiles;

TEST(SeedLinkState, isReadAsItWasWritten) {
  const TemporaryFiles files;
  const SeedLinkPlaces places = {{"GE_WLF", {18446744073709551615u, -5}}, {"GR_GRA1", {1, 1600000000123456}}};
  const Status status = writeSeedLinkState(places, files.path("state"));
  EXPECT_TRUE(status) << status.error().toStdString();
  EXPECT_EQ(files.read(files.path("state")), "GE_WLF 18446744073709551615 -5\nGR_GRA1 1 1600000000123456\n");
  const auto back = readSeedLinkState(files.path("state"));
  ASSERT_TRUE(back);
  EXPECT_EQ(*back, places);
}

TEST(SeedLinkState, thatIsNotThereHasNoPlaces) {
  const TemporaryFiles files;
  const auto places = readSeedLinkState(files.path("nothing"));
  EXPECT_TRUE(places);
  EXPECT_TRUE(places->empty());
}

TEST(SeedLinkState, thatIsDamagedNamesTheLine) {
  const TemporaryFiles files;
  for (const char* bad :
       {"GE_WLF 5", "GEWLF 5 5", "GE_WLF x 5", "GE_WLF 5 5 5", "GE_WLF -5 5", "", "GE_WLF 99999999999999999999 5"}) {
    const QString path = files.write("state", QByteArray("GE_A 1 2\n") + bad + "\n");
    EXPECT_EQ(readSeedLinkState(path).error(),
              path + ": line 2: expected a station, a sequence number and a time, as 'GE_WLF 4711 1700000000000000'")
        << bad;
  }
}

TEST(SeedLinkState, isNotHalfWrittenIntoAFolderThatIsNotThere) {
  const TemporaryFiles files;
  EXPECT_NE(writeSeedLinkState({}, files.path("no/folder/state")).error(), "");
}
