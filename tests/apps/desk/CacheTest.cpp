#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>

namespace xov::desk {
namespace {

class CacheTest : public DeskTest {
protected:
  /// What of a file of that name a new pane draws: the largest sample.
  float shownPeak(const QString& file, const QList<QStringList>& steps = {}, const QStringList& options = {}) {
    PlotRequest wanted = request("section", {file});
    wanted.options = options;
    wanted.steps = steps;
    Pane pane(runner());
    pane.setRequest(wanted);
    if (!hasPlot(pane)) return -1;
    const auto* const view = qobject_cast<const MultiSeisView*>(pane.view());
    return view->wvfrmsArray()->front()->absMax();
  }
  /// Writes zeros over the samples, and leaves the size and, unless told otherwise, the time.
  static void silence(const QString& path, bool keepsTime) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime time = file.fileTime(QFileDevice::FileModificationTime);
    constexpr qint64 kHeader = 632; // bytes of a SAC header
    ASSERT_TRUE(file.seek(kHeader));
    ASSERT_EQ(file.write(QByteArray(int(file.size() - kHeader), '\0')), file.size() - kHeader);
    file.flush();
    ASSERT_TRUE(file.setFileTime(keepsTime ? time : time.addSecs(2), QFileDevice::FileModificationTime));
  }
};

TEST_F(CacheTest, readsAFileAgainOnlyWhenItHasChanged) {
  const QString file = writeRecord("a.sac", "AAA");
  EXPECT_NEAR(shownPeak(file), 1000, 10) << "the amplitude of its sine, about its mean";
  silence(file, true);
  EXPECT_NEAR(shownPeak(file), 1000, 10) << "as it was read before";
  silence(file, false);
  EXPECT_EQ(shownPeak(file), 0);
}

TEST_F(CacheTest, takesUpFromTheStepsThatWereDone) {
  const QString file = writeRecord("a.sac", "AAA");
  const QList<QStringList> once{{"--differentiate"}};
  const QList<QStringList> twice{{"--differentiate"}, {"--differentiate"}};
  const float slope = shownPeak(file, once);
  EXPECT_NEAR(slope, 3000, 150) << "0.3 a sample of 0.1 s";
  silence(file, true);
  EXPECT_EQ(shownPeak(file, once), slope);
  EXPECT_NEAR(shownPeak(file, twice), 9000, 400);
}

TEST_F(CacheTest, tellsOtherStepsAndOrdersApart) {
  const QString file = writeRecord("a.sac", "AAA");
  const float passed = shownPeak(file, {{"--filter", "lowpass", "0.1"}});
  EXPECT_LT(passed, 500) << "a sine of 0.48 Hz";
  EXPECT_GT(shownPeak(file, {{"--filter", "highpass", "0.1"}}), 900);
  EXPECT_EQ(shownPeak(file, {{"--filter", "lowpass", "0.1"}}), passed);
  EXPECT_NE(shownPeak(file, {{"--filter", "lowpass", "0.1"}}, {"--corners", "1"}), passed);
  EXPECT_NEAR(shownPeak(file), 1000, 10) << "what was read has stayed as it was";
}

} // namespace
} // namespace xov::desk
