#include "apps/desk/window/EventsTool.h"

#include "apps/desk/events/EventPanel.h"
#include "apps/desk/files/FilesPanel.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QDockWidget>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTest>

#include <XOV_Graphics/platform/Pasteboard.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>

namespace xov::desk {
namespace {

constexpr int kEventPatienceMs = 20000;

/// A catalogue of three events, two of which lie between 30 and 45° north and 130 and 150° east.
class EventsToolTest : public DeskTest {
protected:
  EventsToolTest() {
    QStandardPaths::setTestModeEnabled(true);
    writeFile("e.csv", "time,latitude,longitude,depth,magnitude,magType,place\n"
                       "2011-03-11T05:46:24,38.3,142.4,29,9.1,Mww,Honshu\n"
                       "2011-03-11T05:47:00,36.25,141.1,40,7.9,Mw,Ibaraki\n"
                       "2013-03-11T05:46:24,-20,110,10,5,mb,elsewhere\n");
  }
  ~EventsToolTest() override { QStandardPaths::setTestModeEnabled(false); }

  EventPanel& panel() { return child<EventPanel>("events"); }
  bool list() {
    PlotRequest map;
    map.kind = "map";
    map.options = {"--events", at("e.csv")};
    child<EventsTool>("eventsTool").show(map, {130, 150, 30, 45});
    return QTest::qWaitFor([this] { return panel().model()->rowCount() > 0; }, kEventPatienceMs);
  }
  QString cell(int row, int column) { return panel().model()->index(row, column).data().toString(); }
};

TEST_F(EventsToolTest, listsTheEventsOfABox) {
  EXPECT_TRUE(child<QDockWidget>("eventsDock").isHidden());
  ASSERT_TRUE(list());
  EXPECT_FALSE(child<QDockWidget>("eventsDock").isHidden());
  ASSERT_EQ(panel().model()->rowCount(), 2);
  EXPECT_EQ(cell(0, EventTableModel::Time), "2011-03-11T05:46:24.000Z");
  EXPECT_EQ(cell(0, EventTableModel::Latitude), "38.3");
  EXPECT_EQ(cell(0, EventTableModel::Magnitude), "9.1");
  EXPECT_EQ(cell(0, EventTableModel::Type), "Mww");
  EXPECT_EQ(cell(1, EventTableModel::Place), "Ibaraki");
  panel().sortByColumn(EventTableModel::Magnitude, Qt::AscendingOrder);
  EXPECT_EQ(cell(0, EventTableModel::Magnitude), "7.9");
}

TEST_F(EventsToolTest, copiesWhatIsSelectedAsText) {
  ASSERT_TRUE(list());
  panel().selectRow(1);
  QTest::keyClick(&panel(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QString::fromUtf8(Pasteboard::generalPasteboard().data("text/plain")),
            "Origin time (UTC)\tLatitude\tLongitude\tDepth (km)\tMagnitude\tType\tPlace\n"
            "2011-03-11T05:47:00.000Z\t36.25\t141.1\t40\t7.9\tMw\tIbaraki\n");
}

// The record begins at 05:47:30: it has something of the half hour from the origin on, and is one of that event, not
// of the stronger one of the catalogue.
TEST_F(EventsToolTest, opensSeismogramsOfAnEvent) {
  writeRecord("a.sac", "AAA");
  window_->openFiles({folder_.path()});
  auto& files = child<FilesPanel>("files");
  ASSERT_TRUE(QTest::qWaitFor([&files] { return !files.isBusy(); }, kEventPatienceMs));
  ASSERT_TRUE(list());
  panel().setCurrentIndex(panel().model()->index(1, 0));
  QTest::keyClick(&panel(), Qt::Key_Return);
  ASSERT_EQ(window_->panes().size(), 1U);
  Pane& pane = *window_->currentPane();
  ASSERT_TRUE(hasPlot(pane)) << qPrintable(pane.messages().join(' '));
  const auto* const view = qobject_cast<const MultiSeisView*>(pane.view());
  ASSERT_NE(view, nullptr);
  ASSERT_EQ(view->wvfrmsArray()->size(), 1U);
  EXPECT_NEAR(view->wvfrmsArray()->front()->evdp(), 40, 1e-3);
}

TEST_F(EventsToolTest, saysThatThereIsNothingOfAnEvent) {
  ASSERT_TRUE(list());
  panel().setCurrentIndex(panel().model()->index(0, 0));
  QTest::keyClick(&panel(), Qt::Key_Return);
  EXPECT_TRUE(window_->panes().empty());
  EXPECT_TRUE(window_->statusBar()->currentMessage().contains("nothing"));
}

} // namespace
} // namespace xov::desk
