#include "tests/apps/CliFixture.h"

#include <cmath>
#include <vector>

namespace xov::cli {
namespace {

class CliMotion : public CliTest {
protected:
  CliMotion() {
    for (const char* component : {"BHZ", "BHN", "BHE"}) {
      SacHeader header;
      header.delta = 0.1F;
      header.b = 0;
      header.baz = 225;
      header.kstnm = "TLY";
      header.kcmpnm = component;
      std::vector<float> samples;
      for (int i = 0; i < 200; ++i)
        samples.push_back(1000 * std::sin(float(i) / 5));
      writeRecord(QString::fromLatin1(component), SacSeismogram(header, samples));
    }
  }
};

// The same on all components: up, north and east alike.
TEST_F(CliMotion, drawsThePathAndTellsItsPolarisation) {
  XOV_REQUIRE_TEXT(text, {"motion", "BHZ", "BHN", "BHE"});
  EXPECT_TRUE(text.contains(QStringLiteral("azimuth 45° (back azimuth 225°), incidence 55°"))) << qPrintable(text);
  XOV_REQUIRE_TEXT(bare, {"motion", "BHZ", "BHN", "BHE", "--no-polarization"});
  EXPECT_FALSE(bare.contains(QStringLiteral("azimuth")));
}

// With a back azimuth of 225 degrees all of it is radial.
TEST_F(CliMotion, takesTheWindowAndTheRotation) {
  XOV_REQUIRE_TEXT(text, {"motion", "BHZ", "BHN", "BHE", "--rotate", "ZRT", "--start", "2", "--end", "10"});
  EXPECT_TRUE(text.contains(QStringLiteral("BHR"))) << qPrintable(text);
  EXPECT_TRUE(text.contains(QStringLiteral("BHT")));
}

TEST_F(CliMotion, needsThreeComponents) {
  const Outcome outcome = xov({"motion", "BHZ", "BHN", "-o", "motion.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.endsWith("found 2 of the components, expected a vertical and two horizontal ones\n"))
      << qPrintable(outcome.err);
}

} // namespace
} // namespace xov::cli
