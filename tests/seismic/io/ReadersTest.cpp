#include "XOV_Graphics/seismic/io/Readers.h"

#include "tests/seismic/SacBytes.h"
#include "tests/seismic/SacTextLines.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

#include <string>

using namespace xov;
using test::Order;
using test::SacBytes;
using test::SacTextLines;
using test::TemporaryFiles;

namespace {

int countRead(const QString& path) {
  const Result<SeismogramArray> result = readSeismograms(path);
  EXPECT_TRUE(result) << result.error().toStdString();
  return int(result->size());
}

} // namespace

TEST(Readers, knowAFileByItsContentsNotItsName) {
  const TemporaryFiles files;
  EXPECT_EQ(countRead(files.write("one.txt", SacBytes(Order::Little).samples({1, 2}).bytes())), 1);
  EXPECT_EQ(countRead(files.write("two", SacBytes(Order::Big, 7).samples({1}).footerWith(0, 1).bytes())), 1);
  EXPECT_EQ(countRead(files.write("three.SAC", SacTextLines().npts(1).add("5").bytes())), 1);
}

TEST(Readers, handOverTheRecordWithItsPath) {
  const TemporaryFiles files;
  const QString path = files.write("a.sac", SacBytes().samples({1, 9}).bytes());
  const Result<SeismogramArray> result = readSeismograms(path);
  ASSERT_EQ(result->size(), 1U);
  EXPECT_EQ(result->front()->smax(), 9);
  EXPECT_EQ(result->front()->path(), path);
}

TEST(Readers, refuseAnUnknownFormatAndNameTheKnownOnes) {
  const TemporaryFiles files;
  const QString path = files.write("picture.png", QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(2000, 'x'));
  EXPECT_EQ(readSeismograms(path).error(),
            path + ": unknown format, expected " + seismogramFormats().join(QStringLiteral(" or ")));
  EXPECT_TRUE(seismogramFormats().contains(QStringLiteral("SAC binary")));
  EXPECT_TRUE(seismogramFormats().contains(QStringLiteral("SAC alphanumeric")));
}

TEST(Readers, refuseTextThatIsNoSacHeader) {
  const TemporaryFiles files;
  const QString path = files.write("events.csv", "time,latitude\n2011-03-11,38.3\n");
  EXPECT_TRUE(readSeismograms(path).error().startsWith(path + ": unknown format")) << "no traces in here";
}

TEST(Readers, reportDamageInTheWordsOfTheFormat) {
  const TemporaryFiles files;
  const QString path = files.write("cut.sac", SacBytes().samples({1, 2}).bytes().chopped(4));
  EXPECT_EQ(readSeismograms(path).error(), path + ": npts at byte 316: found 2, but the file holds 1 samples");
}

TEST(Readers, refuseWhatIsNoFile) {
  const TemporaryFiles files;
  EXPECT_EQ(readSeismograms(files.folder()).error(), files.folder() + ": is a folder, expected a file");
  EXPECT_EQ(readSeismograms(files.path("none")).error(),
            files.path("none") + ": cannot be opened: No such file or directory");
  EXPECT_EQ(readSeismograms(files.write("empty", {})).error(), files.path("empty") + ": the file is empty");
}

TEST(Readers, readSeveralFilesEachAtItsPlaceWithAnyNumberOfThreads) {
  const TemporaryFiles files;
  QStringList paths;
  for (int k = 0; k < 40; ++k) {
    const QByteArray bytes = SacBytes().samples({1, float(k)}).bytes();
    paths.append(files.write(std::to_string(k).c_str(), k == 17 ? bytes.chopped(4) : bytes));
  }
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    const auto found = readSeismogramFiles(paths);
    ASSERT_EQ(found.size(), 40U);
    for (std::size_t k = 0; k < found.size(); ++k) {
      if (k == 17) {
        EXPECT_TRUE(found[k].error().startsWith(paths[17] + ": npts at byte 316")) << found[k].error().toStdString();
        continue;
      }
      ASSERT_EQ(found[k]->records.size(), 1U);
      EXPECT_EQ(found[k]->records[0]->GetSacSeis()[1], float(k));
    }
  }
  EXPECT_TRUE(readSeismogramFiles({}).empty());
}
