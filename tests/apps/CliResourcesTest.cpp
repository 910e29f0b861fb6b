#include "tests/apps/CliFixture.h"

namespace xov::cli {
namespace {

/// A data root of its own, empty at first.
class CliResources : public CliTest {
protected:
  CliResources() { environment_.insert("XOV_DATA_ROOT", at("root")); }
};

constexpr char kPublished[] = "AF-AN\n  -0.43793E+00,-0.54851E+02\n  -0.0389E+00,-0.54675E+02\n"
                              "*** end of line segment ***\n";

TEST_F(CliResources, listsWhatComesWithTheLibrary) {
  const Outcome listed = xov({"resources"});
  EXPECT_EQ(listed.status, 0);
  EXPECT_EQ(listed.err, "");
  const QStringList lines = listed.out.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 11); // a heading and ten resources
  EXPECT_EQ(lines[0].simplified(), "resource version width height bytes file");
  EXPECT_TRUE(lines[1].simplified().startsWith("etopo5.i2 small 720 360 518400 ")) << qPrintable(lines[1]);
  EXPECT_TRUE(lines[1].endsWith("/etopo30.i2"));
  EXPECT_TRUE(lines[3].simplified().startsWith("natural_wide.jpg small 1620 540 ")) << qPrintable(lines[3]);
  EXPECT_TRUE(lines[6].simplified().startsWith("wusGray.tif full 613 540 ")) << qPrintable(lines[6]);
  EXPECT_TRUE(lines[7].simplified().startsWith("trench.txt thinned - - ")) << qPrintable(lines[7]);
  EXPECT_TRUE(lines[10].simplified().startsWith("PB2002_boundaries.txt derived - - ")) << qPrintable(lines[10]);
}

TEST_F(CliResources, listsWhatLiesBelowTheDataRootInTheirPlace) {
  writeFile("root/DATA/Grids/etopo5.i2", QByteArray(18662400, 0));
  writeFile("root/resources/natural_wide.jpg", "no picture");
  const QStringList lines = xov({"resources"}).out.split('\n');
  EXPECT_EQ(lines[1].simplified(), "etopo5.i2 full 4320 2160 18662400 " + at("root/DATA/Grids/etopo5.i2"));
  EXPECT_EQ(lines[3].simplified(), "natural_wide.jpg unreadable - - 10 " + at("root/resources/natural_wide.jpg"));
}

TEST_F(CliResources, importsThePublishedBoundaries) {
  writeFile("published.txt", kPublished);
  const Outcome imported = xov({"resources", "--pb2002", "published.txt"});
  EXPECT_EQ(imported.status, 0) << qPrintable(imported.err);
  EXPECT_EQ(imported.out, at("root/resources/PB2002_boundaries.txt") + ": 1 segments\n");
  EXPECT_EQ(contents("root/resources/PB2002_boundaries.txt"),
            "AF-AN\n-0.43793 -54.85100\n-0.03890 -54.67500\n*** end of line segment ***\n");
  EXPECT_TRUE(xov({"resources"}).out.contains("PB2002_boundaries.txt    published"));
}

TEST_F(CliResources, refusesAnotherTextAndKeepsWhatIsThere) {
  writeFile("published.txt", kPublished);
  ASSERT_EQ(xov({"resources", "--pb2002", "published.txt"}).status, 0);
  const QByteArray before = contents("root/resources/PB2002_boundaries.txt");
  writeFile("page.html", "<html>\n<body>\n");
  const Outcome refused = xov({"resources", "--pb2002", "page.html"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, "xov: page.html: not the published text of PB2002: line 2: \"<body>\" is no "
                         "\"longitude,latitude\" in degrees nor \"***\"\n");
  EXPECT_EQ(contents("root/resources/PB2002_boundaries.txt"), before);
}

TEST_F(CliResources, saysWhichFileItCannotOpen) {
  const Outcome refused = xov({"resources", "--pb2002", "nowhere.txt"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, "xov: nowhere.txt: cannot be opened: No such file or directory\n");
}

TEST_F(CliResources, saysInHelpThatTheBoundariesAreGeneralised) {
  EXPECT_TRUE(xov({"resources", "--help"}).out.simplified().contains("generalised boundaries"));
}

} // namespace
} // namespace xov::cli
