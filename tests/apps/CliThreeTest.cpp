#include "tests/apps/CliFixture.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

class CliThree : public CliTest {
protected:
  void SetUp() override {
    for (const char* component : {"BHE", "BHN", "BHZ", "LHZ"})
      writeRecord(QString::fromLatin1(component) + ".SAC", RecordSpec{.component = component});
  }

  static QStringList components(const QString& text) {
    QStringList found = text.split(QRegularExpression("\\s+"));
    found.removeIf([](const QString& word) { return !QRegularExpression("^[BL]H.$").match(word).hasMatch(); });
    return found;
  }
};

TEST_F(CliThree, putsTheVerticalComponentOnTop) {
  XOV_REQUIRE_TEXT(text, {"three", "BHE.SAC", "BHN.SAC", "BHZ.SAC"});
  EXPECT_EQ(components(text), (QStringList{"BHZ", "BHN", "BHE"})) << qPrintable(text);
  EXPECT_TRUE(text.contains("Station: TLY-II")) << qPrintable(text);
}

TEST_F(CliThree, picksComponentsByCode) {
  XOV_REQUIRE_TEXT(text, {"three", "BHE.SAC", "BHN.SAC", "BHZ.SAC", "LHZ.SAC", "--components", "LHZ", "E", "N"});
  EXPECT_EQ(components(text), (QStringList{"LHZ", "BHE", "BHN"})) << qPrintable(text);
}

TEST_F(CliThree, choosesAmongChannels) {
  XOV_REQUIRE_TEXT(text, {"three", "*.SAC", "--channels", "B*"});
  EXPECT_EQ(components(text), (QStringList{"BHZ", "BHN", "BHE"})) << qPrintable(text);
}

TEST_F(CliThree, saysWhichRecordsAreInEachOthersPlace) {
  const Outcome outcome = xov({"three", "*.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: found II.TLY..BHZ and II.TLY..LHZ, expected one vertical component; --channels and "
                         "--components choose others\n");
}

TEST_F(CliThree, printsPeaksOnRequest) {
  // Of the 201 samples 1000 sin(0.3 i), the 89th is largest: 26.7 rad are 8.5 pi less 0.0035 rad, so it is 999.994.
  XOV_REQUIRE_TEXT(text, {"three", "BHE.SAC", "BHN.SAC", "BHZ.SAC", "--peaks", "--self-scaled", "--raw"});
  EXPECT_EQ(text.count("1.000e+03"), 3) << qPrintable(text);
}

} // namespace
} // namespace xov::cli
