#include "apps/desk/window/PicksTool.h"

#include "apps/desk/picks/PickPanel.h"
#include "apps/desk/picks/PickTableModel.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <XOV_Graphics/seismic/UtcTime.h>
#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/seismic/io/picks/PickFiles.h>
#include <XOV_Graphics/seismic/io/sac/SacReader.h>
#include <XOV_Graphics/seismic/io/sac/SacWriter.h>
#include <XOV_Graphics/views/seismic/PickEditor.h>

namespace xov::desk {
namespace {

class PicksToolTest : public DeskTest {
protected:
  PickSession& session() { return window_->picks().session(); }
  PickDocument& document() { return session().document(); }

  /// A section of a record of 60 s, with its editor at work.
  SeismogramView* section(const QString& file) {
    Pane* const pane = window_->openPane(request("section", {file}));
    EXPECT_TRUE(hasPlot(*pane));
    child<QAction>("pickByHand").setChecked(true);
    window_->show();
    pane->view()->grab(); // lays it out
    EXPECT_TRUE(QTest::qWaitFor([pane] { return pane->view()->findChild<PickEditor*>() != nullptr; }));
    return qobject_cast<SeismogramView*>(pane->view());
  }
  /// Presses a key with the pointer in the middle of the data frame.
  static void press(SeismogramView& view, Qt::Key key) {
    const QPointF middle = view.iRect().center();
    const QPointF local(middle.x(), view.height() - middle.y());
    QMouseEvent move(QEvent::MouseMove, local, view.mapToGlobal(local), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &move);
    QTest::keyPress(&view, key);
  }
  static Pick pick(const char* phase) {
    Pick made;
    made.phase = QString::fromLatin1(phase);
    made.time = *parseUtcNanoseconds(u"2011-03-11T05:48:00Z");
    made.channel = {"XX", "AAA", "", "BHZ"};
    return made;
  }
};

TEST_F(PicksToolTest, setsAPickByKeyAndTakesItBack) {
  SeismogramView* const view = section(writeRecord("a.sac", "AAA"));
  ASSERT_NE(view, nullptr);
  child<QTableView>("picks").setFocus();
  child<QAction>("pickByHand").setChecked(false);
  child<QAction>("pickByHand").setChecked(true);
  EXPECT_EQ(window_->focusWidget(), view) << "keys reach the plot at once";
  press(*view, Qt::Key_P);
  ASSERT_EQ(document().picks().size(), 1U);
  const Pick set = document().picks()[0];
  EXPECT_EQ(set.phase, "P");
  EXPECT_EQ(channelName(set.channel), "XX.AAA..BHZ");
  // The record begins at 05:47:30, and its middle is 30 s later.
  EXPECT_LT(std::abs(secondsFrom(*parseUtcTime(u"2011-03-11T05:48:00Z"), set.time)), 0.1);
  child<QAction>("undo").trigger();
  EXPECT_TRUE(document().picks().empty());
  child<QAction>("redo").trigger();
  EXPECT_EQ(document().picks(), PickArray{set});
}

TEST_F(PicksToolTest, answersKeysOnlyWhileItIsSwitchedOn) {
  SeismogramView* const view = section(writeRecord("a.sac", "AAA"));
  ASSERT_NE(view, nullptr);
  child<QAction>("pickByHand").trigger();
  ASSERT_FALSE(child<QAction>("pickByHand").isChecked());
  press(*view, Qt::Key_P);
  EXPECT_TRUE(document().picks().empty());
}

TEST_F(PicksToolTest, showsPicksInATableThatChangesThem) {
  document().add(pick("P"));
  PickTableModel model(document());
  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_EQ(model.index(0, PickTableModel::Channel).data().toString(), "XX.AAA..BHZ");
  EXPECT_EQ(model.index(0, PickTableModel::Time).data().toString(), "2011-03-11T05:48:00.000000000Z");
  EXPECT_TRUE(model.setData(model.index(0, PickTableModel::Time), "2011-03-11 05:48:01.5"));
  EXPECT_TRUE(model.setData(model.index(0, PickTableModel::Phase), "pP"));
  EXPECT_TRUE(model.setData(model.index(0, PickTableModel::Lower), "0.5"));
  EXPECT_TRUE(model.setData(model.index(0, PickTableModel::Polarity), "negative"));
  for (const auto& [column, text] :
       {std::pair(PickTableModel::Time, "soon"), std::pair(PickTableModel::Phase, ""),
        std::pair(PickTableModel::Upper, "-1"), std::pair(PickTableModel::Upper, "nan"),
        std::pair(PickTableModel::Onset, "sharp"), std::pair(PickTableModel::Channel, "XX.BBB..BHZ")})
    EXPECT_FALSE(model.setData(model.index(0, column), text)) << text;
  EXPECT_FALSE(model.setData(model.index(7, PickTableModel::Phase), "S"));
  Pick expected = pick("pP");
  expected.id = document().picks()[0].id;
  expected.time = *parseUtcNanoseconds(u"2011-03-11T05:48:01.5Z");
  expected.lowerSeconds = 0.5;
  expected.polarity = PickPolarity::Negative;
  EXPECT_EQ(document().picks(), PickArray{expected});
  EXPECT_EQ(window_->undoStack().count(), 5); // the pick and four changes
}

TEST_F(PicksToolTest, removesTheRowsThatAreChosen) {
  document().add(pick("P"));
  document().add(pick("S"));
  auto& table = child<QTableView>("picks");
  table.selectRow(1);
  const QString removed = table.currentIndex().siblingAtColumn(PickTableModel::Phase).data().toString();
  QTest::keyClick(&table, Qt::Key_Delete);
  ASSERT_EQ(document().picks().size(), 1U);
  EXPECT_NE(document().picks()[0].phase, removed);
}

TEST_F(PicksToolTest, savesAsQuakeMlOrTable) {
  document().add(pick("P"));
  EXPECT_TRUE(session().isModified());
  for (const char* const name : {"p.xml", "p.csv"}) {
    EXPECT_TRUE(session().save(at(name)));
    EXPECT_EQ(readPicks(at(name))->picks, document().picks());
    EXPECT_FALSE(session().isModified());
  }
  EXPECT_FALSE(session().save(at("none/p.xml")));
  EXPECT_EQ(session().path(), at("p.csv"));
}

// A record that counts from 05:47:30 of an event at 05:46:24, 66 s before.
TEST_F(PicksToolTest, savesTheEventOfThePickedRecords) {
  SacHeader header;
  header.delta = 1;
  header.b = 0;
  header.knetwk = "XX";
  header.kstnm = "AAA";
  header.kcmpnm = "BHZ";
  header.o = -66;
  header.evla = 38.25F;
  header.evlo = 142.5F;
  header.evdp = 29;
  header.mag = 9;
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30), Qt::UTC));
  ASSERT_TRUE(writeSac(SacSeismogram(header, std::vector<float>(60, 1.F)), at("a.sac")));
  ASSERT_TRUE(hasPlot(*window_->openPane(request("section", {at("a.sac"), writeRecord("b.sac", "BBB")}))));
  ASSERT_TRUE(session().save(at("none.xml")));
  const auto none = readEvents(at("none.xml"));
  EXPECT_TRUE(!none || none->events.empty()) << "nothing is picked on the record of an event";
  document().add(pick("P"));
  ASSERT_TRUE(session().save(at("p.xml")));
  const auto events = readEvents(at("p.xml"));
  ASSERT_TRUE(events);
  ASSERT_EQ(events->events.size(), 1U);
  const HypocentreValues& event = events->events[0]->values();
  EXPECT_EQ(event.originTime, QDateTime(QDate(2011, 3, 11), QTime(5, 46, 24), Qt::UTC));
  EXPECT_EQ(event.latitudeDeg, 38.25F);
  EXPECT_EQ(event.longitudeDeg, 142.5F);
  EXPECT_EQ(event.depthKm, 29);
  EXPECT_EQ(events->events[0]->magnitude(), 9);

  // Opened where no pane knows the event, it stays in the file.
  window_ = std::make_unique<MainWindow>(runner());
  ASSERT_TRUE(session().open(at("p.xml")));
  document().add(pick("S"));
  ASSERT_TRUE(session().save(at("p.xml")));
  EXPECT_EQ(readEvents(at("p.xml"))->events.size(), 1U);
  EXPECT_EQ(readPicks(at("p.xml"))->picks.size(), 2U);
}

