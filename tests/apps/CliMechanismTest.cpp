#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

class CliMechanism : public CliTest {};

const QByteArray kThrusts = "<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.2\"><eventParameters>"
                            "<event><origin><time><value>2011-03-11T05:46:24Z</value></time></origin><magnitude><mag>"
                            "<value>9.1</value></mag></magnitude><focalMechanism><nodalPlanes><nodalPlane1><strike>"
                            "<value>203</value></strike><dip><value>10</value></dip><rake><value>88</value></rake>"
                            "</nodalPlane1></nodalPlanes></focalMechanism></event>"
                            "<event><origin><time><value>2012-04-11T08:38:37Z</value></time></origin><focalMechanism>"
                            "<nodalPlanes><nodalPlane1><strike><value>20</value></strike><dip><value>64</value></dip>"
                            "<rake><value>5</value></rake></nodalPlane1></nodalPlanes></focalMechanism></event>"
                            "<event><origin><time><value>2013-01-01T00:00:00Z</value></time></origin></event>"
                            "</eventParameters></quakeml>";

TEST_F(CliMechanism, drawsThatOfAPlane) {
  XOV_REQUIRE_TEXT(text, {"mechanism", "--strike", "0", "--dip", "45", "--rake", "-90"});
  EXPECT_TRUE(text.contains(QStringLiteral("Plane 1: strike 0°, dip 45°, rake -90°"))) << qPrintable(text);
  EXPECT_TRUE(text.contains(QStringLiteral("T axis")));
}

TEST_F(CliMechanism, drawsThatOfATensorInItsColor) {
  // All of an explosion is compressional.
  const Outcome outcome = xov({"mechanism", "--tensor", "1", "1", "1", "0", "0", "0", "--color", "#0000ff", "--plain",
                               "--size", "200", "236", "-o", "ball.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(QImage(at("ball.png")).pixelColor(100, 136), QColor(0, 0, 255));
  EXPECT_EQ(QImage(at("ball.png")).pixelColor(40, 136), QColor(0, 0, 255));
}

TEST_F(CliMechanism, drawsThoseOfFilesWithTheirDaysOrOneOfThem) {
  writeFile("events.xml", kThrusts);
  XOV_REQUIRE_TEXT(all, {"mechanism", "events.xml"});
  EXPECT_TRUE(all.contains(QStringLiteral("2011-03-11 M 9.1"))) << qPrintable(all);
  EXPECT_TRUE(all.contains(QStringLiteral("2012-04-11")));
  EXPECT_FALSE(all.contains(QStringLiteral("2013")));
  XOV_REQUIRE_TEXT(second, {"mechanism", "events.xml", "--event", "2"});
  EXPECT_TRUE(second.contains(QStringLiteral("strike 20°, dip 64°, rake 5°"))) << qPrintable(second);
  EXPECT_TRUE(second.contains(QStringLiteral("2012-04-11")));
}

TEST_F(CliMechanism, saysWhatIsWrong) {
  writeFile("events.xml", kThrusts);
  writeFile("events.csv", "time,latitude,longitude\n2011-03-11T05:46:23Z,38,142\n");
  EXPECT_EQ(xov({"mechanism"}).status, 2);
  EXPECT_EQ(xov({"mechanism", "--strike", "20"}).status, 2);
  EXPECT_EQ(xov({"mechanism", "--strike", "20", "--dip", "91", "--rake", "0"}).status, 2);
  EXPECT_EQ(xov({"mechanism", "--tensor", "1", "2", "3"}).status, 2);
  const struct {
    QStringList arguments;
    const char* message;
  } faults[] = {
      {{"events.csv"}, "xov: events.csv: tells no mechanism of an event\n"},
      {{"events.xml", "--event", "3"}, "xov: --event: found 3, expected 1 to 2\n"},
      {{"--tensor", "0", "0", "0", "0", "0", "0"}, "xov: --tensor: found zeros, expected a tensor\n"},
      {{"none.xml"}, "xov: none.xml: cannot be opened: No such file or directory\n"},
  };
  for (const auto& fault : faults) {
    const Outcome outcome = xov(QStringList{"mechanism", "-o", "ball.png"} + fault.arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, fault.message);
  }
}

} // namespace
} // namespace xov::cli
