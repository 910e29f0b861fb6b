#include "apps/desk/panes/PaneKinds.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAction>
#include <QTest>

namespace xov::desk {
namespace {

using WorkspaceTest = DeskTest;

TEST_F(WorkspaceTest, opensFilesAsWhatSuitsThem) {
  writeRecord("a.sac", "AAA");
  writeFile("quakes.csv", "time,latitude,longitude,depth,mag\n2011-03-11T05:46:24Z,38.3,142.4,29,9.1\n");
  writeFile("curve.txt", "1 2\n2 3\n3 5\n");
  writeFile("map.nxy", "2\n0 0\n10 10\n");
  const std::vector<PlotRequest> requests =
      requestsFor({at("a.sac"), at("quakes.csv"), at("curve.txt"), at("map.nxy")});
  ASSERT_EQ(requests.size(), 4U);
  EXPECT_EQ(requests[0].words(), QStringList({"map", "--events", at("quakes.csv")}));
  EXPECT_EQ(requests[1].words(), QStringList({"xy", "--", at("curve.txt")}));
  EXPECT_EQ(requests[2].words(), QStringList({"map", "--polygons", at("map.nxy")}));
  EXPECT_EQ(requests[3].words(), QStringList({"section", "--", at("a.sac")}));
}

TEST_F(WorkspaceTest, opensARecordingOfHoursAsADrum) {
  const QString file = writeRecord("long.sac", "AAA", "BHZ", 6 * 36000); // 10 Hz
  ASSERT_EQ(requestsFor({file}).size(), 1U);
  EXPECT_EQ(requestsFor({file}).front().kind, "drum");
}

TEST_F(WorkspaceTest, opensFilesThatTheWindowIsGiven) {
  window_->openFiles({writeRecord("a.sac", "AAA")});
  ASSERT_TRUE(QTest::qWaitFor([this] { return window_->panes().size() == 1; }));
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
  EXPECT_EQ(window_->windowTitle(), "Record section: a.sac — XOV Desk");
}

TEST_F(WorkspaceTest, takesBackWhatWasDone) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  PlotRequest filtered = pane->request();
  filtered.steps = {{"--filter", "lowpass", "1"}};
  window_->changeRequest(pane, filtered, "Filter");
  ASSERT_TRUE(hasPlot(*pane));
  EXPECT_EQ(pane->view()->subtitle(), "lowpass 1 Hz");
  child<QAction>("undo").trigger();
  ASSERT_TRUE(hasPlot(*pane));
  EXPECT_EQ(pane->view()->subtitle(), "");
  child<QAction>("undo").trigger();
  EXPECT_TRUE(window_->panes().empty());
  child<QAction>("redo").trigger();
  child<QAction>("redo").trigger();
  ASSERT_EQ(window_->panes().size(), 1U);
  ASSERT_TRUE(hasPlot(*window_->currentPane()));
  EXPECT_EQ(window_->currentPane()->view()->subtitle(), "lowpass 1 Hz");
}

TEST_F(WorkspaceTest, takesChangesOfOnePropertyBackTogether) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  for (const char* const width : {"2", "3", "4"}) {
    PlotRequest wanted = pane->request();
    wanted.properties["lineWidth"] = width;
    window_->changeRequest(pane, wanted, "Line width", "lineWidth");
  }
  EXPECT_EQ(pane->view()->lineWidth(), 4);
  child<QAction>("undo").trigger();
  EXPECT_TRUE(pane->request().properties.isEmpty());
  EXPECT_EQ(pane->view()->lineWidth(), 1);
}

TEST_F(WorkspaceTest, closesAPaneWithItsButtonAndBringsItBack) {
  window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  Pane* const second = window_->openPane(request("stack", {at("a.sac")}));
  ASSERT_TRUE(hasPlot(*second));
  second->parentWidget()->close();
  ASSERT_EQ(window_->panes().size(), 1U);
  EXPECT_EQ(window_->currentPane()->request().kind, "section");
  child<QAction>("undo").trigger();
  ASSERT_EQ(window_->panes().size(), 2U);
  EXPECT_EQ(window_->currentPane()->request().kind, "stack");
}

TEST_F(WorkspaceTest, putsPanesBesideEachOtherAndTearsThemOff) {
  window_->show();
  Pane* const first = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  Pane* const second = window_->openPane(request("stack", {at("a.sac")}));
  ASSERT_TRUE(hasPlot(*first) && hasPlot(*second));
  EXPECT_TRUE(first->view()->visibleRegion().isEmpty()) << "the second one is a tab over it";
  child<QAction>("splitRight").trigger();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return !first->view()->visibleRegion().isEmpty() && !second->view()->visibleRegion().isEmpty(); }));
  EXPECT_LT(first->mapToGlobal(QPoint()).x(), second->mapToGlobal(QPoint()).x());
  child<QAction>("tearOff").trigger();
  EXPECT_TRUE(second->parentWidget()->isWindow());
  EXPECT_TRUE(second->view()->isVisible());
  child<QAction>("previousPane").trigger();
  EXPECT_EQ(window_->currentPane(), first);
}

} // namespace
} // namespace xov::desk
