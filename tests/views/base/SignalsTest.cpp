#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace xov {
namespace {

// A view of 200 × 180 points: iRect is (50, 50, 120, 100), its centre (110, 100), 80 from the top.
class Signals : public ::testing::Test {
protected:
  Signals() {
    view->computeRects();
    view->setXLimitsMinMax(0, 60);
    view->setYLimitsMinMax(-1, 1);
    view->show();
  }
  std::unique_ptr<XOVView> view = std::make_unique<XOVView>(QRectF(0, 0, 200, 180));
};

TEST_F(Signals, aClickIsToldInDataCoordinates) {
  QSignalSpy clicked(view.get(), &XOVView::clicked);
  QTest::mouseClick(view.get(), Qt::LeftButton, {}, {110, 80});
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_EQ(clicked[0][0].toPointF(), QPointF(30, 0));
}

TEST_F(Signals, doubleClicksAndClicksOutsideTheFrameAreNotTold) {
  QSignalSpy clicked(view.get(), &XOVView::clicked);
  QTest::mouseClick(view.get(), Qt::LeftButton, {}, {10, 10});
  QTest::mouseClick(view.get(), Qt::RightButton, {}, {110, 80});
  EXPECT_EQ(clicked.count(), 0);
  QTest::mouseClick(view.get(), Qt::LeftButton, {}, {110, 80});
  QTest::mouseDClick(view.get(), Qt::LeftButton, {}, {110, 80});
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Signals, theTrackedPointerIsToldInDataCoordinates) {
  QSignalSpy tracked(view.get(), &XOVView::tracked);
  QCursor::setPos(view->mapToGlobal(QPoint(110, 80)));
  view->handleTrackedMousePosition();
  ASSERT_EQ(tracked.count(), 1);
  EXPECT_EQ(tracked[0][0].toPointF(), QPointF(30, 0));
  QCursor::setPos(view->mapToGlobal(QPoint(5, 5)));
  view->handleTrackedMousePosition();
  EXPECT_EQ(tracked.count(), 1);
}

// Knows which of its views was clicked, or closes it.
class Host : public PlotController {
public:
  void handleClickedMousePosition(QPointF position) override { withoutView.push_back(position); }
  void handleTrackedMousePosition(QPointF position) override { withoutView.push_back(position); }
  void handleClickedMousePositionInView(QPointF, XOVView& view) override {
    clicked.push_back(&view);
    if (closes != nullptr) closes->reset();
  }
  void handleTrackedMousePositionInView(QPointF, XOVView& view) override { tracked.push_back(&view); }

  std::vector<QPointF> withoutView;
  std::vector<XOVView*> clicked;
  std::vector<XOVView*> tracked;
  std::unique_ptr<XOVView>* closes = nullptr;
};

TEST_F(Signals, aControllerOfSeveralViewsKnowsWhichOneItWas) {
  Host host;
  XOVView other(QRectF(0, 0, 200, 180));
  other.computeRects();
  other.setController(&host);
  view->setController(&host);
  QTest::mouseClick(view.get(), Qt::LeftButton, {}, {110, 80});
  QTest::mouseClick(&other, Qt::LeftButton, {}, {110, 80});
  EXPECT_EQ(host.clicked, (std::vector<XOVView*>{view.get(), &other}));
  QCursor::setPos(view->mapToGlobal(QPoint(110, 80)));
  view->handleTrackedMousePosition();
  EXPECT_EQ(host.tracked, std::vector<XOVView*>{view.get()});
  EXPECT_TRUE(host.withoutView.empty());
}

TEST_F(Signals, aControllerMayCloseTheViewThatTellsIt) {
  Host host;
  host.closes = &view;
  view->setController(&host);
  const QPointer<XOVView> watched = view.get();
  view->mouseDown({view->convertPointToWindow({110, 100}), {}, 1});
  EXPECT_EQ(host.clicked.size(), 1u);
  EXPECT_FALSE(watched);
}

TEST_F(Signals, limitsAreToldWhenTheyChange) {
  QSignalSpy changed(view.get(), &XOVView::limitsChanged);
  view->setXLimitsMinMax(0, 60);
  EXPECT_EQ(changed.count(), 0);
  view->setXLimitsMinMax(10, 60);
  EXPECT_EQ(changed.count(), 1);
  view->setYmax(std::nanf(""));
  view->setYmax(std::nanf(""));
  EXPECT_EQ(changed.count(), 2);
}

// Draws with limits of its own.
class Scaling : public XOVView {
public:
  using XOVView::XOVView;
  void drawRect(const QRectF&) override {
    setXLimitsMinMax(5, next);
    ymax_ = next;
    toldInside += told;
  }
  float next = 7;
  int told = 0;
  int toldInside = 0;
};

TEST(DrawingSignals, limitsThatADrawingChangesAreToldOnceItIsOver) {
  Scaling view(QRectF(0, 0, 100, 80));
  QObject::connect(&view, &XOVView::limitsChanged, &view, [&] { ++view.told; });
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(view.told, 1);
  EXPECT_EQ(view.toldInside, 0);
  view.drawInto(recording);
  EXPECT_EQ(view.told, 1) << "the same as before";
  view.next = 9;
  view.grab();
  QCoreApplication::processEvents(); // of a window's drawing it is told when Qt has done with it
  EXPECT_EQ(view.told, 2);
  view.next = 11;
  view.pictureOfRect(view.bounds());
  EXPECT_EQ(view.told, 3);
  view.next = 13;
  view.dataWithPDFInsideRect(view.bounds());
  EXPECT_EQ(view.told, 4);
}

// Two views that follow each other settle.
TEST(DrawingSignals, linkedViewsShareTheirLimits) {
  XOVView first;
  XOVView second;
  const auto follow = [](XOVView& leader, XOVView& follower) {
    QObject::connect(&leader, &XOVView::limitsChanged, &follower, [&] {
      follower.setXLimitsMinMax(leader.xmin(), leader.xmax());
      follower.setNeedsDisplay();
    });
  };
  follow(first, second);
  follow(second, first);
  first.setXLimitsMinMax(3, 4);
  EXPECT_EQ(second.xmax(), 4);
  second.setProperty("xmax", 8.0);
  EXPECT_EQ(first.xmax(), 8);
}

TEST_F(Signals, exportsAreToldWithTheirPath) {
  QTemporaryDir folder;
  QSignalSpy exported(view.get(), &XOVView::exported);
  const QString stem = folder.filePath(QStringLiteral("view."));
  EXPECT_TRUE(view->writePDFToFile(stem + QStringLiteral("pdf")));
  EXPECT_TRUE(view->writeTIFToFile(stem + QStringLiteral("tif")));
  EXPECT_TRUE(view->writeJPGToFile(stem + QStringLiteral("jpg")));
  EXPECT_TRUE(view->writePNGToFile(stem + QStringLiteral("png")));
  ASSERT_EQ(exported.count(), 4);
  EXPECT_EQ(exported[0][0].toString(), stem + QStringLiteral("pdf"));
  EXPECT_EQ(exported[3][0].toString(), stem + QStringLiteral("png"));
  EXPECT_FALSE(view->writePNGToFile(folder.filePath(QStringLiteral("no/such/folder.png"))));
  EXPECT_EQ(exported.count(), 4);
}

} // namespace
} // namespace xov
