#include "XOV_Graphics/seismic/io/stations/InventoryReader.h"

#include "tests/seismic/TemporaryFiles.h"

namespace xov {
namespace {

TEST(InventoryReader, takesTextsOfStationsAsThoseWithoutChannels) {
  const test::TemporaryFiles files;
  const QString path = files.write("stations.txt", "# where they stand\nXX AA1 10.5 -20.25\nYY AA2 -1 2\n");
  const Result<StationInventory> inventory = readInventory(path);
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  EXPECT_EQ(inventory->name, path);
  ASSERT_EQ(inventory->stations.size(), 2U);
  const InventoryStation& first = inventory->stations[0];
  EXPECT_EQ(first.network, "XX");
  EXPECT_EQ(first.code, "AA1");
  EXPECT_EQ(first.latitudeDeg, 10.5);
  EXPECT_EQ(first.longitudeDeg, -20.25);
  EXPECT_TRUE(inventory->channels.empty());
  EXPECT_EQ(inventory->stations[1].line, 3);
}

TEST(InventoryReader, refusesTextsThatHoldNoStation) {
  EXPECT_EQ(parseInventory("AA1 far away\n", QStringLiteral("in")).error(), QStringLiteral("in: holds no stations"));
}

} // namespace
} // namespace xov