TEST_F(PicksToolTest, savesIntoCopiesOfSacFiles) {
  const QString file = writeRecord("a.sac", "AAA");
  document().add(pick("P")); // 30 s after the beginning
  QDir().mkpath(at("copies"));
  EXPECT_EQ(session().saveIntoCopies({file, at("none.sac")}, at("copies")), 1);
  const auto copy = readSac(at("copies/a.sac"));
  ASSERT_TRUE(copy);
  EXPECT_EQ((*copy)->pTime(), 30);
  EXPECT_EQ((*copy)->pickLabelWithKey(10), "P");
  EXPECT_EQ(session().saveIntoCopies({file}, folder_.path()), 0) << "a file is not its own copy";
  EXPECT_EQ((*readSac(file))->pTime(), -12345.0F);
}

TEST_F(PicksToolTest, bringsBackWhatAProgramThatDiedHadNotSaved) {
  EXPECT_EQ(session().keepJournal(at("journals")), 0U);
  document().add(pick("P"));
  document().add(pick("S"));
  document().remove(document().picks()[0].id);
  const PickArray expected = document().picks();
  session().giveUp(); // takes the journal away
  EXPECT_TRUE(QDir(at("journals")).entryList({"*.journal"}, QDir::Files).isEmpty());
  document().add(pick("pP"));
  EXPECT_EQ(QDir(at("journals")).entryList({"*.journal"}, QDir::Files).size(), 1);
  window_.reset(); // without being asked, as in a crash
  window_ = std::make_unique<MainWindow>(runner());
  EXPECT_EQ(session().keepJournal(at("journals")), 1U);
  ASSERT_EQ(document().picks().size(), 1U);
  EXPECT_EQ(document().picks()[0].phase, "pP");
  EXPECT_TRUE(session().isModified());
}

TEST_F(PicksToolTest, asksBeforePicksAreLost) {
  window_->show();
  document().add(pick("P"));
  EXPECT_FALSE(window_->close());
  EXPECT_FALSE(window_->close()); // asks once
  const auto boxes = window_->findChildren<QMessageBox*>("unsavedPicks");
  ASSERT_EQ(boxes.size(), 1);
  boxes[0]->button(QMessageBox::Cancel)->click();
  EXPECT_TRUE(window_->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(window_->close());
  window_->findChild<QMessageBox*>("unsavedPicks")->button(QMessageBox::Discard)->click();
  EXPECT_FALSE(window_->isVisible());
}

} // namespace
} // namespace xov::desk
