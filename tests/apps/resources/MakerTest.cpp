#include "apps/resources/Maker.h"

#include "apps/resources/JpegTiff.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>

using namespace xov;
using namespace xov::maker;

namespace {

class Maker : public ::testing::Test {
protected:
  /// Every resource as a file with that text.
  void fillRoot(const QByteArray& text) const {
    for (const Resource& resource : kResources) {
      const QString path = targetPath(resource, Edition::Full, files.folder());
      QDir().mkpath(QFileInfo(path).path());
      QFile file(path);
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
      file.write(text);
    }
  }

  QStringList missing() const {
    QStringList names;
    const Result<std::vector<Task>> tasks = missingResources(files.folder());
    EXPECT_TRUE(tasks) << qPrintable(tasks.error());
    for (const Task& task : *tasks)
      names << QLatin1StringView(task.resource->name);
    return names;
  }

  test::TemporaryFiles files;
};

const QByteArray kDerived = derivedBoundariesBySegment({{"ridge", {{{1, 2}, {3, 4}}}}});

} // namespace

TEST_F(Maker, putsTheGridAndThePicturesInTheirFolders) {
  EXPECT_EQ(targetPath(kResources[0], Edition::Full, QStringLiteral("/data")),
            QStringLiteral("/data/DATA/Grids/etopo5.i2"));
  EXPECT_EQ(targetPath(kResources[1], Edition::Full, QStringLiteral("/data")),
            QStringLiteral("/data/resources/nasa_satellite_wide.tif"));
  EXPECT_EQ(targetPath(kResources[0], Edition::Small, QStringLiteral("/tree")), QStringLiteral("/tree/etopo30.i2"));
}

TEST_F(Maker, missesAllThatIsNotThere) {
  EXPECT_EQ(missing().size(), qsizetype(std::size(kResources)));
  fillRoot(kDerived);
  ASSERT_TRUE(markMade(files.folder()));
  EXPECT_EQ(missing(), QStringList());
  ASSERT_TRUE(QFile::remove(files.path("resources/ridge.txt")));
  EXPECT_EQ(missing(), QStringList(QStringLiteral("ridge.txt")));
}

TEST_F(Maker, makesAllAgainAfterAnotherVersion) {
  fillRoot(kDerived);
  files.write("resources/made-by", "of another version\n");
  EXPECT_EQ(missing().size(), qsizetype(std::size(kResources)));
}

TEST_F(Maker, keepsImportedBoundaries) {
  fillRoot("AF-AN\n1 2\n3 4\n***\n");
  EXPECT_FALSE(missing().contains(QStringLiteral("PB2002_boundaries.txt")));
  EXPECT_EQ(missing().size(), qsizetype(std::size(kResources)) - 1);
}

TEST_F(Maker, saysWhichPackageIsNotThere) {
  const Packages packages(files.path("work"), files.folder());
  Inputs inputs(packages, [](const QString&) {});
  EXPECT_EQ(inputs.boundaries().error(), QStringLiteral("texlive-pstricks: no such package in ") + files.folder());
}

TEST_F(Maker, takesOnlyPackagesOfASumThatTheIndexKnows) {
  // sha256sum of "abc", from the standard that defines it.
  const QString abc = QStringLiteral("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  files.write("texlive-pstricks_1_all.deb", "abc");
  const auto problem = [&](const QStringList& sums) {
    const Packages packages(files.path("work"), files.folder(), [&](const QString&) { return sums; });
    Inputs inputs(packages, [](const QString&) {});
    return inputs.boundaries().error();
  };
  EXPECT_EQ(problem({QString(64, '0')}),
            files.path("texlive-pstricks_1_all.deb") + ": found the sum " + abc + ", which the index does not know");
  // The right one is unpacked, which fails: it is no package.
  EXPECT_TRUE(problem({QString(64, '0'), abc}).startsWith("dpkg-deb: ")) << qPrintable(problem({abc}));
}

TEST_F(Maker, writesNothingWhenAnInputIsMissing) {
  const Packages packages(files.path("work"), files.folder());
  Inputs inputs(packages, [](const QString&) {});
  QStringList steps;
  const QString root = files.path("root");
  EXPECT_FALSE(makeAll(*missingResources(root), Edition::Full, inputs, [&](const QString& step) { steps << step; }));
  EXPECT_EQ(steps, QStringList(QStringLiteral("[1/10] etopo5.i2")));
  EXPECT_FALSE(QFile::exists(root));
}

TEST(JpegTiff, isReadBack) {
  QImage image(100, 37, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, y, qRgb(2 * x, 5 * y, 100));
  }
  const Result<QByteArray> tiff = jpegTiff(image, 95);
  ASSERT_TRUE(tiff) << qPrintable(tiff.error());
  const QImage read = QImage::fromData(*tiff, "tiff");
  ASSERT_EQ(read.size(), image.size());
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      EXPECT_NEAR(qRed(read.pixel(x, y)), 2 * x, 12) << x << ' ' << y;
      EXPECT_NEAR(qGreen(read.pixel(x, y)), 5 * y, 12) << x << ' ' << y;
      EXPECT_NEAR(qBlue(read.pixel(x, y)), 100, 16) << x << ' ' << y;
    }
  }
}

TEST(JpegTiff, refusesANullPicture) { EXPECT_FALSE(jpegTiff(QImage(), 80)); }
