#include "XOV_Graphics/views/navigation/PlotNavigator.h"

#include "NavigatedSection.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <utility>

namespace xov::testing {
namespace {

constexpr QPointF kQuarter(160, 200); // 25 s

TEST(PlotNavigator, theWheelZoomsTimeAboutThePointer) {
  const NavigatedSection section;
  turnWheel(*section.view, kQuarter, {0, 120});
  // 80 s of which 25 s is at a quarter: from 25 - 20.
  expectSpan(section.shown(), 5, 85);
  EXPECT_EQ(section.view->xmin(), 5);
  EXPECT_EQ(section.view->xmax(), 85);
  turnWheel(*section.view, kQuarter, {0, -120});
  EXPECT_FALSE(section.view->shownPart().has_value());
}

TEST(PlotNavigator, eightEighthsOfANotchAreOne) {
  const NavigatedSection section;
  for (int i = 0; i < 8; ++i)
    turnWheel(*section.view, kQuarter, {0, 15});
  expectSpan(section.shown(), 5, 85, 1e-5);
}

TEST(PlotNavigator, factorsThatAreNoneLeaveNothingBehind) {
  for (const double odd : {0.0, -1.0, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
    const NavigatedSection section;
    section.navigator->zoom(0.8);
    section.navigator->zoom(odd);
    section.navigator->amplify(odd);
    expectSpan(section.shown(), 10, 90);
    EXPECT_EQ(section.view->currentPart().gain, 1);
    section.navigator->zoom(0.5);
    expectSpan(section.shown(), 30, 70);
    section.navigator->amplify(2);
    EXPECT_EQ(section.view->currentPart().gain, 2);
  }
}

TEST(PlotNavigator, keysWithOtherModifiersAreTheHosts) {
  const NavigatedSection section;
  for (const Qt::KeyboardModifier modifier : {Qt::AltModifier, Qt::ControlModifier}) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Right, modifier);
    QCoreApplication::sendEvent(section.view.get(), &event);
    EXPECT_FALSE(event.isAccepted()) << modifier;
  }
}

TEST(PlotNavigator, ctrlAndTheWheelChangeTheGainOnly) {
  const NavigatedSection section;
  turnWheel(*section.view, kQuarter, {0, 120}, Qt::ControlModifier);
  EXPECT_NEAR(section.view->currentPart().gain, 1.25, 1e-12);
  expectSpan(section.shown(), 0, 100);
  EXPECT_EQ(section.view->plotGainFactor(), 1.5F); // the host's stays
}

TEST(PlotNavigator, shiftAndTheWheelPanByATenth) {
  const NavigatedSection section;
  turnWheel(*section.view, kQuarter, {0, 120});
  turnWheel(*section.view, kQuarter, {0, -120}, Qt::ShiftModifier);
  expectSpan(section.shown(), 13, 93); // a tenth of 80 s on
  turnWheel(*section.view, kQuarter, {0, -120}, Qt::ShiftModifier);
  expectSpan(section.shown(), 20, 100); // no further than the data
}

TEST(PlotNavigator, turningRoundAtTheEndOfTheDataMovesAtOnce) {
  for (const int notchesBeyond : {5, 15}) {
    const NavigatedSection section;
    turnWheel(*section.view, kQuarter, {0, 120}); // 5 … 85
    for (int i = 0; i < 2 + notchesBeyond; ++i)
      turnWheel(*section.view, kQuarter, {0, -120}, Qt::ShiftModifier);
    expectSpan(section.shown(), 20, 100);
    turnWheel(*section.view, kQuarter, {0, 120}, Qt::ShiftModifier);
    expectSpan(section.shown(), 12, 92); // a tenth of 80 s back
  }
}

TEST(PlotNavigator, twoNotchesOfALevelWheelPanByTwoTenths) {
  const NavigatedSection section;
  section.view->showPart(PlotPart{.x = {20, 60}, .y = {}});
  turnWheel(*section.view, kQuarter, {-240, 0});
  expectSpan(section.shown(), 28, 68); // two tenths of 40 s
  turnWheel(*section.view, kQuarter, {0, 240}, Qt::ShiftModifier);
  expectSpan(section.shown(), 20, 60);
}

TEST(PlotNavigator, aTouchpadMovesTheDrawingWithTheFingers) {
  const NavigatedSection section;
  turnWheel(*section.view, kQuarter, {0, 120}); // 5 … 85 on 560 points: 7 points a second
  turnWheel(*section.view, kQuarter, {-240, 0}, {}, {-14, 0}, Qt::ScrollUpdate);
  expectSpan(section.shown(), 7, 87);
}

TEST(PlotNavigator, aTouchpadMovesADrawingThatIsAPointHigh) {
  const NavigatedSection section;
  section.view->resize(600, 101);
  section.view->snapshot();
  ASSERT_EQ(section.view->iRect().height(), 1);
  section.view->showPart(PlotPart{.x = {20, 60}, .y = {}}); // 14 points a second
  turnWheel(*section.view, {160, 60.5}, {-240, 0}, {}, {-14, 0}, Qt::ScrollUpdate);
  expectSpan(section.shown(), 21, 61);
}

TEST(PlotNavigator, aLeftDragZoomsToTheBoxAndReportsNoClick) {
  const NavigatedSection section;
  const QSignalSpy clicks(section.view.get(), &XOVView::clicked);
  drag(*section.view, {NavigatedSection::xOf(60), 100}, {NavigatedSection::xOf(20), 300}, Qt::LeftButton);
  expectSpan(section.shown(), 20, 60);
  EXPECT_EQ(clicks.count(), 0);
}

TEST(PlotNavigator, aPlainClickIsReportedWhenTheButtonIsLetGo) {
  const NavigatedSection section;
  const QSignalSpy clicks(section.view.get(), &XOVView::clicked);
  sendMouse(*section.view, QEvent::MouseButtonPress, kQuarter, Qt::LeftButton);
  EXPECT_EQ(clicks.count(), 0);
  sendMouse(*section.view, QEvent::MouseButtonRelease, kQuarter, Qt::LeftButton);
  ASSERT_EQ(clicks.count(), 1);
  EXPECT_NEAR(clicks.front().front().toPointF().x(), 25, 1e-9);
  EXPECT_FALSE(section.view->shownPart().has_value());
}

TEST(PlotNavigator, theMiddleButtonTakesTheDrawingAlong) {
  const NavigatedSection section;
  section.view->showPart(PlotPart{.x = {20, 60}, .y = {}});      // 14 points a second
  drag(*section.view, {300, 200}, {258, 200}, Qt::MiddleButton); // 42 points
  expectSpan(section.shown(), 23, 63);
}

TEST(PlotNavigator, aDoubleClickAndBackspaceGoBackAndShiftBackspaceForward) {
  const NavigatedSection section;
  QTest::keyClick(section.view.get(), Qt::Key_Plus); // 25 … 75
  drag(*section.view, {NavigatedSection::xOf(20), 100}, {NavigatedSection::xOf(60), 300}, Qt::LeftButton);
  expectSpan(section.shown(), 35, 55); // 0.2 and 0.6 of 25 … 75
  sendMouse(*section.view, QEvent::MouseButtonDblClick, kQuarter, Qt::LeftButton);
  expectSpan(section.shown(), 25, 75);
  QTest::keyClick(section.view.get(), Qt::Key_Backspace);
  EXPECT_FALSE(section.view->shownPart().has_value());
  EXPECT_FALSE(section.navigator->canGoBack());
  QTest::keyClick(section.view.get(), Qt::Key_Backspace, Qt::ShiftModifier);
  expectSpan(section.shown(), 25, 75);
  QTest::keyClick(section.view.get(), Qt::Key_Backspace, Qt::ShiftModifier);
  expectSpan(section.shown(), 35, 55);
  EXPECT_FALSE(section.navigator->canGoForward());
}

TEST(PlotNavigator, turnsOfTheWheelThatFollowEachOtherAreOneStepBack) {
  const NavigatedSection section;
  for (int i = 0; i < 5; ++i)
    turnWheel(*section.view, kQuarter, {0, 120});
  section.navigator->goBack();
  EXPECT_FALSE(section.view->shownPart().has_value());
}

TEST(PlotNavigator, arrowsPagesAndHomeMoveOverTheData) {
  const NavigatedSection section;
  section.view->showPart(PlotPart{.x = {20, 40}, .y = {}});
  QTest::keyClick(section.view.get(), Qt::Key_Right);
  expectSpan(section.shown(), 22, 42);
  QTest::keyClick(section.view.get(), Qt::Key_Left);
  QTest::keyClick(section.view.get(), Qt::Key_PageDown);
  expectSpan(section.shown(), 40, 60);
  QTest::keyClick(section.view.get(), Qt::Key_PageUp);
  expectSpan(section.shown(), 20, 40);
  QTest::keyClick(section.view.get(), Qt::Key_Minus);
  expectSpan(section.shown(), 10, 50);
  QTest::keyClick(section.view.get(), Qt::Key_Up, Qt::ControlModifier);
  EXPECT_NEAR(section.view->currentPart().gain, 1.25, 1e-12);
  QTest::keyClick(section.view.get(), Qt::Key_Home);
  EXPECT_FALSE(section.view->shownPart().has_value());
}

TEST(PlotNavigator, noZoomGoesBeyondASampleInterval) {
  const NavigatedSection section;
  for (int i = 0; i < 100; ++i)
    turnWheel(*section.view, kQuarter, {0, 1200});
  expectSpan(section.shown(), 24.75, 25.75, 1e-3); // a second of which 25 s is at a quarter
}

TEST(PlotNavigator, comingHomeBringsBackThePictureOfBefore) {
  const NavigatedSection section;
  const QImage before = section.view->snapshot();
  turnWheel(*section.view, kQuarter, {0, 240});
  turnWheel(*section.view, kQuarter, {0, 240}, Qt::ControlModifier);
  EXPECT_NE(section.view->snapshot(), before);
  section.navigator->showAll();
  EXPECT_EQ(section.view->snapshot(), before);
}

TEST(PlotNavigator, boxesAndCrossHairsAreMarksThatNoExportHas) {
  const NavigatedSection section;
  section.navigator->setCrossHair(PlotNavigator::CrossHair::Both);
  const QImage before = section.view->snapshot();
  sendMouse(*section.view, QEvent::MouseMove, kQuarter, Qt::NoButton);
  const ViewOverlay hair = section.view->overlay();
  ASSERT_EQ(hair.lines.size(), 2U);
  EXPECT_EQ(hair.lines[0], QLineF(160, 60, 160, 360));
  EXPECT_EQ(hair.lines[1], QLineF(20, 200, 580, 200));
  EXPECT_EQ(section.view->snapshot(), before);
  const QImage window = section.view->grab().toImage();
  sendMouse(*section.view, QEvent::MouseMove, {5, 5}, Qt::NoButton); // in the margin
  EXPECT_TRUE(section.view->overlay().isEmpty());
  EXPECT_NE(section.view->grab().toImage(), window);
  sendMouse(*section.view, QEvent::MouseButtonPress, kQuarter, Qt::LeftButton);
  sendMouse(*section.view, QEvent::MouseMove, {260, 900}, Qt::LeftButton); // held in the frame
  EXPECT_EQ(section.view->overlay().band, QRectF(160, 200, 100, 160));
  EXPECT_EQ(section.view->snapshot(), before);
}

TEST(PlotNavigator, aVerticalCrossHairHasNoLevelLine) {
  const NavigatedSection section;
  section.navigator->setCrossHair(PlotNavigator::CrossHair::Vertical);
  sendMouse(*section.view, QEvent::MouseMove, kQuarter, Qt::NoButton);
  EXPECT_EQ(section.view->overlay().lines, (std::vector{QLineF(160, 60, 160, 360)}));
}

TEST(PlotNavigator, markOverTheWindowDoesNotDrawTheViewAnew) {
  const NavigatedSection section;
  section.view->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(section.view.get()));
  section.view->setOverlay({.lines = {QLineF(100, 60, 100, 360)}, .band = {}});
  QCoreApplication::processEvents(); // keeps the drawing
  const QSignalSpy limits(section.view.get(), &XOVView::limitsChanged);
  // Other records have other limits, which a drawing tells of.
  (*section.records)[0] = makeRecord({.count = 51});
  section.view->setOverlay({.lines = {QLineF(120, 60, 120, 360)}, .band = {}});
  QCoreApplication::processEvents();
  EXPECT_EQ(limits.count(), 0);
  section.view->setNeedsDisplay();
  QCoreApplication::processEvents(); // draws
  QCoreApplication::processEvents(); // tells
  EXPECT_EQ(limits.count(), 1);
}

