#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QApplication>
#include <QLabel>

namespace xov::desk {
namespace {

class PaneTest : public DeskTest {
protected:
  Pane pane_{runner()};
};

TEST_F(PaneTest, showsWhatTheCommandDraws) {
  pane_.setRequest(request("section", {writeRecord("a.sac", "AAA"), writeRecord("b.sac", "BBB")}));
  EXPECT_TRUE(pane_.isBusy()) << "reading does not hold up the window";
  ASSERT_TRUE(hasPlot(pane_));
  const auto* const view = dynamic_cast<const MultiSeisView*>(pane_.view());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->wvfrmsArray()->size(), 2U);
  EXPECT_EQ(pane_.name(), "Record section: a.sac and 1 more");
}

TEST_F(PaneTest, saysInALineWhatCannotBeRead) {
  pane_.setRequest(request("section", {at("missing.sac")}));
  EXPECT_FALSE(hasPlot(pane_));
  ASSERT_EQ(pane_.messages().size(), 1);
  EXPECT_TRUE(pane_.messages().front().contains("missing.sac")) << qPrintable(pane_.messages().front());
  EXPECT_EQ(pane_.findChild<QLabel*>("paneText")->text(), pane_.messages().front());
}

TEST_F(PaneTest, givesBothAxesOfSlownessOneScaleAtAnySize) {
  QByteArray grid;
  for (int i = 0; i < 9; ++i)
    grid += QByteArray::number(i % 3 - 1) + ' ' + QByteArray::number(i / 3 - 1) + ' ' + QByteArray::number(i) + '\n';
  writeFile("power.xyz", grid);
  pane_.setRequest(request("fk", {at("power.xyz")}));
  pane_.resize(900, 500);
  pane_.show();
  ASSERT_TRUE(hasPlot(pane_));
  for (const QSize& size : {QSize(900, 500), QSize(400, 800), QSize(600, 590)}) {
    pane_.resize(size);
    QApplication::processEvents();
    pane_.view()->computeRects();
    EXPECT_NEAR(pane_.view()->iRect().width(), pane_.view()->iRect().height(), 1);
    EXPECT_LE(std::min(size.width() - pane_.view()->width(), size.height() - pane_.view()->height()), 1);
  }
}

TEST_F(PaneTest, keepsItsPlotWhenTheNextOneFails) {
  const PlotRequest good = request("section", {writeRecord("a.sac", "AAA")});
  pane_.setRequest(good);
  ASSERT_TRUE(hasPlot(pane_));
  const XOVView* const before = pane_.view();
  PlotRequest bad = good;
  bad.steps = {{"--filter", "lowpass", "100"}};
  pane_.setRequest(bad);
  ASSERT_TRUE(hasPlot(pane_));
  EXPECT_EQ(pane_.view(), before);
  EXPECT_FALSE(pane_.messages().isEmpty());
}

// A file that has grown, then one that says it has more samples than there are.
TEST_F(PaneTest, showsFilesAsTheyAreNowAndKeepsItsPlotWhenTheyLie) {
  const QString path = writeRecord("a.sac", "AAA");
  PlotRequest wanted = request("section", {path});
  pane_.setRequest(wanted);
  ASSERT_TRUE(hasPlot(pane_));
  const auto samples = [this] {
    const auto* const view = dynamic_cast<const MultiSeisView*>(pane_.view());
    return view == nullptr ? 0 : view->wvfrmsArray()->front()->npts();
  };
  EXPECT_EQ(samples(), 601);
  writeRecord("a.sac", "AAA", "BHZ", 900);
  wanted.steps = {{"--detrend", "mean"}};
  pane_.setRequest(wanted);
  ASSERT_TRUE(hasPlot(pane_));
  EXPECT_EQ(samples(), 900);
  ASSERT_TRUE(QFile::resize(path, 1000));
  wanted.steps = {{"--detrend", "linear"}};
  pane_.setRequest(wanted);
  ASSERT_TRUE(hasPlot(pane_));
  EXPECT_EQ(samples(), 900) << "what could be shown last";
  EXPECT_EQ(pane_.messages().size(), 1);
  pane_.view()->grab();
}

TEST_F(PaneTest, writesPropertiesWithoutReadingAgain) {
  const QString file = writeRecord("a.sac", "AAA");
  PlotRequest wanted = request("section", {file});
  pane_.setRequest(wanted);
  ASSERT_TRUE(hasPlot(pane_));
  const QString usual = pane_.view()->plotTitle();
  ASSERT_TRUE(QFile::remove(file));
  wanted.properties = {{"title", "Mine"}, {"lineWidth", "2.5"}};
  pane_.setRequest(wanted);
  EXPECT_FALSE(pane_.isBusy());
  EXPECT_EQ(pane_.view()->plotTitle(), "Mine");
  EXPECT_EQ(pane_.view()->lineWidth(), 2.5);
  wanted.properties.remove("title");
  pane_.setRequest(wanted);
  EXPECT_FALSE(pane_.isBusy());
  EXPECT_EQ(pane_.view()->plotTitle(), usual) << "that of the command";
  EXPECT_EQ(pane_.view()->lineWidth(), 2.5);
}

TEST_F(PaneTest, tellsOfAPropertyThatThereIsNot) {
  PlotRequest wanted = request("section", {writeRecord("a.sac", "AAA")});
  wanted.properties = {{"colour", "red"}};
  pane_.setRequest(wanted);
  ASSERT_TRUE(hasPlot(pane_));
  ASSERT_EQ(pane_.messages().size(), 1);
  EXPECT_TRUE(pane_.messages().front().startsWith("found 'colour', expected one of ")) << "the plot is there";
}

TEST_F(PaneTest, givesUpWhenItIsCancelled) {
  pane_.setRequest(request("section", {writeRecord("a.sac", "AAA")}));
  pane_.cancel();
  EXPECT_FALSE(pane_.isBusy());
  EXPECT_EQ(pane_.view(), nullptr);
  EXPECT_EQ(pane_.findChild<QLabel*>("paneText")->text(), "Cancelled");
}

TEST_F(PaneTest, turnsThePagesOfADrum) {
  PlotRequest wanted = request("drum", {writeRecord("a.sac", "AAA"), writeRecord("b.sac", "BBB")});
  wanted.options = {"--page", "channel"};
  pane_.setRequest(wanted);
  ASSERT_TRUE(hasPlot(pane_));
  ASSERT_EQ(pane_.pages(), 2U);
  const XOVView* const first = pane_.view();
  pane_.showPage(1);
  EXPECT_NE(pane_.view(), first);
  EXPECT_EQ(pane_.page(), 1U);
  pane_.showPage(2);
  EXPECT_EQ(pane_.page(), 1U) << "there is no third one";
}

} // namespace
} // namespace xov::desk
