#include "apps/desk/files/FilesPanel.h"
#include "apps/desk/processing/ProcessingPanel.h"
#include "apps/desk/window/FilesTool.h"
#include "apps/desk/window/ProcessingTool.h"
#include "tests/apps/desk/DeskFixture.h"
#include "tests/support/SdsFiles.h"

#include <QAction>
#include <QFile>
#include <QTest>

#include <filesystem>

namespace xov::desk {
namespace {

constexpr int kToolPatienceMs = 20000;

/// The list of files and the list of steps in a window.
class ToolsTest : public DeskTest {
protected:
  FilesPanel& files() { return child<FilesPanel>("files"); }
  ProcessingPanel& processing() { return child<ProcessingPanel>("processing"); }
  bool isListed() {
    return QTest::qWaitFor([this] { return !files().isBusy(); }, kToolPatienceMs);
  }
  void add(const char* option) { processing().addStep(*stepKindOf(option)); }
};

TEST_F(ToolsTest, listAFolderWithoutShowingAllOfIt) {
  writeRecord("a.sac", "AAA");
  writeRecord("b.sac", "BBB");
  window_->openFiles({folder_.path()});
  ASSERT_TRUE(isListed());
  EXPECT_EQ(files().catalogue().rowCount(), 2);
  EXPECT_TRUE(window_->panes().empty());
  files().openSelected();
  ASSERT_EQ(window_->panes().size(), 1U);
  EXPECT_EQ(window_->currentPane()->request().kind, "section");
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
}

TEST_F(ToolsTest, showStepsOfTheCurrentPaneAndTakeThemBack) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  EXPECT_TRUE(processing().isEnabled());
  add("--detrend");
  add("--integrate");
  EXPECT_EQ(pane->request().steps, (QList<QStringList>{{"--detrend", "linear"}, {"--integrate"}}));
  EXPECT_EQ(window_->undoStack().undoText(), "Add Integrate");
  ASSERT_TRUE(hasPlot(*pane));
  EXPECT_TRUE(pane->messages().isEmpty()) << qPrintable(pane->messages().join(' '));
  window_->undoStack().undo();
  EXPECT_EQ(pane->request().steps, (QList<QStringList>{{"--detrend", "linear"}}));
  EXPECT_EQ(processing().model().rowCount(), 1);
  window_->undoStack().redo();
  EXPECT_EQ(processing().model().rowCount(), 2);
}

TEST_F(ToolsTest, filterByAKey) {
  child<QAction>("addFilter").trigger();
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  EXPECT_EQ(child<QAction>("addFilter").shortcut(), QKeySequence("Ctrl+F"));
  child<QAction>("addFilter").trigger();
  EXPECT_EQ(pane->request().steps, (QList<QStringList>{{"--filter", "bandpass", "0.5", "4"}}));
  ASSERT_TRUE(hasPlot(*pane));
  EXPECT_TRUE(pane->messages().isEmpty())
      << "a band that 10 samples a second have: " << qPrintable(pane->messages().join(' '));
}

TEST_F(ToolsTest, haveRawDataAKeyAway) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  add("--differentiate");
  QAction& raw = child<QAction>("toggleRaw");
  EXPECT_FALSE(raw.shortcut().isEmpty());
  raw.trigger();
  EXPECT_TRUE(pane->request().isRaw);
  EXPECT_FALSE(pane->request().words().contains("--differentiate"));
  raw.trigger();
  EXPECT_TRUE(pane->request().words().contains("--differentiate"));
  window_->undoStack().undo();
  EXPECT_TRUE(pane->request().isRaw);
}

TEST_F(ToolsTest, haveNoStepsForAMap) {
  writeFile("e.csv", "time,latitude,longitude\n2011-03-11T05:46:24,38.3,142.4\n");
  PlotRequest map;
  map.kind = "map";
  map.options = {"--events", at("e.csv")};
  window_->openPane(map);
  EXPECT_FALSE(processing().isEnabled());
  window_->closePane(window_->currentPane());
  EXPECT_FALSE(processing().isEnabled());
}

TEST_F(ToolsTest, showFilesWhoseNamesAreNoText) {
  const std::filesystem::path odd = folder_.path().toStdString() + "/caf\xe9.sac";
  std::filesystem::rename(writeRecord("a.sac", "AAA").toStdString(), odd);
  window_->openFiles({folder_.path()});
  ASSERT_TRUE(isListed());
  files().openSelected();
  ASSERT_EQ(window_->panes().size(), 1U);
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
  std::filesystem::remove(odd); // Qt does not know how to call it
}

TEST_F(ToolsTest, sayInALineThatAFileHasVanished) {
  const QString path = writeRecord("a.sac", "AAA");
  window_->openFiles({folder_.path()});
  ASSERT_TRUE(isListed());
  ASSERT_TRUE(QFile::remove(path));
  files().openSelected();
  ASSERT_EQ(window_->panes().size(), 1U);
  EXPECT_FALSE(hasPlot(*window_->currentPane()));
  ASSERT_EQ(window_->currentPane()->messages().size(), 1);
  EXPECT_TRUE(window_->currentPane()->messages()[0].contains(path));
}

TEST_F(ToolsTest, showTheDaysOfAnArchive) {
  const test::SdsFiles sds;
  for (int day = 0; day < 3; ++day)
    sds.addDay("II", "TLY", "00", "BHZ", QDate(2011, 12, 30).addDays(day), 100 * day);
  window_->openFiles({sds.root()});
  ASSERT_TRUE(isListed());
  files().setIndexFolder({});
  files().setArchiveTime(QDateTime(QDate(2011, 12, 30), QTime(0, 0), Qt::UTC),
                         QDateTime(QDate(2012, 1, 2), QTime(0, 0), Qt::UTC));
  files().openSelected();
  ASSERT_EQ(window_->panes().size(), 1U);
  EXPECT_EQ(window_->currentPane()->request().kind, "drum");
  EXPECT_TRUE(hasPlot(*window_->currentPane())) << qPrintable(window_->currentPane()->messages().join(' '));
}

TEST_F(ToolsTest, mayBeClosedWhileTheyWork) {
  for (int i = 0; i < 20; ++i)
    writeRecord(QString::number(i) + ".sac", "AAA", "BHZ", 10);
  window_->openFiles({folder_.path()});
  window_.reset();
  SUCCEED() << "and nothing has come back to what is no more";
}

} // namespace
} // namespace xov::desk