TEST(PlotNavigator, switchedOffItLeavesAllToTheView) {
  const NavigatedSection section;
  section.navigator->setEnabled(false);
  const QSignalSpy clicks(section.view.get(), &XOVView::clicked);
  turnWheel(*section.view, kQuarter, {0, 120});
  EXPECT_FALSE(section.view->shownPart().has_value());
  sendMouse(*section.view, QEvent::MouseButtonPress, kQuarter, Qt::LeftButton);
  EXPECT_EQ(clicks.count(), 1);
}

TEST(PlotNavigator, limitsThatAHostSetsEndThePart) {
  const NavigatedSection section;
  turnWheel(*section.view, kQuarter, {0, 120});
  section.view->setXLimitsMinMax(1, 2);
  EXPECT_FALSE(section.view->shownPart().has_value());
  EXPECT_EQ(section.view->xmin(), 1);
}

TEST(PlotNavigator, keysAreListedForAHelpSheet) {
  const auto keys = PlotNavigator::keys();
  EXPECT_GE(keys.size(), 8U);
  for (const auto& key : keys)
    EXPECT_FALSE(key.keys.isEmpty() || key.effect.isEmpty());
}

TEST(PlotNavigator, aPointerThatLeavesTheWindowTakesItsMarksAlong) {
  const NavigatedSection section;
  section.navigator->setCrossHair(PlotNavigator::CrossHair::Vertical);
  const QSignalSpy left(section.navigator, &PlotNavigator::pointerLeft);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(section.view.get(), &leave); // it was not there
  EXPECT_EQ(left.count(), 0);
  sendMouse(*section.view, QEvent::MouseMove, kQuarter, Qt::NoButton);
  EXPECT_FALSE(section.view->overlay().isEmpty());
  QCoreApplication::sendEvent(section.view.get(), &leave);
  EXPECT_TRUE(section.view->overlay().isEmpty());
  EXPECT_EQ(left.count(), 1);
}

