#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/Drag.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QCursor>
#include <QMenu>
#include <QTest>

#include <new>
#include <stdexcept>

namespace xov {
namespace {

class Controller : public PlotController {
public:
  void handleClickedMousePosition(QPointF position) override { clicked.push_back(position); }
  void handleTrackedMousePosition(QPointF position) override { tracked.push_back(position); }
  std::vector<QPointF> clicked;
  std::vector<QPointF> tracked;
};

// A view of 200 × 180 points: iRect is (50, 50, 120, 100), its centre (110, 100).
class Interaction : public ::testing::Test {
protected:
  Interaction() : view({0, 0, 200, 180}) {
    view.computeRects();
    view.setXLimitsMinMax(0, 60);
    view.setYLimitsMinMax(-1, 1);
    view.setController(&controller);
    view.show();
  }
  void press(QPointF viewPoint, Qt::KeyboardModifiers modifiers = {}, int clickCount = 1) {
    view.mouseDown({view.convertPointToWindow(viewPoint), modifiers, clickCount});
  }
  Controller controller;
  XOVView view;
};

TEST_F(Interaction, aClickAtTheFramesCentreReportsTheMiddleOfTheLimits) {
  press({110, 100});
  ASSERT_EQ(controller.clicked.size(), 1u);
  EXPECT_EQ(controller.clicked[0], QPointF(30, 0));
}

TEST_F(Interaction, aClickOnTheFramesLowerLeftCornerReportsTheLowerLimits) {
  press({50, 50});
  ASSERT_EQ(controller.clicked.size(), 1u);
  EXPECT_EQ(controller.clicked[0], QPointF(0, -1));
}

TEST_F(Interaction, clicksOnTheFramesFarEdgesAreInside) {
  press({170, 150});
  ASSERT_EQ(controller.clicked.size(), 1u);
  EXPECT_EQ(controller.clicked[0], QPointF(60, 1));
}

TEST_F(Interaction, aClickOutsideTheFrameReportsNothing) {
  press({49, 100});
  press({171, 100});
  press({110, 49});
  press({110, 151});
  EXPECT_TRUE(controller.clicked.empty());
}

TEST_F(Interaction, aDoubleClickReportsNothingMore) {
  press({110, 100}, {}, 1);
  press({110, 100}, {}, 2);
  press({110, 100}, {}, 3);
  EXPECT_EQ(controller.clicked.size(), 1u);
}

TEST_F(Interaction, realMouseEventsArrive) {
  QTest::mouseClick(&view, Qt::LeftButton, {}, {110, 80}); // 80 from the top is 100 from the bottom
  ASSERT_EQ(controller.clicked.size(), 1u);
  EXPECT_EQ(controller.clicked[0], QPointF(30, 0));
}

class ThrowingController : public PlotController {
public:
  void handleClickedMousePosition(QPointF) override { throw std::runtime_error("of the host's"); }
  void handleTrackedMousePosition(QPointF) override { throw 1; }
};

// Qt's loop of events does not bear it.
TEST_F(Interaction, whatAControllerThrowsEndsWithItsCall) {
  ThrowingController throwing;
  view.setController(&throwing);
  QPointF clicked;
  QObject::connect(&view, &XOVView::clicked, [&clicked](QPointF position) {
    clicked = position;
    throw std::bad_alloc();
  });
  QTest::mouseClick(&view, Qt::LeftButton, {}, {110, 80});
  EXPECT_EQ(clicked, QPointF(30, 0));
}

TEST_F(Interaction, shiftClickDragsAPictureOutAndReportsNothing) {
  std::vector<PictureDrag> drags;
  setDragHandler([&](const PictureDrag& drag) { drags.push_back(drag); });
  press({110, 100}, Qt::ShiftModifier);
  press({5, 5}, Qt::ShiftModifier | Qt::ControlModifier);
  setDragHandler({});
  EXPECT_TRUE(controller.clicked.empty());
  ASSERT_EQ(drags.size(), 2u);
  const QImage tiff = QImage::fromData(drags[0].pasteboard->data(kTiffType), "TIFF");
  EXPECT_EQ(tiff.size(), view.snapshot().size());
  EXPECT_FALSE(drags[0].pasteboard->data("text/uri-list").isEmpty());
  // The picture hangs with its centre under the pointer.
  EXPECT_EQ(drags[0].hotSpot, QPointF(100, 90));
  EXPECT_EQ(drags[0].source, &view);
}

class PaintedView : public XOVView {
public:
  using XOVView::XOVView;
  void drawRect(const QRectF&) override { fillWithColorStrokeColor(QColor(200, 100, 20), colors::black); }
};

TEST_F(Interaction, aDraggedPictureShowsThreeQuartersOfTheView) {
  PaintedView painted({0, 0, 200, 180});
  painted.computeRects();
  std::vector<PictureDrag> drags;
  setDragHandler([&](const PictureDrag& drag) { drags.push_back(drag); });
  painted.mouseDown({painted.convertPointToWindow({110, 100}), Qt::ShiftModifier, 1});
  setDragHandler({});
  ASSERT_EQ(drags.size(), 1u);
  const QImage whole = painted.snapshot().convertToFormat(QImage::Format_ARGB32);
  const QImage faded = drags[0].picture.convertToFormat(QImage::Format_ARGB32);
  ASSERT_EQ(faded.size(), whole.size());
  EXPECT_EQ(faded.devicePixelRatio(), whole.devicePixelRatio());
  int opaque = 0;
  for (int y = 0; y < whole.height(); ++y) {
    for (int x = 0; x < whole.width(); ++x) {
      const QColor before = whole.pixelColor(x, y);
      const QColor after = faded.pixelColor(x, y);
      ASSERT_NEAR(after.alpha(), 0.75 * before.alpha(), 0.5) << x << ", " << y;
      if (before.alpha() < 255) continue;
      ++opaque;
      // The colour stays, to the rounding of its product with the opacity.
      ASSERT_NEAR(after.red(), before.red(), 1) << x << ", " << y;
      ASSERT_NEAR(after.green(), before.green(), 1) << x << ", " << y;
      ASSERT_NEAR(after.blue(), before.blue(), 1) << x << ", " << y;
    }
  }
  EXPECT_GT(opaque, 100 * 80) << "most of the frame";
}

TEST_F(Interaction, aControllerThatIsGoneSwallowsTheMessages) {
  {
    Controller shortLived;
    view.setController(&shortLived);
    EXPECT_EQ(view.controller(), &shortLived);
  }
  EXPECT_EQ(view.controller(), nullptr);
  press({110, 100});
  view.setController(nullptr);
  press({110, 100});
}

TEST_F(Interaction, aFrameWithoutAreaReportsNothing) {
  XOVView small({0, 0, 70, 70});
  small.computeRects();
  small.setController(&controller);
  small.mouseDown({small.convertPointToWindow({45, 45}), {}, 1});
  EXPECT_TRUE(controller.clicked.empty());
}

TEST_F(Interaction, trackingReportsThePointerInsideTheFrame) {
  QCursor::setPos(view.mapToGlobal(QPoint(110, 80)));
  view.set_mouseTrackInterval(0.01);
  view.set_trackMouse(true);
  EXPECT_TRUE(view._trackMouse());
  ASSERT_NE(view._mouseTrackTimer(), nullptr);
  EXPECT_EQ(view._mouseTrackTimer()->interval(), 10);
  EXPECT_TRUE(QTest::qWaitFor([&] { return controller.tracked.size() > 1; }, 5000));
  view.set_trackMouse(false);
  ASSERT_FALSE(controller.tracked.empty());
  EXPECT_EQ(controller.tracked[0], QPointF(30, 0));
}

TEST_F(Interaction, trackingIsSilentWhileThePointerIsOutsideTheFrame) {
  QCursor::setPos(view.mapToGlobal(QPoint(5, 5)));
  view.handleTrackedMousePosition();
  EXPECT_TRUE(controller.tracked.empty());
}

TEST_F(Interaction, trackingIsSilentWhileTheViewIsHidden) {
  QCursor::setPos(view.mapToGlobal(QPoint(110, 80)));
  view.hide();
  view.handleTrackedMousePosition();
  EXPECT_TRUE(controller.tracked.empty());
  view.show();
  QCursor::setPos(view.mapToGlobal(QPoint(110, 80)));
  view.handleTrackedMousePosition();
  EXPECT_EQ(controller.tracked.size(), 1u);
}

TEST_F(Interaction, switchingTrackingOffStopsTheTimer) {
  view.set_trackMouse(true);
  const QPointer<QTimer> timer = view._mouseTrackTimer();
  ASSERT_TRUE(timer);
  EXPECT_TRUE(timer->isActive());
  view.set_trackMouse(false);
  EXPECT_FALSE(timer && timer->isActive());
  EXPECT_EQ(view._mouseTrackTimer(), nullptr);
  EXPECT_FALSE(view._trackMouse());
}

TEST_F(Interaction, switchingTrackingOnTwiceLeavesTheFirstTimerRunning) {
  view.set_trackMouse(true);
  const QPointer<QTimer> first = view._mouseTrackTimer();
  view.set_trackMouse(true);
  EXPECT_NE(view._mouseTrackTimer(), first.data());
  view.set_trackMouse(false);
  ASSERT_TRUE(first);
  EXPECT_TRUE(first->isActive());
}

TEST_F(Interaction, aNewIntervalTakesEffectWhenTrackingIsSwitchedOn) {
  view.set_trackMouse(true);
  EXPECT_EQ(view._mouseTrackTimer()->interval(), 250);
  view.set_mouseTrackInterval(2);
  EXPECT_EQ(view._mouseTrackTimer()->interval(), 250);
  view.set_trackMouse(true);
  EXPECT_EQ(view._mouseTrackTimer()->interval(), 2000);
}

TEST_F(Interaction, absurdIntervalsStillTick) {
  for (double seconds : {0.0, -1.0, 1e300, std::nan("")}) {
    view.set_mouseTrackInterval(seconds);
    view.set_trackMouse(true);
    EXPECT_GT(view._mouseTrackTimer()->interval(), 0);
    view.set_trackMouse(false);
  }
}

TEST_F(Interaction, theMenuOffersTheExportsInOrder) {
  EXPECT_EQ(view.contextualMenu()->title(), QStringLiteral("test"));
  QStringList titles;
  for (const QAction* item : view.contextualMenu()->actions())
    titles << item->text();
  EXPECT_EQ(titles,
            (QStringList{QStringLiteral("Save To PDF"), QStringLiteral("Save To TIF"), QStringLiteral("Save To PNG"),
                         QStringLiteral("Save To JPG"), QStringLiteral("Copy As PDF")}));
}

TEST_F(Interaction, theCrosshairCoversTheOuterRectangle) {
  view.discardCursorRects();
  view.resetCursorRects();
  QTest::mouseMove(&view, {100, 90});
  QTest::qWait(1);
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
  QTest::mouseMove(&view, {5, 5});
  QTest::qWait(1);
  EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Interaction, theMenuOpensWhereTheRightButtonIsPressedAndInTheMiddleForAKey) {
  QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {20, 30}, view.mapToGlobal(QPoint(20, 30)));
  QCoreApplication::sendEvent(&view, &byMouse);
  EXPECT_TRUE(view.contextualMenu()->isVisible());
  EXPECT_EQ(view.contextualMenu()->pos(), view.mapToGlobal(QPoint(20, 30)));
  view.contextualMenu()->close();
  QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {20, 30}, view.mapToGlobal(QPoint(20, 30)));
  QCoreApplication::sendEvent(&view, &byKey);
  EXPECT_EQ(view.contextualMenu()->pos(), view.mapToGlobal(view.rect().center()));
  view.contextualMenu()->close();
}

} // namespace
} // namespace xov
