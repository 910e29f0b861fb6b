#include "XOV_Graphics/seismic/ChannelPatterns.h"

#include "TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;

namespace {

bool selects(const QStringList& patterns, const char* network, const char* station, const char* location,
             const char* channel) {
  const Result<ChannelPatterns> parsed = ChannelPatterns::parse(patterns);
  EXPECT_TRUE(parsed) << parsed.error().toStdString();
  return parsed->select({network, station, location, channel});
}

} // namespace

TEST(ChannelPatterns, selectEverythingWhenThereAreNone) { EXPECT_TRUE(selects({}, "II", "TLY", "00", "BHZ")); }

TEST(ChannelPatterns, matchEachPartAsAWhole) {
  EXPECT_TRUE(selects({"II.TLY.00.BHZ"}, "II", "TLY", "00", "BHZ"));
  EXPECT_FALSE(selects({"II.TLY.00.BH"}, "II", "TLY", "00", "BHZ"));
  EXPECT_FALSE(selects({"I.TLY.00.BHZ"}, "II", "TLY", "00", "BHZ"));
}

TEST(ChannelPatterns, knowWildcardsAndSets) {
  EXPECT_TRUE(selects({"*.T?Y.*.BH[ZN]"}, "II", "TLY", "", "BHN"));
  EXPECT_FALSE(selects({"*.T?Y.*.BH[ZN]"}, "II", "TLY", "", "BHE"));
  EXPECT_FALSE(selects({"*.T?Y.*.*"}, "II", "TY", "", "BHE"));
}

TEST(ChannelPatterns, takeFewerPartsForTheLastOnes) {
  EXPECT_TRUE(selects({"BHZ"}, "II", "TLY", "00", "BHZ"));
  EXPECT_TRUE(selects({"TLY.00.BHZ"}, "II", "TLY", "00", "BHZ"));
  EXPECT_FALSE(selects({"10.BHZ"}, "II", "TLY", "00", "BHZ"));
}

TEST(ChannelPatterns, tellAnEmptyLocationFromAnyLocation) {
  EXPECT_TRUE(selects({"II.TLY.--.BHZ"}, "II", "TLY", "", "BHZ"));
  EXPECT_TRUE(selects({"II.TLY..BHZ"}, "II", "TLY", "", "BHZ"));
  EXPECT_FALSE(selects({"II.TLY..BHZ"}, "II", "TLY", "00", "BHZ"));
  EXPECT_FALSE(selects({"II.TLY.--.BHZ"}, "II", "TLY", "00", "BHZ"));
  EXPECT_TRUE(selects({"II.TLY.*.BHZ"}, "II", "TLY", "", "BHZ"));
}

TEST(ChannelPatterns, ignoreCase) { EXPECT_TRUE(selects({"ii.tly.*.bh?"}, "II", "TLY", "00", "BHZ")); }

TEST(ChannelPatterns, selectWhatAnyOfThemMatches) {
  EXPECT_TRUE(selects({"LHZ", "BHZ"}, "II", "TLY", "00", "BHZ"));
  EXPECT_FALSE(selects({"LHZ", "BHE"}, "II", "TLY", "00", "BHZ"));
}

TEST(ChannelPatterns, takeNothingButWildcardsForSpecial) {
  EXPECT_FALSE(selects({"B+Z"}, "II", "TLY", "00", "BBZ"));
  EXPECT_FALSE(selects({"(BHZ)"}, "II", "TLY", "00", "BHZ"));
}

TEST(ChannelPatterns, areRefusedWithASetThatIsNotClosed) {
  EXPECT_EQ(ChannelPatterns::parse({"BH[ZN"}).error(),
            QStringLiteral("channel pattern \"BH[ZN\": found a set that is not closed, expected [...]"));
}
