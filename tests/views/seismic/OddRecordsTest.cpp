// What a host may hand over by mistake must never stop a view, and must not spoil what else it shows.
#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/SampledSignal.h"
#include "XOV_Graphics/seismic/StationObservation.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/ThreeCompView.h"
#include "XOV_Graphics/views/seismic/uniformTimeSeriesView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();

/// Draws records in every view, into a recording and into a picture.
class EveryView {
public:
  explicit EveryView(const Records& records, const QRectF& frame = {0, 0, 500, 400}) : records_(records) {
    SeisView01 stacked(frame);
    stacked.setFillPositive(true);
    SeisView02 bands(frame);
    bands.setplotStyle(2);
    MultiSeisView strips(frame);
    strips.setShowZeroLine(true);
    wvfrmView panels(frame);
    panels.setWvfrmArray(records);
    panels.setXLimitsMinMax(0, 10);
    panels.setMaxAmplitude(3);
    stacked.setWvfrmsArray(records);
    bands.setWvfrmsArray(records);
    strips.setWvfrmsArray(records);
    ThreeCompView components(frame);
    const auto at = [&](std::size_t i) { return i < records->size() ? (*records)[i] : nullptr; };
    const auto observation = std::make_shared<StationObservation>(at(0), at(1), at(2));
    components.setObservation(observation);
    components.setSelfScaled(true);
    components.setShowMaxAmplitude(true);
    uniformTimeSeriesView series(frame);
    auto signal = std::make_shared<UniformSignalArray>();
    for (const auto& record : *records) {
      if (!record)
        signal->push_back(nullptr);
      else
        signal->push_back(std::make_shared<SampledSignal>(
            std::vector<float>(record->GetSacSeis(), record->GetSacSeis() + record->npts()), record->delta()));
    }
    series.setWvfrmArray(signal);
    series.setXLimitsMinMax(0, 10);
    for (XOVView* view : std::initializer_list<XOVView*>{&stacked, &bands, &strips, &panels, &components, &series}) {
      draw(*view);
    }
  }

  /// Every coordinate that was drawn is a number.
  void expectNumbers() const {
    for (const auto& recording : recordings_) {
      for (const RecordedItem& item : recording->items()) {
        for (const QLineF& line : item.segments()) {
          EXPECT_TRUE(std::isfinite(line.x1()) && std::isfinite(line.y1()) && std::isfinite(line.x2()) &&
                      std::isfinite(line.y2()));
        }
        EXPECT_TRUE(std::isfinite(item.position.x()) && std::isfinite(item.position.y()));
      }
    }
  }
  std::size_t traces(std::size_t view) const {
    std::size_t count = 0;
    for (const RecordedItem& item : traceStrokes(*recordings_[view]))
      count += item.path.traces().size();
    return count;
  }

private:
  void draw(XOVView& view) {
    recordings_.push_back(std::make_unique<RecordingContext>());
    view.drawInto(*recordings_.back());
    EXPECT_EQ(view.snapshot().isNull(), view.bounds().isEmpty());
  }

  Records records_;
  std::vector<std::unique_ptr<RecordingContext>> recordings_;
};

std::shared_ptr<FakeRecord> good() { return fakeRecord({0, 1, 0, -1, 2, 0}); }

TEST(OddRecords, withoutSamplesDrawNoTrace) {
  const EveryView drawn(recordsOf({fakeRecord({}), good(), fakeRecord({})}));
  drawn.expectNumbers();
  for (std::size_t view = 0; view < 6; ++view)
    EXPECT_EQ(drawn.traces(view), 1u) << "view " << view;
}

TEST(OddRecords, thatAreNullDrawNoTrace) {
  const EveryView drawn(recordsOf({nullptr, good(), nullptr}));
  drawn.expectNumbers();
  for (std::size_t view = 0; view < 6; ++view)
    EXPECT_EQ(drawn.traces(view), 1u) << "view " << view;
}

TEST(OddRecords, thatAreAllNullAreSurvived) { EveryView(recordsOf({nullptr, nullptr, nullptr})).expectNumbers(); }

TEST(OddRecords, withAnIntervalOfZeroOrLessOrNoNumberAreSurvived) {
  for (const float delta : {0.0f, -1.0f, -12345.0f, kNan, kInfinity, 1e-45f, kLargest}) {
    EveryView(recordsOf({fakeRecord({1, 2, 3}, delta), good(), fakeRecord({1, 2, 3}, delta)})).expectNumbers();
  }
}

