#include "apps/desk/window/Memory.h"

#include "apps/desk/window/PicksTool.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAction>
#include <QTest>

#include <random>

namespace xov::desk {
namespace {

using MemoryTest = DeskTest;

TEST_F(MemoryTest, bringsPanesBackAsTheyWere) {
  window_->show();
  Pane* const first = window_->openPane(request("drum", {writeRecord("a.sac", "AAA"), writeRecord("b.sac", "BBB")}));
  PlotRequest wanted = first->request();
  wanted.options = {"--page", "channel"};
  wanted.steps = {{"--filter", "lowpass", "1"}};
  window_->changeRequest(first, wanted, "Pages");
  ASSERT_TRUE(hasPlot(*first));
  first->showPage(1);
  Pane* const second = window_->openPane(request("section", {at("a.sac")}));
  ASSERT_TRUE(hasPlot(*second));
  second->view()->setProperty("title", "Mine");
  child<QAction>("splitRight").trigger();
  window_->workspace().goTo(*first);
  const DeskSettings settings = window_->memory().now();

  window_ = std::make_unique<MainWindow>(runner());
  window_->show();
  window_->memory().restore(settings, true);
  ASSERT_EQ(window_->panes().size(), 2U);
  Pane* const firstAgain = window_->panes()[0];
  Pane* const secondAgain = window_->panes()[1];
  ASSERT_TRUE(hasPlot(*firstAgain) && hasPlot(*secondAgain));
  EXPECT_EQ(window_->currentPane(), firstAgain);
  EXPECT_EQ(firstAgain->request().words(), wanted.words());
  EXPECT_EQ(firstAgain->page(), 1U);
  EXPECT_EQ(secondAgain->view()->plotTitle(), "Mine");
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return firstAgain->mapToGlobal(QPoint()).x() < secondAgain->mapToGlobal(QPoint()).x();
  })) << "beside each other";
}

TEST_F(MemoryTest, bringsPicksBackAndPickingGoesOn) {
  Pick pick;
  pick.phase = "P";
  pick.time = *parseUtcNanoseconds(u"2011-03-11T05:47:45Z");
  pick.channel = {"XX", "AAA", "", "BHZ"};
  window_->picks().session().document().add(pick);
  ASSERT_TRUE(window_->picks().session().save(at("picks.xml")));
  child<QAction>("pickByHand").trigger();
  const DeskSettings settings = window_->memory().now();

  window_ = std::make_unique<MainWindow>(runner());
  window_->memory().restore(settings, true);
  const PickArray& picks = window_->picks().session().document().picks();
  ASSERT_EQ(picks.size(), 1U);
  EXPECT_EQ(picks[0].phase, "P");
  EXPECT_EQ(picks[0].time, pick.time);
  EXPECT_FALSE(window_->picks().session().isModified());
  EXPECT_EQ(window_->picks().session().path(), at("picks.xml"));
  EXPECT_TRUE(window_->picks().isPicking());
}

TEST_F(MemoryTest, opensNoPanesWhereFilesAreGiven) {
  DeskSettings settings;
  settings.panes = {{1, 0, request("section", {at("a.sac")})}};
  settings.recent = {"/data/a.sac"};
  window_->memory().restore(settings, false);
  EXPECT_TRUE(window_->panes().empty());
  EXPECT_EQ(window_->memory().now().recent, settings.recent);
}

// Digits of the states of windows are changed at random places of the file: Qt would crash on what they say.
TEST_F(MemoryTest, startsWithDamagedStatesOfItsWindow) {
  window_->show();
  ASSERT_TRUE(hasPlot(*window_->openPane(request("section", {writeRecord("a.sac", "AAA")}))));
  const DeskSettings whole = window_->memory().now();
  std::mt19937 random(1);
  for (int round = 0; round < 6; ++round) {
    QByteArray text = whole.toJson();
    for (const char* const name : {"geometry", "tools", "workspace"}) {
      const qsizetype begin = text.indexOf(QByteArray("\"") + name + "\": \"") + 60; // behind name and sum
      const qsizetype end = text.indexOf('"', begin);
      ASSERT_GT(end, begin + 10);
      for (int change = 0; change < 4; ++change)
        text[begin + qsizetype(random() % std::size_t(end - begin))] = char('a' + random() % 26);
    }
    const Result<DeskSettings> read = DeskSettings::fromJson(text);
    ASSERT_TRUE(read);
    const DeskSettings& settings = *read;
    EXPECT_EQ(settings.tools, QByteArray());
    window_ = std::make_unique<MainWindow>(runner());
    window_->memory().restore(settings, true);
    window_->show();
    ASSERT_EQ(window_->panes().size(), 1U);
    EXPECT_TRUE(hasPlot(*window_->panes().front()));
  }
}

TEST_F(MemoryTest, startsWithNonsense) {
  DeskSettings settings;
  settings.geometry = settings.tools = settings.workspace = "no state of a window";
  settings.panes = {{1, 99, request("no such plot", {})}, {2000000000, 0, request("section", {at("gone.sac")})}};
  settings.current = 12;
  settings.theme = "paisley";
  window_->memory().restore(settings, true);
  ASSERT_EQ(window_->panes().size(), 2U);
  for (const Pane* const pane : window_->panes()) {
    EXPECT_FALSE(hasPlot(*pane));
    EXPECT_FALSE(pane->messages().isEmpty());
  }
  EXPECT_EQ(window_->memory().now().theme, "system");
}

} // namespace
} // namespace xov::desk
