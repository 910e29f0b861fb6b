#include "XOV_Graphics/seismic/prepare/RecordGroups.h"

#include "tests/support/FakeRecord.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

std::shared_ptr<testing::FakeRecord> recordOf(const char* network, const char* station, const char* component,
                                              const char* file) {
  const auto record = std::make_shared<testing::FakeRecord>();
  record->network = network;
  record->station = station;
  record->component = component;
  record->caption = QStringLiteral("%1.%2..%3").arg(network, station, component);
  record->file = file;
  return record;
}

using Places = std::vector<std::size_t>;

} // namespace

TEST(RecordGroups, areNamedInTheOrderOfTheirFirstRecords) {
  const SeismogramArray records = {recordOf("XX", "B", "BHZ", "d/1"), recordOf("XX", "A", "BHN", "d/2"),
                                   recordOf("YY", "B", "HHZ", "d/1"), recordOf("XX", "B", "BHE", "e/1")};
  const RecordGroups stations = groupsOf(records, GroupBy::Station);
  EXPECT_EQ(stations.names, (QStringList{"XX.B", "XX.A", "YY.B"}));
  EXPECT_EQ(stations.groupOf, (Places{0, 1, 2, 0}));
  const RecordGroups networks = groupsOf(records, GroupBy::Network);
  EXPECT_EQ(networks.names, (QStringList{"XX", "YY"}));
  EXPECT_EQ(networks.groupOf, (Places{0, 0, 1, 0}));
  const RecordGroups components = groupsOf(records, GroupBy::Component);
  EXPECT_EQ(components.names, (QStringList{"Z", "N", "E"}));
  EXPECT_EQ(components.groupOf, (Places{0, 1, 0, 2}));
}

TEST(RecordGroups, ofFilesKeepFilesOfOneNameApart) {
  const RecordGroups files = groupsOf(
      {recordOf("", "", "", "d/1"), recordOf("", "", "", "e/1"), recordOf("", "", "", "d/1")}, GroupBy::File);
  EXPECT_EQ(files.names, (QStringList{"1", "1"}));
  EXPECT_EQ(files.groupOf, (Places{0, 1, 0}));
}

TEST(RecordGroups, keepACodeThatIsNoneOfThreeLettersWhole) {
  const RecordGroups groups = groupsOf(
      {recordOf("", "", "Z", ""), recordOf("", "", "Vertical", ""), recordOf("", "", "BHZ", "")}, GroupBy::Component);
  EXPECT_EQ(groups.names, (QStringList{"Z", "Vertical"}));
  EXPECT_EQ(groups.groupOf, (Places{0, 1, 0}));
}

TEST(RecordGroups, ofTracesHoldThePiecesOfAChannelInAFile) {
  const RecordGroups traces = groupsOf(
      {recordOf("XX", "A", "BHZ", "d/1"), recordOf("XX", "A", "BHZ", "d/1"), recordOf("XX", "B", "BHZ", "d/1")},
      GroupBy::Trace);
  EXPECT_EQ(traces.names, (QStringList{"XX.A..BHZ", "XX.B..BHZ"}));
  EXPECT_EQ(traces.groupOf, (Places{0, 0, 1}));
}

TEST(RecordGroups, ofTracesAreCalledByTheirFilesWhereTheyShareAChannel) {
  const RecordGroups traces = groupsOf({recordOf("XX", "A", "BHZ", "d/raw"), recordOf("XX", "A", "BHZ", "d/model"),
                                        recordOf("XX", "B", "BHZ", "d/raw")},
                                       GroupBy::Trace);
  EXPECT_EQ(traces.names, (QStringList{"raw", "model", "XX.B..BHZ"}));
  EXPECT_EQ(traces.groupOf, (Places{0, 1, 2}));
}

TEST(RecordGroups, withoutANameAreQuestions) {
  EXPECT_EQ(groupsOf({recordOf("", "", "", "")}, GroupBy::Station).names, QStringList("?"));
  EXPECT_TRUE(groupsOf({}, GroupBy::Station).names.isEmpty());
}

} // namespace xov
