#include "XOV_Graphics/views/xy/spectrumView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using namespace testing;

TEST(SpectrumView, madeWithoutAFrameItHasAnEmptyListAndBothLogSwitchesOn) {
  const spectrumView view;
  ASSERT_NE(view.theSpectra(), nullptr);
  EXPECT_TRUE(view.theSpectra()->empty());
  EXPECT_TRUE(view.logX());
  EXPECT_TRUE(view.logY());
  EXPECT_FALSE(view.testAttribute(Qt::WA_Resized));
}

TEST(SpectrumView, madeWithAFrameItHasNoListAndBothLogSwitchesOff) {
  const spectrumView view(QRectF(0, 0, 200, 100));
  EXPECT_EQ(view.theSpectra(), nullptr);
  EXPECT_FALSE(view.logX());
  EXPECT_FALSE(view.logY());
  EXPECT_EQ(view.bounds(), QRectF(0, 0, 200, 100));
}

TEST(SpectrumView, withoutAListAddingAndRemovingDoNothing) {
  spectrumView view(QRectF(0, 0, 200, 100));
  view.addToTheSpectra(1);
  view.removeFromTheSpectra(1);
  EXPECT_EQ(view.theSpectra(), nullptr);
}

TEST(SpectrumView, addingTheSameObjectTwiceAndRemovingItOnceLeavesTheListEmpty) {
  spectrumView view;
  const auto spectrum = QVariant::fromValue(std::make_shared<int>(7));
  view.addToTheSpectra(spectrum);
  view.addToTheSpectra(spectrum);
  EXPECT_EQ(view.theSpectra()->size(), 2u);
  view.removeFromTheSpectra(spectrum);
  EXPECT_TRUE(view.theSpectra()->empty());
}

TEST(SpectrumView, removingLeavesObjectsThatAreNotEqual) {
  spectrumView view;
  view.addToTheSpectra(QVariant::fromValue(std::make_shared<int>(7)));
  view.addToTheSpectra(QStringLiteral("noise"));
  view.removeFromTheSpectra(QVariant::fromValue(std::make_shared<int>(7)));
  EXPECT_EQ(view.theSpectra()->size(), 2u);
  view.removeFromTheSpectra(view.theSpectra()->back());
  EXPECT_EQ(view.theSpectra()->size(), 1u);
}

TEST(SpectrumView, anEmptyObjectIsNotAdded) {
  spectrumView view;
  view.addToTheSpectra(QVariant());
  EXPECT_TRUE(view.theSpectra()->empty());
}

TEST(SpectrumView, theListIsSharedWithTheHostAndKeptAlive) {
  spectrumView view;
  auto list = std::make_shared<ChartItems>(ChartItems{1, 2});
  const std::weak_ptr<ChartItems> watched = list;
  view.setTheSpectra(list);
  list->push_back(3);
  list.reset();
  EXPECT_EQ(view.theSpectra()->size(), 3u);
  view.setTheSpectra(nullptr);
  EXPECT_TRUE(watched.expired());
}

TEST(SpectrumView, theLogSwitchesAreKept) {
  spectrumView view;
  view.setLogX(false);
  EXPECT_FALSE(view.logX());
  EXPECT_TRUE(view.logY());
  view.setLogY(false);
  EXPECT_FALSE(view.logY());
}

TEST(SpectrumView, itDrawsAWhitePanelWithAGrayEdge) {
  spectrumView view(QRectF(0, 0, 200, 100));
  const auto recording = recorded(view);
  ASSERT_EQ(recording->items().size(), 2u);
  EXPECT_EQ(recording->items()[0].kind, RecordedItem::Kind::Fill);
  EXPECT_EQ(recording->items()[0].color, colors::white);
  EXPECT_EQ(boxOf(recording->items()[0]), view.bounds());
  EXPECT_EQ(recording->items()[1].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(recording->items()[1].color, colors::gray);
  EXPECT_EQ(boxOf(recording->items()[1]), view.bounds());
}

TEST(SpectrumView, itsDrawingIsTheSameWhateverSpectraAreHeld) {
  spectrumView view;
  view.resize(200, 100);
  const QString empty = recorded(view)->toText();
  view.addToTheSpectra(1);
  view.setLogX(false);
  EXPECT_EQ(recorded(view)->toText(), empty);
  EXPECT_TRUE(drawsEverywhere(view));
}

TEST(SpectrumView, drawingLeavesTheColoursAsTheyWere) {
  spectrumView view(QRectF(0, 0, 200, 100));
  QColor after;
  recordedStep([&] {
    GraphicsContext::current().setColor(colors::red);
    view.drawRect(view.bounds());
    after = GraphicsContext::current().state().strokeColor;
  });
  EXPECT_EQ(after, colors::red);
}

} // namespace
} // namespace xov
