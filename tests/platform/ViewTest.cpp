#include "XOV_Graphics/platform/View.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTest>

#include <functional>

namespace xov {
namespace {

using testing::DrawingView;
using testing::pixelAt;

void paintLowerLeft(const QRectF&) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::white);
  context.fillRect({0, 0, 1000, 1000});
  context.setColor(colors::red);
  context.fillRect({0, 0, 10, 10});
}

TEST(View, boundsAreTheFramesSizeFromZero) {
  EXPECT_EQ(View({30, 40, 200, 100}).bounds(), QRectF(0, 0, 200, 100));
  EXPECT_EQ(View({0, 0, -5, 10}).bounds(), QRectF(0, 0, 0, 10));
  EXPECT_EQ(View({0, 0, std::nan(""), 10}).bounds(), QRectF(0, 0, 0, 10));
}

/// What a view of 60 × 40 points draws, from memory that held something else before.
QImage drawn(const std::function<void(GraphicsContext&)>& draw) {
  { const QImage before(60, 40, QImage::Format_ARGB32_Premultiplied); }
  DrawingView view({0, 0, 60, 40}, [&](const QRectF&) { draw(GraphicsContext::current()); });
  return view.pictureOfRect(view.bounds());
}

TEST(View, aPictureOfNothingIsTransparent) {
  const QImage picture = drawn([](GraphicsContext&) {});
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x)
      ASSERT_EQ(picture.pixel(x, y), 0U);
  }
}

TEST(View, whatABackgroundDoesNotReachIsTransparent) {
  const QImage half = drawn([](GraphicsContext& context) {
    context.setColor(colors::red);
    context.fillRect({0, 0, 30, 40});
  });
  EXPECT_EQ(pixelAt(half, 29, 20), 0xffff0000);
  EXPECT_EQ(pixelAt(half, 30, 20), 0U);
  const QImage clipped = drawn([](GraphicsContext& context) {
    context.clipToRect({0, 0, 30, 40});
    context.setColor(colors::red);
    context.fillRect({0, 0, 60, 40});
  });
  EXPECT_EQ(clipped, half);
}

TEST(View, aBackgroundWithTheCornersOfADiamondIsNotARectangle) {
  const QImage picture = drawn([](GraphicsContext& context) {
    Path diamond;
    diamond.moveTo({30, 0});
    diamond.lineTo({60, 20});
    diamond.lineTo({30, 40});
    diamond.lineTo({0, 20});
    diamond.close();
    context.setColor(colors::red);
    context.fillPath(diamond);
  });
  EXPECT_EQ(pixelAt(picture, 30, 20), 0xffff0000);
  EXPECT_EQ(pixelAt(picture, 0, 0), 0U);
}

// Half of red, as a premultiplied colour.
TEST(View, aTranslucentBackgroundLiesOnNothing) {
  const QImage picture = drawn([](GraphicsContext& context) {
    context.setColor(QColor(255, 0, 0, 128));
    context.fillRect({0, 0, 60, 40});
  });
  EXPECT_EQ(qAlpha(picture.pixel(30, 20)), 128);
  EXPECT_EQ(qGreen(picture.pixel(30, 20)), 0);
}

TEST(View, theWindowShowsWhatAnExportHolds) {
  DrawingView view({0, 0, 60, 40}, paintLowerLeft);
  const QImage window = view.grab().toImage();
  const QImage exported = view.pictureOfRect(view.bounds());
  ASSERT_EQ(window.size(), QSize(60, 40));
  EXPECT_EQ(testing::differingPixels(window, exported), 0);
  EXPECT_EQ(pixelAt(window, 0, 39), 0xffff0000);
  EXPECT_EQ(pixelAt(window, 10, 39), 0xffffffff);
}

TEST(View, drawingIntoARecordingLeavesTheWindowAlone) {
  DrawingView view({0, 0, 60, 40}, paintLowerLeft);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(recording.fills().size(), 2u);
  EXPECT_EQ(view.size(), QSize(60, 40));
}

TEST(View, theDirtyRectangleOfAnExportIsTheWholeView) {
  QRectF seen;
  DrawingView view({0, 0, 60, 40}, [&](const QRectF& dirty) { seen = dirty; });
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(seen, QRectF(0, 0, 60, 40));
}

TEST(View, exportPixelRatioIsHeldWithinReason) {
  View view({0, 0, 10, 10});
  EXPECT_EQ(view.exportPixelRatio(), view.devicePixelRatioF());
  view.setExportPixelRatio(2);
  EXPECT_EQ(view.pictureOfRect(view.bounds()).size(), QSize(20, 20));
  view.setExportPixelRatio(1e9);
  EXPECT_EQ(view.exportPixelRatio(), 32);
  view.setExportPixelRatio(0);
  EXPECT_EQ(view.exportPixelRatio(), view.devicePixelRatioF());
}

TEST(View, pointsOfTheWindowTurnIntoViewPoints) {
  QWidget window;
  window.resize(300, 200);
  auto* view = new DrawingView({40, 50, 100, 80});
  view->setParent(&window);
  // (40, 130) of the window is the view's lower left corner.
  EXPECT_EQ(view->convertPointFromWindow({40, 130}), QPointF(0, 0));
  EXPECT_EQ(view->convertPointFromWindow({50, 55}), QPointF(10, 75));
  EXPECT_EQ(view->convertPointToWindow({10, 75}), QPointF(50, 55));
}

