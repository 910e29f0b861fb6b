// Every class of view for those who use the keyboard or a screen reader.
#include "tests/views/all/AllViews.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <set>

namespace xov {
namespace {

QString spoken(QWidget& view, QAccessible::Text kind) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
  return interface != nullptr ? interface->text(kind) : QString();
}

template <typename ViewType>
class Accessible : public ::testing::Test {};
TYPED_TEST_SUITE(Accessible, testing::AllViews);

TYPED_TEST(Accessible, isAChartThatSaysWhatItShows) {
  TypeParam view(QRectF(0, 0, 300, 240));
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->role(), QAccessible::Chart);
  EXPECT_FALSE(view.kind().isEmpty());
  EXPECT_EQ(spoken(view, QAccessible::Name).toLower(), view.kind());
  EXPECT_TRUE(spoken(view, QAccessible::Name).front().isUpper());
}

TYPED_TEST(Accessible, hasTheNameAndDescriptionThatTheHostGivesIt) {
  TypeParam view(QRectF(0, 0, 300, 240));
  view.setAccessibleName(QStringLiteral("Noise at BFO"));
  view.setAccessibleDescription(QStringLiteral("quiet"));
  EXPECT_EQ(spoken(view, QAccessible::Name), QStringLiteral("Noise at BFO"));
  EXPECT_EQ(spoken(view, QAccessible::Description), QStringLiteral("quiet"));
}

template <typename ViewType>
class AccessiblePlot : public ::testing::Test {
protected:
  AccessiblePlot() : view(new ViewType) {
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
  ViewType* view;
};
TYPED_TEST_SUITE(AccessiblePlot, testing::PlotViews);

TYPED_TEST(AccessiblePlot, isNamedByItsTitleAndDescribedByItsRanges) {
  this->view->setTitle(QStringLiteral("11 March 2011"));
  this->view->setXLabelString(QStringLiteral("Period (s)"));
  this->view->setXLimitsMinMax(-5, 40);
  this->view->setYLimitsMinMax(0.25f, 0.5f);
  EXPECT_EQ(spoken(*this->view, QAccessible::Name), QStringLiteral("11 March 2011"));
  EXPECT_EQ(
      spoken(*this->view, QAccessible::Description),
      QStringLiteral("Period (s) from -5 to 40, %1 from 0.25 to 0.5").arg(this->view->usualAxisName(Qt::YAxis)));
}

TYPED_TEST(AccessiblePlot, leavesOutAnAxisWithoutARange) {
  this->view->setXLimitsMinMax(0, 0);
  this->view->setYLimitsMinMax(3, 3);
  EXPECT_EQ(spoken(*this->view, QAccessible::Description), QString());
}

TYPED_TEST(AccessiblePlot, isReachedWithTab) {
  QTest::keyClick(this->first, Qt::Key_Tab);
  EXPECT_TRUE(this->view->hasFocus());
}

TYPED_TEST(AccessiblePlot, showsWhereTheKeyboardIs) {
  QApplication::processEvents();
  const QImage without = this->view->grab().toImage();
  this->view->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(this->view->grab().toImage(), without) << "who clicks knows where";
  this->first->setFocus();
  QTest::keyClick(this->first, Qt::Key_Tab);
  EXPECT_NE(this->view->grab().toImage(), without);
  this->first->setFocus();
  EXPECT_EQ(this->view->grab().toImage(), without);
}

TYPED_TEST(AccessiblePlot, opensItsMenuWithTheMenuKeys) {
  this->view->setFocus();
  QMenu* menu = this->view->contextualMenu();
  QTest::keyClick(this->view, Qt::Key_Menu);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
  QTest::keyClick(this->view, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
  QTest::keyClick(this->view, Qt::Key_F10);
  EXPECT_FALSE(menu->isVisible());
}

TYPED_TEST(AccessiblePlot, hasAKeyOfItsOwnForEachEntry) {
  std::set<QString> keys;
  for (const QAction* action : this->view->contextualMenu()->actions()) {
    const QString key = XOVView::menuKey(action).toString(QKeySequence::NativeText);
    EXPECT_FALSE(key.isEmpty()) << qPrintable(action->text());
    EXPECT_TRUE(keys.insert(key).second) << qPrintable(action->text());
    EXPECT_EQ(action->toolTip(), key);
    EXPECT_TRUE(action->shortcut().isEmpty()) << "is the host's to set";
  }
}

TYPED_TEST(AccessiblePlot, choosesByKeyWhileItHasTheFocus) {
  QAction* copy = this->entry("Copy As PDF");
  ASSERT_NE(copy, nullptr);
  QSignalSpy chosen(copy, &QAction::triggered);
  QTest::keyClick(this->first, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(chosen.count(), 0);
  this->view->setFocus();
  QTest::keyClick(this->view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(chosen.count(), 1);
}

TYPED_TEST(AccessiblePlot, leavesTheHostItsShortcuts) {
  QAction hosts;
  hosts.setShortcut(XOVView::menuKey(this->entry("Copy As PDF")));
  this->window.addAction(&hosts);
  QSignalSpy chosen(&hosts, &QAction::triggered);
  QSignalSpy own(this->entry("Copy As PDF"), &QAction::triggered);
  this->view->setFocus();
  QTest::keyClick(this->view, Qt::Key_C, Qt::ControlModifier);
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
