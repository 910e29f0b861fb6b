// Views that show windows of records.
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordWindow.h"
#include "tests/support/TestRecords.h"
#include "tests/views/all/AllViews.h"

#include <gtest/gtest.h>

#include <QImage>

#include <cmath>

namespace xov {
namespace {

const QRectF kFrame(0, 0, 420, 300);

using Records = std::shared_ptr<const SeismogramArray>;

/// 1000 s of a wave that swells.
std::shared_ptr<SeismogramRecord> recording() {
  std::vector<float> samples;
  for (int i = 0; i < 20000; ++i)
    samples.push_back(float(i) * std::sin(float(i) * 0.03F));
  return copyOfRecord(*makeRecord({.interval = 0.05F}), {.samples = samples});
}

/// What a view draws of records that `show` hands to it.
template <class View, class Show>
QImage picture(const Records& records, const Show& show) {
  View view(kFrame);
  show(view, records);
  return view.pictureOfRect(view.bounds());
}

/// From 200 to 700 s a window and a record with nothing but its samples look alike, and unlike the whole record.
template <class View, class Show>
void expectWindowLikeACopy(const Show& show) {
  const auto whole = recording();
  const auto window = std::make_shared<RecordWindow>(whole, 200, 700);
  const auto records = [](const std::shared_ptr<SeismogramRecord>& record) {
    return std::make_shared<const SeismogramArray>(SeismogramArray{record, record});
  };
  const QImage ofWindow = picture<View>(records(window), show);
  EXPECT_TRUE(ofWindow == picture<View>(records(copyOfRecord(*window)), show));
  EXPECT_TRUE(ofWindow != picture<View>(records(whole), show));
}

TEST(RecordWindows, areDrawnInSections) {
  expectWindowLikeACopy<MultiSeisView>([](auto& view, const Records& records) {
    view.setWvfrmsArray(records);
    view.setXLimitsMinMax(0, 1000);
  });
}

TEST(RecordWindows, areDrawnInBands) {
  expectWindowLikeACopy<SeisView02>([](auto& view, const Records& records) {
    view.setWvfrmsArray(records);
    view.setXLimitsMinMax(0, 1000);
  });
}

TEST(RecordWindows, areDrawnOnDrums) {
  expectWindowLikeACopy<helicorderView>([](auto& view, const Records& records) {
    view.setWvfrmArray(records);
    view.setRowDuration(120);
    view.setNRows(10);
  });
}

TEST(RecordWindows, areDrawnLive) {
  expectWindowLikeACopy<realTimeDisplayView01>([](auto& view, const Records& records) {
    view.setWvfrmsArray(records);
    view.setXLimitsMinMax(0, 1000);
    view.setYLimitsMinMax(-20000, 20000);
    view.setRefDate(onTheDay(5, 20));
  });
}

} // namespace
} // namespace xov
