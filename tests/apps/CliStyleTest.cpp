// Colours, legends and widths of lines.
#include "tests/apps/CliFixture.h"

#include <QImage>

#include <algorithm>

namespace xov::cli {
namespace {

class CliStyle : public CliTest {
protected:
  void SetUp() override {
    writeRecord("one.SAC", RecordSpec{.station = "ONE", .component = "BHZ"});
    writeRecord("two.SAC", RecordSpec{.station = "TWO", .component = "BHZ"});
    writeRecord("three.SAC", RecordSpec{.station = "TWO", .component = "BHN"});
  }

  // How many pixels of the plot have exactly that colour.
  int pixelsOf(QRgb color, const QStringList& arguments) {
    const Outcome outcome = xov(arguments + QStringList{"-o", "plot.png", "--scale", "2"});
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    const QImage image = QImage(at("plot.png")).convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x)
        count += (image.pixel(x, y) & 0xffffffU) == (color & 0xffffffU) ? 1 : 0;
    }
    return count;
  }
};

TEST_F(CliStyle, drawsTracesInTheColoursOfTheList) {
  for (const QStringList& command :
       {QStringList{"stack", "one.SAC", "two.SAC"}, QStringList{"stack", "one.SAC", "two.SAC", "--style", "bands"},
        QStringList{"section", "one.SAC", "two.SAC"}, QStringList{"panels", "one.SAC", "two.SAC"}}) {
    EXPECT_EQ(pixelsOf(0x336699, command), 0);
    EXPECT_GT(pixelsOf(0x336699, command + QStringList{"--colors", "lime,#336699"}), 100) << qPrintable(command[0]);
  }
}

TEST_F(CliStyle, givesEachGroupAColour) {
  // Vermilion is that of the second group: of two stations the second one, of three traces the second one, too.
  const QStringList section = {"section", "one.SAC", "two.SAC", "three.SAC"};
  const int ofStation = pixelsOf(0xd55e00, section + QStringList{"--color-by", "station"});
  const int ofComponent = pixelsOf(0xd55e00, section + QStringList{"--color-by", "component"});
  EXPECT_GT(ofComponent, 100);
  EXPECT_NEAR(ofStation, 2 * ofComponent, 0.1 * ofStation) << "two traces of the station, one of the component";
  EXPECT_EQ(pixelsOf(0xd55e00, section + QStringList{"--color-by", "network"}), 0) << "one network";
}

TEST_F(CliStyle, namesTracesAndGroupsInALegend) {
  {
    XOV_REQUIRE_TEXT(text, {"stack", "one.SAC", "two.SAC", "--legend"});
    EXPECT_TRUE(text.contains("II.ONE") && text.contains("II.TWO")) << qPrintable(text);
  }
  XOV_REQUIRE_TEXT(text, {"stack", "--legend", "one.SAC", "two.SAC", "--color-by", "file"});
  EXPECT_TRUE(text.contains("one.SAC") && text.contains("two.SAC")) << qPrintable(text);
}

TEST_F(CliStyle, putsTheLegendIntoTheCornerThatIsNamed) {
  const QStringList stack = {"stack", "one.SAC", "two.SAC"};
  EXPECT_EQ(xov(stack + QStringList{"--legend", "bottom-left", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov(stack + QStringList{"--legend", "top-right", "-o", "b.png"}).status, 0);
  EXPECT_NE(contents("a.png"), contents("b.png"));
  const Outcome outcome = xov(stack + QStringList{"--legend", "top-middle", "-o", "c.png"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "xov: stack: --legend: found 'top-middle', expected best, top-right, top-left, bottom-right or "
            "bottom-left (see 'xov stack --help')\n");
}

TEST_F(CliStyle, drawsLinesOfThatWidth) {
  writeFile("columns.txt", "0 0\n1 1\n2 0\n3 2\n");
  for (const QStringList& command :
       {QStringList{"stack", "one.SAC"}, QStringList{"section", "one.SAC"},
        QStringList{"panels", "one.SAC", "two.SAC", "--colors", "black"}, QStringList{"drum", "one.SAC"},
        QStringList{"monitor", "one.SAC"}, QStringList{"xy", "columns.txt"}, QStringList{"hist", "columns.txt"}}) {
    const int thin = pixelsOf(0x000000, command);
    EXPECT_GT(pixelsOf(0x000000, command + QStringList{"--line-width", "6"}), thin * 11 / 10)
        << qPrintable(command[0]);
  }
}

TEST_F(CliStyle, refusesWhatIsNoColourOrWidth) {
  for (const char* bad : {"redd", "#12", "transparent", ""})
    EXPECT_EQ(xov({"stack", "one.SAC", "--colors", bad}).status, 2) << bad;
  EXPECT_EQ(xov({"stack", "one.SAC", "--colors", "redd"}).err,
            "xov: stack: --colors: found 'redd', expected a colour as red or #336699 (see 'xov stack --help')\n");
  for (const char* bad : {"0", "-1", "nan", "21", "1e300"})
    EXPECT_EQ(xov({"stack", "one.SAC", "--line-width", bad}).status, 2) << bad;
  EXPECT_EQ(xov({"stack", "one.SAC", "--color-by", "continent"}).status, 2);
}

} // namespace
} // namespace xov::cli
