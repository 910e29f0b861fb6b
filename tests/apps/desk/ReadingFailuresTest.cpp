#include "XOV_Graphics/base/SampleSource.h"
#include "XOV_Graphics/seismic/io/archive/Archive.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QFile>
#include <QStatusBar>
#include <QTest>

namespace xov::desk {
namespace {

constexpr int kMegabyteAndMore = 400'000; // samples: files of less are read whole

/// Samples of a file that is cut short while it is open.
class ReadingFailuresTest : public DeskTest {
protected:
  /// Samples in the middle of the file, as a drawing asks for them when the file ends before them.
  void readWhatIsCutOff(const QString& path) {
    const IndexCache cache{at("indexes")};
    ASSERT_TRUE(openSeismogramFile(path, {}, cache));
    const Result<SeismogramFile> file = openSeismogramFile(path, {}, cache); // by its index: no samples are read
    ASSERT_TRUE(file) << qPrintable(file.error());
    ASSERT_EQ(file->records.size(), 1U);
    const BorrowedSamples samples = file->records.front()->borrowedSamples();
    ASSERT_NE(samples.source, nullptr);
    ASSERT_TRUE(QFile::resize(path, 1000));
    const float* const middle = samples.samples + kMegabyteAndMore / 2;
    const HeldSamples held(samples.source, middle, middle + 10);
    EXPECT_TRUE(std::isnan(*middle));
  }
};

TEST_F(ReadingFailuresTest, AreToldInTheStatusBarWithTheFilesName) {
  const QString path = writeRecord("long.SAC", "AAA", "BHZ", kMegabyteAndMore);
  testing::internal::CaptureStderr();
  readWhatIsCutOff(path);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->statusBar()->currentMessage().isEmpty(); }));
  const QString told = window_->statusBar()->currentMessage();
  EXPECT_TRUE(told.startsWith(path + ": ")) << qPrintable(told);
  EXPECT_GT(told.size(), path.size() + 10) << "and why";
  EXPECT_EQ(QString::fromStdString(testing::internal::GetCapturedStderr()), "xov: " + told + "\n");
  EXPECT_EQ(takeSampleFaults(), QStringList());
}

TEST_F(ReadingFailuresTest, AreNoMatterOfAWindowThatIsGone) {
  const QString path = writeRecord("long.SAC", "AAA", "BHZ", kMegabyteAndMore);
  window_.reset();
  readWhatIsCutOff(path);
  EXPECT_EQ(takeSampleFaults().size(), 1) << "they wait for who asks";
}

} // namespace
} // namespace xov::desk
