#include "XOV_Graphics/map/plateBoundaryController.h"

#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/map/BoundaryResource.h"
#include "tests/map/MapPrinting.h"
#include "tests/support/LogCatcher.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

using namespace xov;
using namespace xov::test;

namespace {

/// A host with a resource folder of its own.
class PlateBoundaryController : public ::testing::Test {
protected:
  PlateBoundaryController() { setHostResourceFolder(files.folder()); }
  ~PlateBoundaryController() override { setHostResourceFolder({}); }

  /// Writes the three files by type, each with one segment named after it and a point (number, number).
  void writeTypedFiles() const {
    files.write("trench.txt", "H1\nthe trench\n1 1\n>\n");
    files.write("ridge.txt", "H1\nthe ridge\n2 2\n>\n");
    files.write("transform.txt", "H1\nthe transform\n3 3\n>\n");
  }

  TemporaryFiles files;
  plateBoundaryController controller;
};

QStringList titlesOf(const XOVPolygonArray& polygons) {
  QStringList titles;
  for (const auto& polygon : polygons)
    titles << polygon->title();
  return titles;
}

} // namespace

TEST_F(PlateBoundaryController, hasAnEmptyArrayAtFirst) {
  ASSERT_NE(controller.boundaries(), nullptr);
  EXPECT_TRUE(controller.boundaries()->empty());
}

TEST_F(PlateBoundaryController, readsTheBoundariesBySegmentFromTheResources) {
  files.write("PB2002_boundaries.txt", "AF-AN\n-10.0 5.0\n20.0 -5.0\n***\n");
  EXPECT_TRUE(controller.loadBirdPlateBoundaries());
  ASSERT_EQ(controller.boundaries()->size(), 1U);
  EXPECT_EQ(pointsOf(*controller.boundaries()->front()), (Points{{350, 5}, {20, -5}}));
  EXPECT_EQ(controller.boundaries()->front()->bRect(), QRectF(0, 0, 0, 0));
}

TEST_F(PlateBoundaryController, refusesTheModelAsItIsPublishedInOneLine) {
  for (const char* text : {"AF-AN\n  -0.4379300E+00,-0.5485140E+02\n***\n", "AF-AN\n3,4\n***\n",
                           "AF-AN\n1 2\r\n***\n\"B\"\r\n3 , 4 \r\n***\r\n"}) {
    const QString path = files.write("PB2002_boundaries.txt", text);
    const LogCatcher log;
    EXPECT_FALSE(controller.loadBirdPlateBoundaries());
    const int line = QByteArray(text).startsWith("AF-AN\n1") ? 5 : 2;
    EXPECT_EQ(
        LogCatcher::lines(),
        QStringList(QStringLiteral("xov: plate boundaries: %1: line %2: a comma between numbers, expected blanks; "
                                   "\"xov resources --pb2002\" imports such a text")
                        .arg(path)
                        .arg(line)));
  }
  EXPECT_TRUE(controller.boundaries()->empty());
  // A title may have commas.
  files.write("PB2002_boundaries.txt", "1, 2 and 3\n1 2\n***\n");
  EXPECT_TRUE(controller.loadBirdPlateBoundaries());
}

TEST_F(PlateBoundaryController, readsTrenchesThenRidgesThenTransforms) {
  writeTypedFiles();
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_EQ(titlesOf(*controller.boundaries()),
            (QStringList{QStringLiteral("the trench\n"), QStringLiteral("the ridge\n"),
                         QStringLiteral("the transform\n")}));
  EXPECT_EQ(controller.boundaries()->at(2)->bRect(), QRectF(3, 3, 0, 0));
}

TEST_F(PlateBoundaryController, addsToWhatItHas) {
  writeTypedFiles();
  files.write("PB2002_boundaries.txt", "A\n1 2\n***\n");
  EXPECT_TRUE(controller.loadBirdPlateBoundaries());
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_TRUE(controller.loadBirdPlateBoundaries());
  EXPECT_EQ(controller.boundaries()->size(), 5U);
}

TEST_F(PlateBoundaryController, sharesItsArray) {
  writeTypedFiles();
  const std::shared_ptr<XOVPolygonArray> held = controller.boundaries();
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_EQ(held->size(), 3U);
}

TEST_F(PlateBoundaryController, takesAnotherArray) {
  writeTypedFiles();
  const auto other = std::make_shared<XOVPolygonArray>();
  controller.setBoundaries(other);
  EXPECT_EQ(controller.boundaries(), other);
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_EQ(other->size(), 3U);
  controller.setBoundaries(nullptr);
  ASSERT_NE(controller.boundaries(), nullptr);
  EXPECT_TRUE(controller.boundaries()->empty());
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_EQ(controller.boundaries()->size(), 3U);
}

TEST_F(PlateBoundaryController, saysWhichFileItCannotRead) {
  // An ordinary file that may be opened, but whose first byte cannot be read.
  ASSERT_TRUE(QFile::link(QStringLiteral("/proc/self/mem"), files.path("PB2002_boundaries.txt")));
  const LogCatcher log;
  EXPECT_FALSE(controller.loadBirdPlateBoundaries());
  EXPECT_TRUE(controller.boundaries()->empty());
  ASSERT_EQ(LogCatcher::lines().size(), 1);
  EXPECT_TRUE(LogCatcher::lines()[0].startsWith(QStringLiteral("xov: plate boundaries: ")))
      << LogCatcher::lines()[0].toStdString();
  EXPECT_TRUE(LogCatcher::lines()[0].contains(QStringLiteral("PB2002_boundaries.txt: cannot be read")));
}

TEST_F(PlateBoundaryController, readsTheOtherFilesWhenOneCannotBeRead) {
  writeTypedFiles();
  ASSERT_TRUE(QFile::remove(files.path("ridge.txt")));
  ASSERT_TRUE(QFile::link(QStringLiteral("/proc/self/mem"), files.path("ridge.txt")));
  const LogCatcher log;
  EXPECT_FALSE(controller.loadUTPlateBoundaries());
  EXPECT_EQ(titlesOf(*controller.boundaries()),
            (QStringList{QStringLiteral("the trench\n"), QStringLiteral("the transform\n")}));
  EXPECT_EQ(LogCatcher::lines().size(), 1);
}

TEST_F(PlateBoundaryController, hasTheLibrarysBoundariesWhereTheHostBringsNone) {
  EXPECT_TRUE(controller.loadBirdPlateBoundaries());
  const std::size_t bySegment = controller.boundaries()->size();
  EXPECT_GT(bySegment, 0U);
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_GT(controller.boundaries()->size(), bySegment);
}

TEST(BoundaryResource, thatIsNowhereIsSaidInOneLine) {
  XOVPolygonArray boundaries;
  SegmentCollector segments(kBirdSegmentPoints, SegmentCollector::Bounds::NotComputed, boundaries);
  const LogCatcher log;
  EXPECT_FALSE(loadBoundaryResource(QStringLiteral("nowhere.txt"), readBirdBoundaries, segments));
  EXPECT_EQ(LogCatcher::lines(),
            QStringList(QStringLiteral("xov: plate boundaries: nowhere.txt: is not among the resources")));
  EXPECT_TRUE(boundaries.empty());
}