TEST(PlotNavigator, aWheelThatTiltsPansByATenth) {
  const NavigatedSection section;
  section.view->showPart(PlotPart{.x = {20, 60}, .y = {}});
  turnWheel(*section.view, kQuarter, {-120, 0});
  expectSpan(section.shown(), 24, 64);
  turnWheel(*section.view, kQuarter, {240, 0});
  expectSpan(section.shown(), 16, 56);
}

TEST(PlotNavigator, theMousesOwnButtonsGoBackAndForward) {
  const NavigatedSection section;
  turnWheel(*section.view, kQuarter, {0, 120});
  sendMouse(*section.view, QEvent::MouseButtonPress, kQuarter, Qt::BackButton);
  EXPECT_FALSE(section.view->shownPart().has_value());
  sendMouse(*section.view, QEvent::MouseButtonPress, kQuarter, Qt::ForwardButton);
  expectSpan(section.shown(), 5, 85);
}

TEST(PlotNavigator, leavesToTheViewTheButtonsAndKeysThatItHasNoUseFor) {
  const NavigatedSection section;
  const QPointF place(160, 200);
  QMouseEvent press(QEvent::MouseButtonPress, place, place, Qt::RightButton, Qt::RightButton, Qt::NoModifier);
  EXPECT_FALSE(section.navigator->eventFilter(section.view.get(), &press));
  for (const auto& [key, modifiers] : {std::pair(Qt::Key_A, Qt::NoModifier), std::pair(Qt::Key_Home, Qt::AltModifier),
                                       std::pair(Qt::Key_Left, Qt::ShiftModifier)}) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    EXPECT_FALSE(section.navigator->eventFilter(section.view.get(), &event)) << key;
  }
  QKeyEvent home(QEvent::KeyPress, Qt::Key_Home, Qt::KeypadModifier); // the one of the number block
  EXPECT_TRUE(section.navigator->eventFilter(section.view.get(), &home));
}

