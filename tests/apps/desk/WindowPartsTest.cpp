#include "apps/desk/panes/PaneKinds.h"
#include "apps/desk/properties/PropertyPanel.h"
#include "apps/desk/window/FileActions.h"
#include "apps/desk/window/HelpSheet.h"
#include "apps/desk/window/KindActions.h"
#include "apps/desk/window/Theme.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <algorithm>
#include <set>

namespace xov::desk {
namespace {

class PropertyPanelTest : public DeskTest {
protected:
  void SetUp() override {
    pane_ = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
    ASSERT_TRUE(hasPlot(*pane_));
  }
  QWidget& editor(const char* property) { return child<QWidget>(QStringLiteral("property_") + property); }

  Pane* pane_ = nullptr;
};

TEST_F(PropertyPanelTest, changesThePlotAtOnceAndCanTakeItBack) {
  QLineEdit& width = *editor("lineWidth").findChild<QLineEdit*>();
  EXPECT_EQ(width.text(), "1");
  width.selectAll();
  QTest::keyClicks(&width, "2.5");
  QTest::keyClick(&width, Qt::Key_Return);
  EXPECT_EQ(pane_->view()->lineWidth(), 2.5);
  QTest::mouseClick(editor("showZeroLine").findChild<QCheckBox*>(), Qt::LeftButton, {}, {8, 8});
  EXPECT_TRUE(pane_->view()->property("showZeroLine").toBool());
  auto& placement = *editor("stripPlacement").findChild<QComboBox*>();
  EXPECT_EQ(placement.currentText(), "Evenly");
  child<QAction>("undo").trigger();
  child<QAction>("undo").trigger();
  EXPECT_EQ(pane_->view()->lineWidth(), 1);
  EXPECT_FALSE(pane_->view()->property("showZeroLine").toBool());
  EXPECT_EQ(editor("lineWidth").findChild<QLineEdit*>()->text(), "1");
}

TEST_F(PropertyPanelTest, saysWhatIsWrongWithAValueAndChangesNothing) {
  QLineEdit& width = *editor("lineWidth").findChild<QLineEdit*>();
  width.selectAll();
  QTest::keyClicks(&width, "wide");
  QTest::keyClick(&width, Qt::Key_Return);
  EXPECT_EQ(width.toolTip(), "found 'wide', expected a number");
  EXPECT_EQ(pane_->view()->lineWidth(), 1);
}

// A line that is left because its editor goes tells of it in the middle of that.
TEST_F(PropertyPanelTest, goesWhileALineIsEdited) {
  window_->show();
  QLineEdit& width = *editor("lineWidth").findChild<QLineEdit*>();
  child<QDockWidget>("properties").raise();
  window_->activateWindow();
  width.setFocus();
  ASSERT_TRUE(QTest::qWaitFor([&width] { return width.hasFocus(); }));
  QTest::keyClicks(&width, "2");
  writeFile("c.txt", "1 2\n2 3\n");
  Pane* const other = window_->openPane(request("xy", {at("c.txt")}));
  ASSERT_TRUE(hasPlot(*other));
  EXPECT_EQ(pane_->request().properties, (QMap<QString, QString>()));
  EXPECT_EQ(other->request().properties, (QMap<QString, QString>())) << "which is for no other plot";
}

TEST_F(PropertyPanelTest, followsTheViewAndThePane) {
  pane_->view()->setTitle("Of the host");
  EXPECT_EQ(editor("title").findChild<QLineEdit*>()->text(), "Of the host");
  ASSERT_TRUE(hasPlot(*window_->openPane(request("stack", {at("a.sac")}))));
  EXPECT_EQ(window_->findChild<QWidget*>("property_stripPlacement"), nullptr) << "a section's";
  window_->closePane(window_->currentPane());
  EXPECT_NE(window_->findChild<QWidget*>("property_stripPlacement"), nullptr);
}

TEST(PropertyTitle, writesNamesInWords) {
  EXPECT_EQ(propertyTitle("lineWidth"), "Line width");
  EXPECT_EQ(propertyTitle("fixedXAxisRange"), "Fixed X axis range");
  EXPECT_EQ(propertyTitle("minYRange"), "Min Y range");
  EXPECT_EQ(propertyTitle("logX"), "Log X");
  EXPECT_EQ(propertyTitle("ByDistanceKm"), "By distance km");
}

using KindActionsTest = DeskTest;

TEST_F(KindActionsTest, showTheSameFilesAnotherWay) {
  Pane* const section = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  PlotRequest wanted = section->request();
  wanted.options = {"--sort", "distance", "--channels", "BHZ"};
  wanted.steps = {{"--detrend", "mean"}};
  window_->changeRequest(section, wanted, "Sort");
  EXPECT_FALSE(child<QAction>("show_map").isEnabled());
  child<QAction>("show_spectrum").trigger();
  ASSERT_EQ(window_->panes().size(), 2U);
  EXPECT_EQ(window_->currentPane()->request().words(),
            QStringList({"spectrum", "--channels", "BHZ", "--detrend", "mean", "--", at("a.sac")}));
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
}

TEST_F(KindActionsTest, findTheFileOfAnOption) {
  PlotRequest map;
  map.kind = "map";
  map.options = {"--events", "/data/quakes.csv", "--plates", "bird"};
  EXPECT_EQ(requestOfKind(*paneKindOf("mechanism"), map).words(),
            QStringList({"mechanism", "--", "/data/quakes.csv"}));
}

TEST_F(KindActionsTest, keepTheArchiveAndItsTime) {
  PlotRequest drum = request("drum", {"II.TLY.00.BHZ"});
  drum.options = {"--archive", "/data", "--between", "2011-12-30", "2012-01-02", "--gain", "2"};
  EXPECT_EQ(requestOfKind(*paneKindOf("spectrogram"), drum).words(),
            QStringList({"spectrogram", "--archive", "/data", "--between", "2011-12-30", "2012-01-02", "--",
                         "II.TLY.00.BHZ"}));
}

using DrumZoomTest = DeskTest;

// Rows of an hour: a sixth of one about the place is shown, and what was done to the drum's records is done to it.
TEST_F(DrumZoomTest, showsWhatWasClickedInAPaneThatIsUsedAgain) {
  window_->show();
  PlotRequest wanted = request("drum", {writeRecord("a.sac", "AAA", "BHZ", 2 * 36000)}); // two hours
  wanted.steps = {{"--detrend", "mean"}};
  Pane* const drum = window_->openPane(wanted);
  ASSERT_TRUE(hasPlot(*drum));
  auto* const view = qobject_cast<helicorderView*>(drum->view());
  ASSERT_NE(view, nullptr);
  view->grab(); // where rows lie is known when they are drawn
  const auto click = [&](QPointF place) {
    QTest::mouseClick(view, Qt::LeftButton, {}, {int(place.x()), view->height() - int(place.y())});
  };
  click(view->iRect().center());
  ASSERT_EQ(window_->panes().size(), 2U);
  Pane* const zoom = window_->currentPane();
  ASSERT_TRUE(hasPlot(*zoom));
  const QStringList words = zoom->request().words();
  EXPECT_EQ(words.mid(0, 3), QStringList({"section", "--detrend", "mean"}));
  ASSERT_EQ(zoom->request().steps.size(), 3);
  const QDateTime start = QDateTime::fromString(zoom->request().steps[1].value(1), Qt::ISODateWithMs);
  const QDateTime end = QDateTime::fromString(zoom->request().steps[2].value(1), Qt::ISODateWithMs);
  EXPECT_EQ(start.msecsTo(end), 600000) << qPrintable(words.join(' '));
  click(view->iRect().center() + QPointF(view->iRect().width() / 4, 0));
  ASSERT_EQ(window_->panes().size(), 2U) << "the same pane";
  const QDateTime later = QDateTime::fromString(zoom->request().steps[1].value(1), Qt::ISODateWithMs);
  EXPECT_NEAR(double(start.msecsTo(later)), 900000.0, 20000.0) << "a quarter of a row on";
}

using PaneHandsTest = DeskTest;

// The record lasts a minute; the box is the middle half of the frame.
TEST_F(PaneHandsTest, zoomToABoxAndComeBack) {
  window_->show();
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  XOVView& view = *pane->view();
  view.grab();
  const QRectF frame = view.iRect();
  const auto at = [&](double share) { return QPoint(int(frame.left() + frame.width() * share), view.height() / 2); };
  QTest::mousePress(&view, Qt::LeftButton, {}, at(0.25));
  for (const double share : {0.4, 0.6, 0.75})
    QTest::mouseMove(&view, at(share) + QPoint(0, int(40 * share)));
  QTest::mouseRelease(&view, Qt::LeftButton, {}, at(0.75) + QPoint(0, 30));
  ASSERT_TRUE(view.shownPart());
  EXPECT_NEAR(view.shownPart()->x.lower, 15, 0.5);
  EXPECT_NEAR(view.shownPart()->x.upper, 45, 0.5);
  const PlotRequest shown = pane->requestAsShown();
  ASSERT_TRUE(shown.properties.contains("part"));
  EXPECT_EQ(shown.properties.size(), 1) << "the part says it all: " << qPrintable(shown.words().join(' '));
  PlotRequest filtered = pane->request();
  filtered.steps = {{"--filter", "lowpass", "1"}};
  const PlotPart part = *view.shownPart();
  window_->changeRequest(pane, filtered, "Filter");
  ASSERT_TRUE(hasPlot(*pane));
  ASSERT_TRUE(pane->view()->shownPart()) << "the filtered trace is looked at where the raw one was";
  EXPECT_EQ(pane->view()->shownPart()->x, part.x);
  EXPECT_EQ(pane->view()->shownPart()->gain, part.gain);
  child<QAction>("viewAll").trigger();
  EXPECT_FALSE(pane->view()->shownPart());
}

using PaneReadoutTest = DeskTest;

TEST_F(PaneReadoutTest, tellsWhatIsUnderThePointer) {
  window_->show();
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  XOVView& view = *pane->view();
  view.grab();
  const QPointF middle = view.iRect().center();
  QTest::mouseMove(&view, {int(middle.x()), view.height() - int(middle.y())});
  const QString text = child<QLabel>("readout").text();
  EXPECT_TRUE(text.contains("AAA")) << qPrintable(text);
  EXPECT_EQ(text, view.readout(view.convertPointFromWindow(view.mapTo(
                                   view.window(), QPointF(int(middle.x()), view.height() - int(middle.y())))))
                      .text());
}

using FileActionsTest = DeskTest;

TEST_F(FileActionsTest, findThePathsInWhatIsPasted) {
  const QString file = writeRecord("a b.sac", "AAA");
  EXPECT_EQ(FileActions::pathsIn(QUrl::fromLocalFile(file).toEncoded() + "\r\n", "ignored"), QStringList({file}));
  EXPECT_EQ(FileActions::pathsIn({}, (file + "\n/nonexistent\n" + folder_.path()).toUtf8()),
            QStringList({file, folder_.path()}));
  EXPECT_EQ(FileActions::pathsIn({}, {}), QStringList());
}

using HelpSheetTest = DeskTest;

TEST_F(HelpSheetTest, hasTheKeysOfAllMenus) {
  const std::vector<ShortcutRow> rows = shortcutsOf(*window_);
  EXPECT_NE(std::ranges::find(rows, ShortcutRow{"Pane", "Put Beside", "Ctrl+\\"}), rows.end());
  EXPECT_NE(std::ranges::find(rows, ShortcutRow{"Pane › Show As", "Drum", "Ctrl+2"}), rows.end());
  std::set<QString> keys;
  for (const ShortcutRow& row : rows)
    EXPECT_TRUE(keys.insert(row.keys).second) << "twice: " << qPrintable(row.keys);
  EXPECT_GT(std::ranges::count(rows, QStringLiteral("In plots"), &ShortcutRow::menu), 5);
}

TEST_F(HelpSheetTest, leavesNoActionWithoutAName) {
  for (const QAction* const action : window_->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
    EXPECT_FALSE(action->objectName().isEmpty() || action->text().isEmpty()) << qPrintable(action->text());
}

TEST(Theme, turnsLightnessAboutAndLeavesTheHue) {
  QImage image(4, 1, QImage::Format_RGB32);
  image.setPixel(0, 0, qRgb(255, 255, 255));
  image.setPixel(1, 0, qRgb(0, 0, 0));
  image.setPixel(2, 0, qRgb(255, 0, 0)); // lightness one half: stays
  image.setPixel(3, 0, qRgb(0, 0, 100)); // 0 … 100 becomes 155 … 255
  turnLightness(image);
  EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
  EXPECT_EQ(image.pixel(1, 0), qRgb(255, 255, 255));
  EXPECT_EQ(image.pixel(2, 0), qRgb(255, 0, 0));
  EXPECT_EQ(image.pixel(3, 0), qRgb(155, 155, 255));
}

using DarkPlotsTest = DeskTest;

TEST_F(DarkPlotsTest, areDarkInTheWindowAndWhiteInFiles) {
  window_->show();
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  const auto corner = [&] {
    return window_->grab().toImage().pixelColor(pane->view()->mapTo(window_.get(), QPoint(5, 5)));
  };
  EXPECT_EQ(corner(), QColor(Qt::white));
  child<QAction>("darkPlots").trigger();
  EXPECT_EQ(corner(), QColor(Qt::black));
  EXPECT_EQ(pane->view()->snapshot().pixelColor(5, 5), QColor(Qt::white));
  child<QAction>("darkPlots").trigger();
  EXPECT_EQ(corner(), QColor(Qt::white));
}

} // namespace
} // namespace xov::desk
