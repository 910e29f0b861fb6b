// Hosts that set, export and run event loops in the middle of their own drawRect().
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "tests/hosts/HostedPlots.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

namespace xov {
namespace {

class BusyView : public MultiSeisView {
public:
  using MultiSeisView::MultiSeisView;
  std::function<void(BusyView&)> within;

  void drawRect(const QRectF& dirty) override {
    MultiSeisView::drawRect(dirty);
    if (++depth_ == 1 && within) within(*this);
    --depth_;
    GraphicsContext::current().setColor(QColor(1, 2, 3));
    GraphicsContext::current().fillRect({0, 0, 2, 2});
  }

private:
  int depth_ = 0;
};

class DrawingHosts : public ::testing::Test {
protected:
  // The last mark belongs to the drawing that was begun, whatever was done within.
  void expectWholeDrawing() {
    const QImage picture = view_.pictureOfRect(view_.bounds());
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.pixelColor(0, picture.height() - 1), QColor(1, 2, 3));
    RecordingContext recording;
    view_.drawInto(recording);
    EXPECT_EQ(recording.stateDepth(), 1u);
    ASSERT_FALSE(recording.items().empty());
  }

  testing::HostedPlot host_ = testing::hostedPlot(testing::recordPlots().front());
  BusyView view_{QRectF(0, 0, 300, 200)};

  DrawingHosts() { view_.setWvfrmsArray(host_.records); }
};

TEST_F(DrawingHosts, maySetAnything) {
  view_.within = [](BusyView& view) {
    view.setXLimitsMinMax(5, 1);
    view.setTitle(QStringLiteral("other"));
    view.showPart(PlotPart{{1, 2}, {0, 1}, 1});
    view.setOverlay({});
    view.addCursorRect({0, 0, 10, 10}, Qt::CrossCursor);
    view.set_trackMouse(!view._trackMouse());
    view.setNeedsDisplay();
  };
  expectWholeDrawing();
  view_.show();
  QApplication::processEvents();
}

TEST_F(DrawingHosts, mayExport) {
  const QTemporaryDir folder;
  view_.within = [&](BusyView& view) {
    const QString path = folder.filePath(QStringLiteral("within"));
    EXPECT_TRUE(view.writePNGToFile(path));
    EXPECT_TRUE(view.writePDFToFile(path));
    EXPECT_TRUE(view.writeSVGToFile(path));
    view.copy();
  };
  expectWholeDrawing();
}

TEST_F(DrawingHosts, mayRunAnEventLoop) {
  int loops = 0;
  view_.within = [&](BusyView&) {
    QEventLoop loop;
    QTimer::singleShot(0, &loop, &QEventLoop::quit);
    loop.exec();
    ++loops;
  };
  view_.show();
  expectWholeDrawing();
  QApplication::processEvents();
  EXPECT_GE(loops, 2);
}

TEST_F(DrawingHosts, mayDrawOtherViews) {
  view_.within = [&](BusyView&) {
    testing::HostedPlot other = testing::hostedPlot(testing::recordPlots().back());
    EXPECT_FALSE(other.view->pictureOfRect(other.view->bounds()).isNull());
    EXPECT_FALSE(other.view->dataWithPDFInsideRect(other.view->bounds()).isEmpty());
  };
  expectWholeDrawing();
}

TEST_F(DrawingHosts, mayLeaveStatesBehind) {
  view_.within = [](BusyView&) {
    for (int i = 0; i < 100; ++i)
      GraphicsContext::current().saveState();
  };
  expectWholeDrawing();
  view_.within = [](BusyView&) {
    for (int i = 0; i < 100; ++i)
      GraphicsContext::current().restoreState();
  };
  expectWholeDrawing();
}

TEST_F(DrawingHosts, mayTakeTheirOtherViewsAway) {
  auto other = std::make_unique<XOVView>(QRectF(0, 0, 50, 50), &view_);
  view_.within = [&](BusyView&) { other.reset(); };
  view_.show();
  expectWholeDrawing();
  EXPECT_FALSE(other);
}

} // namespace
} // namespace xov
