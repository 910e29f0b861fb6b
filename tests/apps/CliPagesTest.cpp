#include "tests/apps/CliFixture.h"

#include <QImageReader>
#include <QRegularExpression>

namespace xov::cli {
namespace {

class CliPages : public CliTest {
protected:
  /// Three stations with two components each, of two events.
  void SetUp() override {
    int azimuth = 0;
    for (const char* station : {"ABC", "DEF", "GHI"}) {
      for (const char* component : {"BHZ", "BHN"}) {
        const float origin = station == std::string("GHI") ? -300 : -100;
        writeRecord(QStringLiteral("data/%1.%2.SAC").arg(station, component),
                    {.station = station, .component = component, .azimuthDeg = float(++azimuth), .origin = origin});
      }
    }
  }

  QStringList plots() const { return files().filter(QRegularExpression("\\.(png|pdf|svg)$")); }

  /// The pages of a PDF file: its texts.
  QStringList pagesOf(const QString& name) {
    QStringList pages = tool("pdftotext", {"-layout", at(name), "-"}).value_or(QString()).split('\f');
    pages.removeLast(); // behind the last one's end
    return pages;
  }

  void draw(const QStringList& arguments) {
    const Outcome outcome = xov(arguments);
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.err, "");
  }
};

TEST_F(CliPages, aPdfHoldsAPageForSoManyRecords) {
  draw({"section", "data/ABC.BHN.SAC", "data/ABC.BHZ.SAC", "data/DEF.BHN.SAC", "data/DEF.BHZ.SAC", "data/GHI.BHN.SAC",
        "--page", "2", "-o", "a.pdf"});
  XOV_REQUIRE_TOOL(info, "pdfinfo", {"-l", "9", at("a.pdf")});
  EXPECT_TRUE(QRegularExpression("Pages: +3\n").match(info).hasMatch()) << qPrintable(info);
  EXPECT_TRUE(QRegularExpression("Page +1 size: +900 x 600").match(info).hasMatch()) << qPrintable(info);
  EXPECT_TRUE(QRegularExpression("Page +3 size: +900 x 480").match(info).hasMatch()) << qPrintable(info); // of one
  const QStringList pages = pagesOf("a.pdf");
  ASSERT_EQ(pages.size(), 3);
  EXPECT_TRUE(pages[0].contains("ABC") && !pages[0].contains("DEF")) << qPrintable(pages[0]);
  EXPECT_TRUE(pages[1].contains("DEF") && !pages[1].contains("ABC")) << qPrintable(pages[1]);
  EXPECT_TRUE(pages[2].contains("GHI") && !pages[2].contains("DEF")) << qPrintable(pages[2]);
}

TEST_F(CliPages, stationsAndEventsHaveAPageEach) {
  draw({"section", "data", "--channels", "BHZ,BHN", "--page", "station", "-o", "stations.pdf"});
  draw({"stack", "data", "--page", "event", "-o", "events.pdf"});
  XOV_REQUIRE_TOOL(stations, "pdfinfo", {at("stations.pdf")});
  XOV_REQUIRE_TOOL(events, "pdfinfo", {at("events.pdf")});
  EXPECT_TRUE(QRegularExpression("Pages: +3\n").match(stations).hasMatch()) << qPrintable(stations);
  EXPECT_TRUE(QRegularExpression("Pages: +2\n").match(events).hasMatch()) << qPrintable(events);
}

TEST_F(CliPages, panelsCountInPairs) {
  draw({"panels", "data/ABC.BHN.SAC", "data/ABC.BHZ.SAC", "data/DEF.BHN.SAC", "data/DEF.BHZ.SAC", "data/GHI.BHN.SAC",
        "data/GHI.BHZ.SAC", "--page", "2", "-o", "a.pdf"});
  XOV_REQUIRE_TOOL(info, "pdfinfo", {at("a.pdf")});
  EXPECT_TRUE(QRegularExpression("Pages: +2\n").match(info).hasMatch()) << qPrintable(info);
}

TEST_F(CliPages, threeComponentsHaveAPageAStation) {
  draw({"three", "data", "--page", "station", "-o", "a.pdf"});
  XOV_REQUIRE_TOOL(info, "pdfinfo", {at("a.pdf")});
  EXPECT_TRUE(QRegularExpression("Pages: +3\n").match(info).hasMatch()) << qPrintable(info);
  EXPECT_EQ(xov({"three", "data", "--page", "2", "-o", "b.pdf"}).status, 2);
}

TEST_F(CliPages, aStationThatFitsNoComponentsIsLeftOutWithALine) {
  const Outcome outcome = xov({"three", "data/ABC.BHZ.SAC", "data/DEF.BHZ.SAC", "data/DEF.BHZ.SAC", "--page",
                               "station", "-o", "{station}.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  EXPECT_EQ(plots(), QStringList{"ABC.png"});
}

TEST_F(CliPages, drumsHaveAPageAChannelOrADay) {
  EXPECT_EQ(xov({"drum", "data/ABC.BHZ.SAC", "data/ABC.BHN.SAC", "-o", "a.pdf"}).status, 1); // of two channels
  draw({"drum", "data/ABC.BHZ.SAC", "data/ABC.BHN.SAC", "--page", "channel", "-o", "{channel}.png"});
  draw({"drum", "data/ABC.BHZ.SAC", "--page", "day", "-o", "{date}.pdf"});
  EXPECT_EQ(plots(), (QStringList{"2011-03-11.pdf", "BHN.png", "BHZ.png"}));
  // From midnight to midnight: 24 rows of an hour, the last of which begins at 23.
  XOV_REQUIRE_TOOL(text, "pdftotext", {"-layout", at("2011-03-11.pdf"), "-"});
  EXPECT_TRUE(text.contains("03/11 00") && text.contains("03/11 23")) << qPrintable(text);
}

TEST_F(CliPages, pagesOfOneSetOfRecordsAreThoseOfEachSetAlone) {
  draw({"section", "data/ABC.BHN.SAC", "data/ABC.BHZ.SAC", "data/DEF.BHN.SAC", "data/DEF.BHZ.SAC", "--page",
        "station", "-o", "{station}.png"});
  draw({"section", "data/DEF.BHN.SAC", "data/DEF.BHZ.SAC", "-o", "alone.png"});
  EXPECT_EQ(plots(), (QStringList{"ABC.png", "DEF.png", "alone.png"}));
  EXPECT_EQ(contents("DEF.png"), contents("alone.png"));
}

TEST_F(CliPages, picturesOfOneNameAreNumbered) {
  draw({"section", "data", "--page", "station", "-o", "plot.png", "--size", "300", "200"});
  EXPECT_EQ(plots(), (QStringList{"plot_1.png", "plot_2.png", "plot_3.png"}));
}

TEST_F(CliPages, pdfFilesAreOneForEachName) {
  draw({"section", "data", "--page", "1", "-o", "{network}.{station}.pdf"});
  EXPECT_EQ(plots(), (QStringList{"II.ABC.pdf", "II.DEF.pdf", "II.GHI.pdf"}));
  XOV_REQUIRE_TOOL(info, "pdfinfo", {at("II.ABC.pdf")});
  EXPECT_TRUE(QRegularExpression("Pages: +2\n").match(info).hasMatch()) << qPrintable(info);
}

TEST_F(CliPages, pagesBecomeAPdfWithoutADisplay) {
  const Outcome outcome = xov({"section", "data", "--page", "2"});
  EXPECT_EQ(outcome.out, "wrote section.pdf\n");
  EXPECT_EQ(plots(), QStringList{"section.pdf"});
}

TEST_F(CliPages, namesTellDateAndChannel) {
  draw({"section", "data/ABC.BHZ.SAC", "-o",
        "{network}.{station}.{location}.{channel}.{date}T{time}.{year}.{day}.{page}.svg"});
  // 11 March is day 31 + 28 + 11.
  EXPECT_EQ(plots(), QStringList{"II.ABC..BHZ.2011-03-11T054730.2011.070.1.svg"});
}

TEST_F(CliPages, stationsOfAFileCannotLeadElsewhere) {
  writeRecord("sub/evil.SAC", {.station = "../../x"});
  draw({"section", "sub/evil.SAC", "-o", "{station}.png"});
  EXPECT_EQ(plots(), QStringList{"_._.._x.png"});
}

TEST_F(CliPages, aFieldThatIsNoneIsAUsageError) {
  const Outcome outcome = xov({"section", "data", "-o", "{statoin}.png"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_TRUE(
      outcome.err.startsWith("xov: section: --output: found '{statoin}' in the file name, expected {network}"))
      << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err.count('\n'), 1);
  writeFile("xy.txt", "1 2\n3 4\n");
  EXPECT_EQ(xov({"xy", "xy.txt", "-o", "{station}.png"}).status, 2); // numbers are of no station
}

TEST_F(CliPages, pagesAreANumberOrAWordThatIsKnown) {
  for (const char* page : {"0", "-1", "day", "1.5", "99999999999", ""}) {
    const Outcome outcome = xov({"section", "data", "--page", page, "-o", "a.pdf"});
    EXPECT_EQ(outcome.status, 2) << page;
    EXPECT_EQ(outcome.err.count('\n'), 1) << page;
  }
  EXPECT_EQ(plots(), QStringList());
}

TEST_F(CliPages, aFolderThatIsNotThereIsToldOnce) {
  for (const char* name : {"nowhere/a.pdf", "nowhere/{station}.png"}) {
    const Outcome outcome = xov({"section", "data", "--page", "station", "-o", name});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.endsWith(": No such file or directory\n")) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.err.count('\n'), 1);
  }
}

} // namespace
} // namespace xov::cli