TEST(PlotNavigator, withoutBoxesTheLeftButtonIsTheViews) {
  const NavigatedSection section;
  EXPECT_TRUE(section.navigator->zoomsToBoxes());
  section.navigator->setZoomsToBoxes(false);
  EXPECT_FALSE(section.navigator->zoomsToBoxes());
  const QSignalSpy clicks(section.view.get(), &XOVView::clicked);
  sendMouse(*section.view, QEvent::MouseButtonPress, kQuarter, Qt::LeftButton);
  EXPECT_EQ(clicks.count(), 1); // at once: no box can follow
  sendMouse(*section.view, QEvent::MouseMove, {300, 300}, Qt::LeftButton);
  sendMouse(*section.view, QEvent::MouseButtonRelease, {300, 300}, Qt::LeftButton);
  EXPECT_FALSE(section.view->shownPart().has_value());
}

TEST(PlotNavigator, aForgottenHistoryLeadsNowhereAndChangesNothing) {
  const NavigatedSection section;
  section.navigator->zoom(0.5); // 25 … 75
  section.navigator->pan(0.2, 0);
  section.navigator->goBack();
  EXPECT_TRUE(section.navigator->canGoBack());
  EXPECT_TRUE(section.navigator->canGoForward());
  const QSignalSpy changes(section.navigator, &PlotNavigator::historyChanged);
  section.navigator->forgetHistory();
  EXPECT_EQ(changes.count(), 1);
  EXPECT_FALSE(section.navigator->canGoBack());
  EXPECT_FALSE(section.navigator->canGoForward());
  section.navigator->goBack();
  section.navigator->goForward();
  expectSpan(section.shown(), 25, 75);
}

TEST(PlotNavigator, factorsAndBoxesThatMeanNothingChangeNothing) {
  const NavigatedSection section;
  section.navigator->zoom(0.5); // 25 … 75
  for (const double factor : {0.0, -2.0, std::nan(""), HUGE_VAL}) {
    section.navigator->zoom(factor);
    section.navigator->amplify(factor);
  }
  section.navigator->pan(std::nan(""), 0);
  section.navigator->zoomTo(QRectF(100, 100, 0, 50));
  section.navigator->zoomTo(QRectF(100, 100, 50, 0));
  expectSpan(section.shown(), 25, 75);
  EXPECT_EQ(section.view->currentPart().gain, 1);
}

} // namespace
} // namespace xov::testing
