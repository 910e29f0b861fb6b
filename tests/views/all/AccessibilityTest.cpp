// Every class of view for those who use the keyboard or a screen reader.
#include "tests/views/all/AllViews.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <memory>
#include <set>

namespace xov {
namespace {

QString spoken(QWidget& view, QAccessible::Text kind) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
  return interface != nullptr ? interface->text(kind) : QString();
}

class Accessible : public ::testing::TestWithParam<testing::ViewClass> {
protected:
  const std::unique_ptr<View> made{GetParam().makeIn(QRectF(0, 0, 300, 240), nullptr)};
  View& view = *made;
};
INSTANTIATE_TEST_SUITE_P(AllViews, Accessible, ::testing::ValuesIn(testing::viewClasses(testing::AllViews())),
                         testing::viewClassName);

TEST_P(Accessible, isAChartThatSaysWhatItShows) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->role(), QAccessible::Chart);
  EXPECT_FALSE(view.kind().isEmpty());
  EXPECT_EQ(spoken(view, QAccessible::Name).toLower(), view.kind());
  EXPECT_TRUE(spoken(view, QAccessible::Name).front().isUpper());
}

TEST_P(Accessible, hasTheNameAndDescriptionThatTheHostGivesIt) {
  view.setAccessibleName(QStringLiteral("Noise at BFO"));
  view.setAccessibleDescription(QStringLiteral("quiet"));
  EXPECT_EQ(spoken(view, QAccessible::Name), QStringLiteral("Noise at BFO"));
  EXPECT_EQ(spoken(view, QAccessible::Description), QStringLiteral("quiet"));
}

class AccessiblePlot : public ::testing::TestWithParam<testing::ViewClass> {
protected:
  AccessiblePlot() : view(qobject_cast<XOVView*>(GetParam().make(nullptr))) {
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(first = new QLineEdit);
    layout->addWidget(view);
    view->setXLimitsMinMax(1, 2);
    view->setYLimitsMinMax(1, 2);
    window.show();
    QApplication::setActiveWindow(&window);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    first->setFocus();
  }
  QAction* entry(const char* title) const {
    for (QAction* action : view->contextualMenu()->actions())
      if (action->text() == QLatin1String(title)) return action;
    return nullptr;
  }
  QWidget window;
  QLineEdit* first = nullptr;
  XOVView* view;
};
INSTANTIATE_TEST_SUITE_P(PlotViews, AccessiblePlot, ::testing::ValuesIn(testing::viewClasses(testing::PlotViews())),
                         testing::viewClassName);

TEST_P(AccessiblePlot, isNamedByItsTitleAndDescribedByItsRanges) {
  view->setTitle(QStringLiteral("11 March 2011"));
  view->setXLabelString(QStringLiteral("Period (s)"));
  view->setXLimitsMinMax(-5, 40);
  view->setYLimitsMinMax(0.25f, 0.5f);
  EXPECT_EQ(spoken(*view, QAccessible::Name), QStringLiteral("11 March 2011"));
  EXPECT_EQ(spoken(*view, QAccessible::Description),
            QStringLiteral("Period (s) from -5 to 40, %1 from 0.25 to 0.5").arg(view->usualAxisName(Qt::YAxis)));
}

TEST_P(AccessiblePlot, leavesOutAnAxisWithoutARange) {
  view->setXLimitsMinMax(0, 0);
  view->setYLimitsMinMax(3, 3);
  EXPECT_EQ(spoken(*view, QAccessible::Description), QString());
}

TEST_P(AccessiblePlot, isReachedWithTab) {
  QTest::keyClick(first, Qt::Key_Tab);
  EXPECT_TRUE(view->hasFocus());
}

TEST_P(AccessiblePlot, showsWhereTheKeyboardIs) {
  QApplication::processEvents();
  const QImage without = view->grab().toImage();
  view->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(view->grab().toImage(), without) << "who clicks knows where";
  first->setFocus();
  QTest::keyClick(first, Qt::Key_Tab);
  EXPECT_NE(view->grab().toImage(), without);
  first->setFocus();
  EXPECT_EQ(view->grab().toImage(), without);
}

TEST_P(AccessiblePlot, opensItsMenuWithTheMenuKeys) {
  view->setFocus();
  QMenu* menu = view->contextualMenu();
  QTest::keyClick(view, Qt::Key_Menu);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
  QTest::keyClick(view, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
  QTest::keyClick(view, Qt::Key_F10);
  EXPECT_FALSE(menu->isVisible());
}

TEST_P(AccessiblePlot, hasAKeyOfItsOwnForEachEntry) {
  std::set<QString> keys;
  for (const QAction* action : view->contextualMenu()->actions()) {
    const QString key = XOVView::menuKey(action).toString(QKeySequence::NativeText);
    EXPECT_FALSE(key.isEmpty()) << qPrintable(action->text());
    EXPECT_TRUE(keys.insert(key).second) << qPrintable(action->text());
    EXPECT_EQ(action->toolTip(), key);
    EXPECT_TRUE(action->shortcut().isEmpty()) << "is the host's to set";
  }
}

TEST_P(AccessiblePlot, choosesByKeyWhileItHasTheFocus) {
  QAction* copy = entry("Copy As PDF");
  ASSERT_NE(copy, nullptr);
  QSignalSpy chosen(copy, &QAction::triggered);
  QTest::keyClick(first, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(chosen.count(), 0);
  view->setFocus();
  QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(chosen.count(), 1);
}

TEST_P(AccessiblePlot, leavesTheHostItsShortcuts) {
  QAction hosts;
  hosts.setShortcut(XOVView::menuKey(entry("Copy As PDF")));
  window.addAction(&hosts);
  QSignalSpy chosen(&hosts, &QAction::triggered);
  QSignalSpy own(entry("Copy As PDF"), &QAction::triggered);
  view->setFocus();
  QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(chosen.count(), 1);
  EXPECT_EQ(own.count(), 0);
}

TEST(Accessibility, axesAreNamedByWhatTheViewsShow) {
  helicorderView drum;
  drum.setXLimitsMinMax(0, 3600);
  EXPECT_EQ(spoken(drum, QAccessible::Description), QStringLiteral("time in a row (s) from 0 to 3600"));
  geoMapView map;
  EXPECT_EQ(spoken(map, QAccessible::Description),
            QStringLiteral("longitude (degrees) from 0 to 360, latitude (degrees) from -90 to 90"));
  MultiSeisView section;
  section.setXLimitsMinMax(0, 60);
  EXPECT_EQ(spoken(section, QAccessible::Description), QStringLiteral("time (s) from 0 to 60"));
  EXPECT_EQ(spoken(section, QAccessible::Name), QStringLiteral("Record section"));
}

TEST(Accessibility, aChartIsDescribedByTheRangesThatItStartsWith) {
  XOVChartView view;
  EXPECT_EQ(spoken(view, QAccessible::Description), QStringLiteral("x from 0 to 1, y from 0 to 1"));
}

} // namespace
} // namespace xov