TEST(OddRecords, withTimesThatAreNoNumbersAreSurvived) {
  for (const float begin : {kNan, kInfinity, -kInfinity, kLargest, -kLargest}) {
    EveryView(recordsOf({fakeRecord({1, 2, 3}, 1, begin), good(), good()})).expectNumbers();
    const auto record = good();
    record->endSeconds = begin;
    EveryView(recordsOf({record, good(), good()})).expectNumbers();
  }
}

TEST(OddRecords, withSamplesThatAreNoNumbersBreakTheLineThere) {
  const auto record = fakeRecord({0, 1, kNan, 2, kInfinity, -kInfinity, 3, 1});
  const EveryView drawn(recordsOf({record, record, record}));
  drawn.expectNumbers();
  for (std::size_t view = 0; view < 6; ++view)
    EXPECT_GE(drawn.traces(view), 1u) << "view " << view;
}

TEST(OddRecords, withExtremesThatAreNoNumbersAreSurvived) {
  for (const float extreme : {kNan, kInfinity, -kInfinity, kLargest}) {
    const auto record = good();
    record->lowest = -extreme;
    record->highest = extreme;
    record->peak = extreme;
    EveryView(recordsOf({record, good(), record})).expectNumbers();
  }
}

TEST(OddRecords, withHugePicksAreSurvived) {
  for (const float time : {kNan, kInfinity, -kInfinity, kLargest, -12345.0f}) {
    const auto record = good();
    record->arrivalSeconds = record->originSeconds = record->firstArrivalSeconds = record->picks[3] = time;
    EveryView(recordsOf({record, good(), record})).expectNumbers();
  }
}

TEST(OddRecords, ofOneSampleAreSurvived) {
  EveryView(recordsOf({fakeRecord({1}), fakeRecord({1}), fakeRecord({1})})).expectNumbers();
}

TEST(OddRecords, areSurvivedByViewsWithoutRoom) {
  for (const QRectF& frame : {QRectF(0, 0, 0.1, 0.1), QRectF(0, 0, 1, 1), QRectF(0, 0, 144, 108),
                              QRectF(0, 0, 30, 600), QRectF(0, 0, 600, 30)}) {
    EveryView(recordsOf({good(), good(), good()}), frame).expectNumbers();
  }
}

TEST(OddRecords, inViewsWithoutRoomDrawNoTrace) {
  const EveryView drawn(recordsOf({good(), good(), good()}), {0, 0, 30, 600});
  for (const std::size_t view : {0u, 1u, 2u, 4u, 5u})
    EXPECT_EQ(drawn.traces(view), 0u) << "view " << view;
}

TEST(OddRecords, areNotKeptAlive) {
  SeisView01 stacked;
  SeisView02 bands;
  MultiSeisView strips;
  wvfrmView panels;
  ThreeCompView components;
  Records records = recordsOf({good()});
  auto observation = std::make_shared<StationObservation>(good(), nullptr, nullptr);
  const std::weak_ptr<SeismogramArray> watched = records;
  const std::weak_ptr<StationObservation> watchedObservation = observation;
  stacked.setWvfrmsArray(records);
  bands.setWvfrmsArray(records);
  strips.setWvfrmsArray(records);
  panels.setWvfrmArray(records);
  components.setObservation(observation);
  records.reset();
  observation.reset();
  EXPECT_TRUE(watched.expired());
  EXPECT_TRUE(watchedObservation.expired());
  for (XOVView* view : std::initializer_list<XOVView*>{&stacked, &bands, &strips, &panels, &components}) {
    view->resize(300, 300);
    RecordingContext recording;
    view->drawInto(recording);
    EXPECT_LE(recording.items().size(), 2u);
  }
}

TEST(OddRecords, mayLoseTheirHostsArrayInTheMiddleOfADraw) {
  // A drawing step of the host that lets the records go must not pull them from under the view.
  class LettingGo : public MultiSeisView {
  public:
    using MultiSeisView::MultiSeisView;
    void drawPicksSeis(const QRectF&, const SeismogramRecord*) override { held.reset(); }
    Records held;
  };
  LettingGo view(QRectF(0, 0, 300, 300));
  view.held = recordsOf({good(), good()});
  view.setWvfrmsArray(view.held);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(traceStrokes(recording)[0].path.traces().size(), 2u);
}

} // namespace
} // namespace xov::testing
