#include "XOV_Graphics/seismic/picks/Pick.h"

#include "tests/seismic/PickSamples.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using test::tlyPick;

TEST(Pick, isOfTheChannelThatHasItsCodes) {
  const Pick pick = tlyPick("P", "2011-03-11T05:52:00Z");
  EXPECT_TRUE(isPickOf(pick, {"II", "TLY", "00", "BHZ"}));
  EXPECT_FALSE(isPickOf(pick, {"II", "TLY", "00", "BHN"}));
  EXPECT_FALSE(isPickOf(pick, {"II", "TLY", "10", "BHZ"}));
  EXPECT_FALSE(isPickOf(pick, {"IU", "TLY", "00", "BHZ"}));
  EXPECT_FALSE(isPickOf(pick, {"II", "AAK", "00", "BHZ"}));
}

TEST(Pick, fitsCodesThatOneOfTheTwoDoesNotKnow) {
  Pick pick = tlyPick("P", "2011-03-11T05:52:00Z");
  EXPECT_TRUE(isPickOf(pick, {"", "TLY", "", "BHZ"}));
  pick.channel = {"", "TLY", "", ""};
  EXPECT_TRUE(isPickOf(pick, {"II", "TLY", "10", "LHE"}));
  EXPECT_FALSE(isPickOf(pick, {"II", "", "10", "LHE"})); // a station is never guessed
}

TEST(Pick, hasWordsThatAreReadBackInAnyCase) {
  for (const PickPolarity polarity :
       {PickPolarity::Unknown, PickPolarity::Positive, PickPolarity::Negative, PickPolarity::Undecidable})
    EXPECT_EQ(pickPolarity(pickWord(polarity).toUpper()), polarity);
  for (const PickOnset onset :
       {PickOnset::Unknown, PickOnset::Impulsive, PickOnset::Emergent, PickOnset::Questionable})
    EXPECT_EQ(pickOnset(pickWord(onset)), onset);
  for (const PickMode mode : {PickMode::Unknown, PickMode::Manual, PickMode::Automatic})
    EXPECT_EQ(pickMode(pickWord(mode)), mode);
  EXPECT_EQ(pickWord(PickPolarity::Undecidable), QStringLiteral("undecidable"));
  EXPECT_FALSE(pickPolarity(u"up"));
  EXPECT_FALSE(pickOnset(u"sharp"));
}

TEST(Pick, getsAnIdThatNoOtherHas) {
  const QString id = newPickId();
  EXPECT_TRUE(id.startsWith(QStringLiteral("smi:local/pick/")));
  EXPECT_NE(id, newPickId());
}