TEST(View, aLiveResizeEndsOnceAfterTheLastChange) {
  class Resized : public View {
  public:
    using View::View;
    int ended = 0;
    void viewDidEndLiveResize() override { ++ended; }
  };
  Resized view({0, 0, 100, 100});
  view.show();
  for (int width : {110, 120, 130}) {
    view.resize(width, 100);
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.inLiveResize());
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.ended > 0; }, 5000));
  EXPECT_FALSE(view.inLiveResize());
  EXPECT_EQ(view.ended, 1);
}

class ClickCounter : public View {
public:
  using View::View;
  std::vector<int> counts;
  void mouseDown(const MouseEvent& event) override { counts.push_back(event.clickCount); }
};

TEST(View, clicksCountUpWhileTheyFollowQuickly) {
  ClickCounter view({0, 0, 100, 100});
  view.show();
  QTest::mouseClick(&view, Qt::LeftButton, {}, {50, 50});
  QTest::mouseDClick(&view, Qt::LeftButton, {}, {50, 50});
  ASSERT_GE(view.counts.size(), 2u);
  for (std::size_t i = 0; i < view.counts.size(); ++i)
    EXPECT_EQ(view.counts[i], int(i) + 1);
}

TEST(View, aClickElsewhereCountsAnew) {
  ClickCounter view({0, 0, 100, 100});
  view.show();
  QTest::mouseClick(&view, Qt::LeftButton, {}, {10, 10});
  QTest::mouseClick(&view, Qt::LeftButton, {}, {80, 80});
  EXPECT_EQ(view.counts, (std::vector<int>{1, 1}));
}

TEST(View, onlyTheLeftButtonClicks) {
  ClickCounter view({0, 0, 100, 100});
  view.show();
  QTest::mouseClick(&view, Qt::RightButton, {}, {10, 10});
  EXPECT_TRUE(view.counts.empty());
}

TEST(View, theCursorChangesInsideItsRectangle) {
  View view({0, 0, 100, 100});
  view.addCursorRect({20, 20, 60, 60}, Qt::CrossCursor);
  const auto moveTo = [&](QPointF at) {
    QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &move);
  };
  moveTo({50, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
  moveTo({50, 95}); // 5 points above the lower edge
  EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
  moveTo({50, 50});
  view.discardCursorRects();
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor); // until the pointer moves
  moveTo({51, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

/// Moves the pointer within a view.
void movePointer(View& view, QPointF at) {
  QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&view, &move);
}

TEST(View, theCursorOfARectangleGoesWithThePointer) {
  View view(QRectF(0, 0, 100, 100));
  view.addCursorRect({20, 20, 60, 60}, Qt::CrossCursor);
  movePointer(view, {50, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&view, &leave);
  EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

TEST(View, aCursorOfTheHostGoesBeforeThoseOfRectangles) {
  QWidget window;
  View view({0, 0, 100, 100}, &window);
  view.addCursorRect({20, 20, 60, 60}, Qt::CrossCursor);
  view.setCursor(Qt::WaitCursor);
  for (const QPointF& at : {QPointF(50, 95), QPointF(50, 50), QPointF(50, 95)}) {
    movePointer(view, at);
    EXPECT_EQ(view.cursor().shape(), Qt::WaitCursor);
  }
  view.unsetCursor();
  movePointer(view, {50, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
  view.setCursor(Qt::CrossCursor); // the host's own, though it is the same
  movePointer(view, {50, 95});
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
}

TEST(View, aWindowsOwnCursorIsTakenBackToo) {
  View view({0, 0, 100, 100});
  view.addCursorRect({20, 20, 60, 60}, Qt::CrossCursor);
  view.setCursor(Qt::WaitCursor);
  movePointer(view, {50, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::WaitCursor);
  view.unsetCursor();
  movePointer(view, {50, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
}

// The frame is laid out while drawing, as a plot's is.
TEST(View, cursorRectanglesFollowTheLayout) {
  class Framed : public View {
  public:
    using View::View;
    void drawRect(const QRectF&) override { frame_ = bounds().adjusted(20, 20, -20, -20); }
    void resetCursorRects() override { addCursorRect(frame_, Qt::CrossCursor); }

  private:
    QRectF frame_;
  };
  Framed view({0, 0, 100, 100});
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  view.repaint();
  movePointer(view, {50, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor); // before any resize
  view.resize(200, 100);
  view.repaint();
  movePointer(view, {150, 50}); // inside the new frame only
  EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
  movePointer(view, {190, 50});
  EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

// A ratio of 1.5 puts views at odd positions half a pixel off the screen's grid; lines must be solid all the same.
TEST(View, picturesForTheScreenLieOnItsPixels) {
  const auto tick = [](GraphicsContext& context) {
    context.setColor(colors::black);
    Path path;
    path.moveTo({5, 0});
    path.lineTo({5, 10});
    context.strokePath(path);
  };
  const AlignedPicture drawn = alignedPicture({10, 10}, 1.5, {0.5, 0.5}, tick);
  EXPECT_EQ(drawn.image.size(), QSize(16, 16)); // 0.5 … 15.5 pixels
  EXPECT_EQ(drawn.topLeft, QPointF(-0.5 / 1.5, -0.5 / 1.5));
  // x = 5 points lies at 5 · 1.5 + 0.5 = 8 pixels; 1.5 pixels wide rounds to two: columns 7 and 8.
  EXPECT_EQ(pixelAt(drawn.image, 7, 8), 0xff000000);
  EXPECT_EQ(pixelAt(drawn.image, 8, 8), 0xff000000);
  EXPECT_EQ(qAlpha(pixelAt(drawn.image, 6, 8)), 0);
  EXPECT_EQ(qAlpha(pixelAt(drawn.image, 9, 8)), 0);
}

} // namespace
} // namespace xov
