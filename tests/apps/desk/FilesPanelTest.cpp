#include "apps/desk/files/FilesPanel.h"

#include "tests/support/SdsFiles.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>

namespace xov::desk {
namespace {

constexpr int kPanelPatienceMs = 20000;

/// A panel, the plots that it asks for, and an archive with two channels of two days.
class FilesPanelTest : public testing::Test {
protected:
  FilesPanelTest() {
    for (const char* const channel : {"BHZ", "BHN"}) {
      for (int day = 0; day < 2; ++day)
        sds_.addDay("II", "TLY", "00", channel, QDate(2011, 12, 30).addDays(day), 100 * day);
    }
    QObject::connect(&panel_, &FilesPanel::requested, &panel_,
                     [this](const PlotRequest& request) { requests_.append(request.words().join(' ')); });
    panel_.show();
  }

  QString dayFile(const char* channel) const {
    return sds_.root() + QStringLiteral("/2011/II/TLY/%1.D/II.TLY.00.%1.D.2011.364").arg(QLatin1String(channel));
  }
  void list(const QStringList& paths) {
    panel_.add(paths);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !panel_.isBusy(); }, kPanelPatienceMs));
  }
  template <typename T>
  T& child(const char* name) {
    T* const found = panel_.findChild<T*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  void click(const char* name) { QTest::mouseClick(&child<QWidget>(name), Qt::LeftButton); }

  test::SdsFiles sds_;
  FilesPanel panel_;
  QStringList requests_;
};

TEST_F(FilesPanelTest, opensByDoubleClickAndByTheKeyboard) {
  list({dayFile("BHZ"), dayFile("BHN")});
  QTableView& table = child<QTableView>("filesTable");
  const QPoint second = table.visualRect(panel_.shown().index(1, FileCatalogue::Station)).center();
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, second);
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(requests_, QStringList{"drum -- " + dayFile("BHN")});
  table.setCurrentIndex(panel_.shown().index(0, 0));
  table.setFocus();
  panel_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  QTest::keyClick(&table, Qt::Key_Return);
  ASSERT_EQ(requests_.size(), 2);
  EXPECT_EQ(requests_[1], "drum -- " + dayFile("BHZ"));
  QTest::keyClick(&table, Qt::Key_Delete);
  EXPECT_EQ(panel_.catalogue().rowCount(), 1);
}

TEST_F(FilesPanelTest, showsWhatTheFilterLeaves) {
  list({dayFile("BHZ"), dayFile("BHN")});
  QTest::keyClicks(&child<QLineEdit>("filesFilter"), "*.BHN");
  EXPECT_EQ(panel_.shown().rowCount(), 1);
  EXPECT_EQ(child<QLabel>("filesCounts").text(), "Rows: 1 of 2");
  click("filesShow");
  EXPECT_EQ(requests_, QStringList{"drum -- " + dayFile("BHN")});
  child<QComboBox>("filesKind").setCurrentIndex(3); // events
  EXPECT_EQ(panel_.shown().rowCount(), 0);
}

TEST_F(FilesPanelTest, listsWhatIsLeftOutBelow) {
  EXPECT_FALSE(child<QTableView>("leftOutTable").isVisible());
  sds_.write("bad.sac", "no seismogram at all");
  list({sds_.root() + "/bad.sac", sds_.root() + "/gone.sac"});
  EXPECT_TRUE(child<QTableView>("leftOutTable").isVisible());
  EXPECT_EQ(panel_.leftOut().rowCount(), 2);
  EXPECT_EQ(child<QLabel>("filesCounts").text(), "Rows: 0, left out: 2");
  click("filesClear");
  EXPECT_FALSE(child<QTableView>("leftOutTable").isVisible());
}

TEST_F(FilesPanelTest, asksForTheTimeOfAnArchive) {
  list({sds_.root()});
  ASSERT_EQ(panel_.catalogue().rowCount(), 2);
  EXPECT_FALSE(child<QWidget>("archiveTimes").isVisible());
  child<QTableView>("filesTable").selectRow(1);
  EXPECT_TRUE(child<QWidget>("archiveTimes").isVisible());
  child<QDateTimeEdit>("archiveFrom").setDateTime(QDateTime(QDate(2011, 12, 30), QTime(0, 0), Qt::UTC));
  child<QDateTimeEdit>("archiveTo").setDateTime(QDateTime(QDate(2011, 12, 30), QTime(1, 0), Qt::UTC));
  click("filesShow");
  EXPECT_EQ(requests_, QStringList{"section --archive " + sds_.root() +
                                   " --between 2011-12-30T00:00:00.000Z 2011-12-30T01:00:00.000Z -- II.TLY.00.BHZ"});
}

TEST_F(FilesPanelTest, takesTheMemoryForSamplesThatIsSet) {
  EXPECT_EQ(panel_.sampleMegabytes(), 512);
  child<QSpinBox>("sampleMemory").setValue(64);
  list({sds_.root()});
  child<QTableView>("filesTable").selectRow(0);
  click("filesShow");
  ASSERT_EQ(requests_.size(), 1);
  EXPECT_TRUE(requests_[0].contains("--sample-memory 64 "));
  panel_.setSampleMegabytes(-5);
  EXPECT_EQ(panel_.sampleMegabytes(), 16);
}

TEST_F(FilesPanelTest, hasABarWithAButtonToGiveUpWhileItLists) {
  EXPECT_FALSE(child<QProgressBar>("filesProgress").isVisible());
  panel_.add({sds_.root()});
  EXPECT_TRUE(child<QProgressBar>("filesProgress").isVisible());
  click("filesCancel");
  EXPECT_FALSE(panel_.isBusy());
  EXPECT_FALSE(child<QProgressBar>("filesProgress").isVisible());
  EXPECT_FALSE(child<QPushButton>("filesCancel").isVisible());
}

} // namespace
} // namespace xov::desk
