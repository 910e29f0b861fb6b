#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h"

#include <gtest/gtest.h>

using namespace xov;

namespace {

using Patterns = std::vector<QByteArray>;

}

TEST(SeedLinkStations, areReadFromAList) {
  const auto stations = parseSeedLinkStations("GE_WLF:BHZ, GR_*:00HH? !HHN,II_TLY");
  ASSERT_TRUE(stations) << stations.error().toStdString();
  ASSERT_EQ(stations->size(), 3u);
  EXPECT_EQ(stations->at(0).id(), "GE_WLF");
  EXPECT_EQ(stations->at(0).channels, Patterns{"BHZ"});
  EXPECT_FALSE(stations->at(0).hasWildcards());
  EXPECT_EQ(stations->at(1).id(), "GR_*");
  EXPECT_EQ(stations->at(1).channels, (Patterns{"00HH?", "!HHN"}));
  EXPECT_TRUE(stations->at(1).hasWildcards());
  EXPECT_EQ(stations->at(2).channels, Patterns{});
}

TEST(SeedLinkStations, areRefusedInOneLine) {
  const auto problem = [](const char* text) { return parseSeedLinkStations(QString::fromLatin1(text)).error(); };
  EXPECT_EQ(problem("WLF"), "found 'WLF', expected a network and a station as GE_WLF");
  EXPECT_EQ(problem(""), "found '', expected a network and a station as GE_WLF");
  EXPECT_EQ(problem("GE_WLF,"), "found '', expected a network and a station as GE_WLF");
  EXPECT_EQ(problem("GE_WL F"), "found 'GE_WL F', expected a network and a station as GE_WLF");
  EXPECT_EQ(problem("GE_WLF\nEND"), "found 'GE_WLF\nEND', expected a network and a station as GE_WLF");
  EXPECT_EQ(problem("GE_WLF:B"), "found 'B', expected a channel as BHZ, 00BHZ or HH?");
  EXPECT_EQ(problem("GE_WLF:0BHZ"), "found '0BHZ', expected a channel as BHZ, 00BHZ or HH?");
}

TEST(SeedLinkStations, haveSelectorsOfProtocol4) {
  EXPECT_EQ(seedLink4Selector("BHZ"), "*_B_H_Z");
  EXPECT_EQ(seedLink4Selector("00BH?"), "00_B_H_?");
  EXPECT_EQ(seedLink4Selector("--BHZ"), "_B_H_Z");
  EXPECT_EQ(seedLink4Selector("!LOG"), "!*_L_O_G");
  EXPECT_EQ(seedLink4Selector("*"), "*");
}

TEST(SeedLinkStations, haveStreamsThatProtocol4Names) {
  EXPECT_EQ(seedLink4StreamId("00", "BHZ"), "00_B_H_Z");
  EXPECT_EQ(seedLink4StreamId("", "HHN"), "_H_H_N");
  EXPECT_EQ(seedLink4StreamId("10", ""), "10");
}

TEST(SeedLinkStations, areFoundByWildcards) {
  EXPECT_TRUE(matchesWildcards("GR_*", "GR_GRA1"));
  EXPECT_TRUE(matchesWildcards("*", ""));
  EXPECT_TRUE(matchesWildcards("*_*A?", "GR_GRA1"));
  EXPECT_TRUE(matchesWildcards("a*b*c", "aXbYbZc"));
  EXPECT_FALSE(matchesWildcards("GR_?", "GR_GRA1"));
  EXPECT_FALSE(matchesWildcards("GR", "GR_"));
  EXPECT_FALSE(matchesWildcards("", "G"));
  EXPECT_FALSE(matchesWildcards("*A", "GR_GRA1"));
}

TEST(SeedLinkStations, matchLongPatternsWithoutTryingAllWays) {
  const QByteArray pattern = QByteArray("a*").repeated(200) + 'b';
  EXPECT_FALSE(matchesWildcards(pattern, QByteArray(2000, 'a')));
}

TEST(SeedLinkStations, selectChannelsUnlessTheyAreExcluded) {
  EXPECT_TRUE(selectsChannel({}, "00", "BHZ"));
  EXPECT_TRUE(selectsChannel({"BHZ"}, "00", "BHZ"));
  EXPECT_TRUE(selectsChannel({"HHZ", "BH?"}, "", "BHZ"));
  EXPECT_FALSE(selectsChannel({"HHZ"}, "00", "BHZ"));
  EXPECT_FALSE(selectsChannel({"10BHZ"}, "00", "BHZ"));
  EXPECT_TRUE(selectsChannel({"--BHZ"}, "", "BHZ"));
  EXPECT_FALSE(selectsChannel({"--BHZ"}, "00", "BHZ"));
  EXPECT_FALSE(selectsChannel({"BH?", "!BHZ"}, "00", "BHZ"));
  EXPECT_FALSE(selectsChannel({"!BHZ", "BH?"}, "00", "BHZ"));
  EXPECT_TRUE(selectsChannel({"!BHZ"}, "00", "BHN"));
}

// What a client sends to a server is no list that was checked.
TEST(SeedLinkStations, selectNoChannelWithAPatternThatIsTooShort) {
  for (const char* pattern : {"", "Z", "HZ"}) {
    EXPECT_FALSE(selectsChannel({pattern}, "00", "BHZ")) << pattern;
    EXPECT_TRUE(selectsChannel({QByteArray("!") + pattern}, "00", "BHZ")) << pattern;
  }
  EXPECT_TRUE(selectsChannel({"B*"}, "00", "BHZ"));
}
