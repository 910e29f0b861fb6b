#include "SeisDrawing.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {
namespace {

template <typename ViewType>
class RecordTimes : public ::testing::Test {
protected:
  /// The trace of a record of so many samples, as it is drawn.
  Trace drawn(int count, float interval, float begin) {
    samples_ = recordsOf({fakeRecord(std::vector<float>(std::size_t(count), 1.0F), interval, begin)});
    recording_.clear();
    view_.setWvfrmsArray(samples_);
    view_.drawInto(recording_);
    const auto strokes = traceStrokes(recording_);
    return strokes.empty() ? Trace() : strokes.front().path.traces().front();
  }

  /// How far, at most, the points are from where the limits of the axis put b + i · delta.
  double farthestFromTheAxis(const Trace& trace, float interval, float begin) const {
    const QRectF frame = view_.pRect();
    const double pointsPerSecond = frame.width() / (double(view_.xmax()) - double(view_.xmin()));
    const std::vector<QPointF> points = trace.points();
    double farthest = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const double t = double(begin) + double(interval) * double(i);
      const double x = frame.x() + (t - double(view_.xmin())) * pointsPerSecond;
      farthest = std::max(farthest, std::abs(points[i].x() - x));
    }
    return farthest;
  }

  ViewType view_{QRectF(0, 0, 600, 400)};
  RecordingContext recording_;
  Records samples_;
};

using Views = ::testing::Types<SeisView01, SeisView02, MultiSeisView>;
TYPED_TEST_SUITE(RecordTimes, Views);

TYPED_TEST(RecordTimes, areAddedUpWhereTheSumsLieOnTheAxis) {
  // Sums of 0.01 s from 0 on: their error stays far below half of 1/24 s.
  const Trace trace = this->drawn(2000, 0.01F, 0);
  ASSERT_EQ(trace.size(), 2000);
  EXPECT_EQ(trace.time.rule, TraceTime::Rule::Accumulated);
  EXPECT_LE(this->farthestFromTheAxis(trace, 0.01F, 0), 0.5);
}

TYPED_TEST(RecordTimes, areEvenWhereTheSumsWouldLeaveTheAxis) {
  // At 54,400 s each step of 0.01 s would become 3/256 s: the record of 328 s would be 56 s late at its end.
  const Trace trace = this->drawn(32'800, 0.01F, 54'400);
  ASSERT_EQ(trace.size(), 32'800);
  EXPECT_EQ(trace.time.rule, TraceTime::Rule::Even);
  EXPECT_LE(this->farthestFromTheAxis(trace, 0.01F, 54'400), 0.01);
  // The frame ends where the record does, 1/256 s fine.
  EXPECT_NEAR(trace.points().back().x(), this->view_.pRect().right(), 0.02);
}

TYPED_TEST(RecordTimes, ofADayAt20HertzEndWithTheAxis) {
  const Trace trace = this->drawn(1'728'000, 0.05F, 0);
  ASSERT_EQ(trace.size(), 1'728'000);
  EXPECT_EQ(trace.time.rule, TraceTime::Rule::Even);
  EXPECT_NEAR(trace.points().back().x(), this->view_.pRect().right(), 0.01);
}

} // namespace
} // namespace xov::testing
