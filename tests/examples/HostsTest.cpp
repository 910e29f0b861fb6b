#include "examples/linked/LinkedWindow.h"
#include "examples/live/LiveMonitor.h"

#include <gtest/gtest.h>

#include <QTest>

namespace {

/// A recording of a thousand seconds, a sample a second, whose drum and section begin at 100 s.
std::shared_ptr<xov::SacSeismogram> recording() {
  std::vector<float> samples(1001);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i % 7);
  xov::SacHeader header;
  header.delta = 1;
  header.b = 100;
  return std::make_shared<xov::SacSeismogram>(header, samples);
}

void click(QWidget* view) { QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().center()); }

class LinkedViews : public ::testing::Test {
protected:
  LinkedViews() {
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.drum()->grab();
    window.section()->grab();
  }
  LinkedWindow window{recording()};
};

TEST_F(LinkedViews, beginWithTheWholeRecordingInOneRow) {
  EXPECT_FLOAT_EQ(window.section()->xmin(), 100);
  EXPECT_FLOAT_EQ(window.section()->xmax(), 1100);
  EXPECT_FLOAT_EQ(window.drum()->rowDuration(), 1000);
  EXPECT_EQ(window.drum()->nRows(), 1);
}

TEST_F(LinkedViews, aClickIntoTheSectionHalvesTheRowsOfTheDrum) {
  click(window.section());
  EXPECT_FLOAT_EQ(window.section()->xmax() - window.section()->xmin(), 500);
  EXPECT_NEAR((window.section()->xmax() + window.section()->xmin()) / 2, 600, 60); // the middle of the view
  EXPECT_FLOAT_EQ(window.drum()->rowDuration(), 500);
  EXPECT_EQ(window.drum()->nRows(), 2);
}

TEST_F(LinkedViews, aClickIntoTheDrumWidensTheSection) {
  click(window.section());
  EXPECT_FLOAT_EQ(window.drum()->rowDuration(), 500);
  click(window.drum());
  EXPECT_FLOAT_EQ(window.section()->xmax() - window.section()->xmin(), 1000);
  EXPECT_FLOAT_EQ(window.drum()->rowDuration(), 1000);
}

TEST_F(LinkedViews, staysWithinTheRecording) {
  window.showAbout(-5000, 300);
  EXPECT_FLOAT_EQ(window.section()->xmin(), 100);
  EXPECT_FLOAT_EQ(window.section()->xmax(), 400);
  window.showAbout(1e6F, 1e6F);
  EXPECT_FLOAT_EQ(window.section()->xmin(), 100);
  EXPECT_FLOAT_EQ(window.section()->xmax(), 1100);
}

TEST(LiveMonitorExample, drawsWhatItsThreadDelivers) {
  LiveMonitor monitor;
  monitor.resize(600, 300);
  monitor.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&monitor));
  EXPECT_TRUE(QTest::qWaitFor([&] { return monitor.samples() >= 100; }, 10000));
  ASSERT_EQ(monitor.wvfrmsArray()->size(), 2U);
  for (const auto& record : *monitor.wvfrmsArray())
    EXPECT_GE(record->npts(), 50);
}

} // namespace
