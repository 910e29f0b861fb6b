#include "XOV_Graphics/views/seismic/ThreeCompView.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/StationObservation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {
namespace {

using Component = std::shared_ptr<FakeRecord>;

// A view of 600 × 420: panels 456 wide and (420 − 108) / 3 = 104 high.
constexpr double kHeight = 104;
const QRectF kTop(72, 268, 456, kHeight);
const QRectF kMiddle(72, 158, 456, kHeight);
const QRectF kBottom(72, 48, 456, kHeight);

Component component(const QString& name, std::vector<float> samples) {
  auto record = fakeRecord(std::move(samples));
  record->station = QStringLiteral("TLY");
  record->network = QStringLiteral("II");
  record->component = name;
  record->geographicRegion = QStringLiteral("Honshu");
  record->originTime = QStringLiteral("2011/03/11 05:46:23.7");
  record->depthKm = 24;
  record->distanceDeg = 33.4f;
  record->azimuthDeg = 312.1f;
  record->backAzimuthDeg = 98.8f;
  return record;
}

/// Answers for a comparison, too.
class ComparingView : public ThreeCompView {
public:
  using ThreeCompView::ThreeCompView;
  std::shared_ptr<SeismogramRecord> getSeisWithIndex(int index) const override {
    asked.push_back(index);
    return index == 3 ? comparison : ThreeCompView::getSeisWithIndex(index);
  }
  void drawSeisSeis(const QRectF& rect, const SeismogramRecord* record) override {
    altScales.push_back(useAltScale());
    ThreeCompView::drawSeisSeis(rect, record);
  }
  void setComparisonRange(float low, float high) {
    pymin_ = low;
    pymax_ = high;
  }
  std::shared_ptr<SeismogramRecord> comparison;
  mutable std::vector<int> asked;
  std::vector<bool> altScales;
};

class ThreeComp : public ::testing::Test {
protected:
  void draw(const Component& vertical, const Component& radial, const Component& transverse) {
    observation_ = std::make_shared<StationObservation>(vertical, radial, transverse);
    view_.setObservation(observation_);
    recording_.clear();
    view_.drawInto(recording_);
  }
  void drawAll() {
    draw(component(QStringLiteral("BHZ"), {0, 5, 0}), component(QStringLiteral("BHR"), {0, -10, 0}),
         component(QStringLiteral("BHT"), {0, 2, 0}));
  }

  std::shared_ptr<StationObservation> observation_;
  ComparingView view_{QRectF(0, 0, 600, 420)};
  RecordingContext recording_;
};

TEST_F(ThreeComp, startsWithoutAnObservationAndWithEveryOptionOff) {
  ThreeCompView view;
  EXPECT_EQ(view.anObs(), nullptr);
  EXPECT_EQ(view.maxAmplitude(), 0.0005f);
  EXPECT_EQ(view.altMaxAmplitude(), 0);
  EXPECT_FALSE(view.selfScaled());
  EXPECT_FALSE(view.opComparison());
  EXPECT_FALSE(view.useAltScale());
  EXPECT_FALSE(view.showMaxAmplitude());
  EXPECT_EQ(view.pymin(), 0);
  EXPECT_EQ(view.pymax(), 0);
  view.setMaxAmplitude(3);
  EXPECT_EQ(view.maxAmplitude(), 3);
}

TEST_F(ThreeComp, withoutAnObservationDrawsOnlyPaperAndFrame) {
  view_.drawInto(recording_);
  EXPECT_EQ(steps(recording_), (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000")}));
  recording_.clear();
  draw(nullptr, nullptr, nullptr);
  EXPECT_EQ(recording_.items().size(), 2u);
  drawAll();
  EXPECT_GT(recording_.items().size(), 2u);
  observation_.reset();
  recording_.clear();
  view_.drawInto(recording_);
  EXPECT_EQ(recording_.items().size(), 2u);
}

TEST_F(ThreeComp, answersVerticalRadialAndTransverseAndNothingElse) {
  const auto z = component({}, {}), r = component({}, {}), t = component({}, {});
  const auto observation = std::make_shared<StationObservation>(z, r, t);
  ThreeCompView view;
  EXPECT_EQ(view.getSeisWithIndex(0), nullptr);
  view.setObservation(observation);
  EXPECT_EQ(view.getSeisWithIndex(0), z);
  EXPECT_EQ(view.getSeisWithIndex(1), r);
  EXPECT_EQ(view.getSeisWithIndex(2), t);
  EXPECT_EQ(view.getSeisWithIndex(3), nullptr);
  EXPECT_EQ(view.getSeisWithIndex(-1), nullptr);
}

TEST_F(ThreeComp, computesAMaximumAmplitudeOf5Point125FromPeaksOf2And5And5) {
  observation_ = std::make_shared<StationObservation>(component({}, {2}), component({}, {-5}), component({}, {5}));
  view_.setObservation(observation_);
  view_.computeMaxAmplitude();
  EXPECT_EQ(view_.maxAmplitude(), 5.125f);
}

TEST_F(ThreeComp, takesItsLimitsFromTheComponentsThatAreThere) {
  observation_ =
      std::make_shared<StationObservation>(fakeRecord({10, 30}, 5, 100), nullptr, fakeRecord({20, 50}, 5, 200));
  view_.setObservation(observation_);
  view_.set_fixedXAxisRange(true);
  view_.set_fixedYAxisRange(true);
  view_.computePlotLimits();
  // Times 100 ... 105 and 200 ... 205; amplitudes 10 ... 50 with a margin of 0.05 · 40.
  EXPECT_EQ(view_.xmin(), 100);
  EXPECT_EQ(view_.xmax(), 205);
  EXPECT_EQ(view_.ymin(), 8);
  EXPECT_EQ(view_.ymax(), 52);
  EXPECT_EQ(view_.pymin(), 8);
  EXPECT_EQ(view_.pymax(), 52);
}

TEST_F(ThreeComp, changesNoLimitWithoutAnObservation) {
  view_.setXLimitsMinMax(1, 2);
  view_.setComparisonRange(3, 4);
  view_.computePlotLimits();
  EXPECT_EQ(view_.xmax(), 2);
  EXPECT_EQ(view_.pymin(), 3);
}

TEST_F(ThreeComp, setsTheDataFrameToTheThreePanelsTogether) {
  drawAll();
  EXPECT_EQ(view_.pRect(), QRectF(72, 48, 456, 324));
  EXPECT_EQ(view_.iRect(), view_.pRect());
}

TEST_F(ThreeComp, headsTheViewWithTheEventAndTheStationsGeometry) {
  drawAll();
  const TextAttributes font = TextAttributes::helvetica(12);
  const QString left = QStringLiteral("Honshu\nOrigin Time:2011/03/11 05:46:23.7 / Depth: 24");
  const QString right = QStringLiteral("Station: TLY-II / GCARC:33.4 deg / AZ:312.1 / BAZ: 98.8");
  expectText(recording_, left, placed(left, font, {72, 418}, 1, 3), 12, colors::black);
  expectText(recording_, right, placed(right, font, {526, 418}, 3, 3), 12, colors::black);
}

TEST_F(ThreeComp, drawsEachPanelAsZeroLineTracePicksAndName) {
  const auto z = component(QStringLiteral("BHZ"), {0, 5, 0});
  z->firstArrivalSeconds = 1;
  draw(z, component(QStringLiteral("BHR"), {0, -10, 0}), component(QStringLiteral("BHT"), {0, 2, 0}));
  EXPECT_EQ(steps(recording_).mid(4, 11),
            (QStringList{
                QStringLiteral("line #aaaaaa"), QStringLiteral("trace #000000"), QStringLiteral("line #555555"),
                QStringLiteral("text #000000 A"), QStringLiteral("text #000000 BHZ"), QStringLiteral("line #aaaaaa"),
                QStringLiteral("trace #000000"), QStringLiteral("text #000000 BHR"), QStringLiteral("line #aaaaaa"),
                QStringLiteral("trace #000000"), QStringLiteral("text #000000 BHT")}));
}

TEST_F(ThreeComp, takesTheHeaderOfATransverseComponentAloneAndDrawsOnlyTheBottomPanel) {
  auto t = component(QStringLiteral("BHT"), {0, 2, 0});
  t->station = QStringLiteral("ONLY");
  draw(nullptr, nullptr, t);
  EXPECT_TRUE(recording_.strings()[1].startsWith(QStringLiteral("Station: ONLY-II")));
  const auto lines = singleLines(recording_, colors::lightGray);
  ASSERT_EQ(lines.size(), 1u);
  expectNear(lines[0].segments()[0], {72, 100, 528, 100});
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
}

TEST_F(ThreeComp, sharesOneScaleAmongThePanels) {
  // −10 … 5 and a margin of 0.75: −10.75 … 5.75, 16.5 units on 104 points. The last sample of three stays out.
  drawAll();
  const double unit = kHeight / 16.5;
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 3u);
  expectPoints(strokes[0].path.traces()[0], {{72, 320}, {300, 320 + 5 * unit}});
  expectPoints(strokes[1].path.traces()[0], {{72, 210}, {300, 210 - 10 * unit}});
  expectPoints(strokes[2].path.traces()[0], {{72, 100}, {300, 100 + 2 * unit}});
}

TEST_F(ThreeComp, letsEachTraceFillItsPanelAtItsOwnPeakWhenSelfScaled) {
  view_.setSelfScaled(true);
  drawAll();
  const auto strokes = traceStrokes(recording_);
  expectPoints(strokes[0].path.traces()[0], {{72, 320}, {300, 372}});
  expectPoints(strokes[1].path.traces()[0], {{72, 210}, {300, 158}});
  expectPoints(strokes[2].path.traces()[0], {{72, 100}, {300, 152}});
}

TEST_F(ThreeComp, labelsTheFirstArrivalWithTheTextStoredForKeyTen) {
  const auto z = component(QStringLiteral("BHZ"), {0, 5, 0});
  z->firstArrivalSeconds = 1;
  z->picks = {{2, 1.0f}, {3, 1.0f}, {11, 1.0f}};
  z->labels = {{10, QStringLiteral("Pdiff")}, {2, QStringLiteral("pP")}, {11, QStringLiteral("end")}};
  z->originSeconds = 1;
  draw(z, nullptr, nullptr);
  EXPECT_EQ(recording_.strings().mid(2, 5), QStringLiteral("Origin Pdiff F pP T3").split(QLatin1Char(' ')));
}

TEST_F(ThreeComp, drawsAPickOverTheMiddleSixtyPercentWithItsLabelAbove) {
  const auto z = component(QStringLiteral("BHZ"), {0, 5, 0});
  z->firstArrivalSeconds = 1;
  draw(z, nullptr, nullptr);
  const auto lines = singleLines(recording_, colors::darkGray);
  ASSERT_EQ(lines.size(), 1u);
  expectNear(lines[0].segments()[0], {300, 268 + 0.2 * kHeight, 300, 372 - 0.2 * kHeight});
  const TextAttributes system = TextAttributes::systemLabel();
  expectText(recording_, QStringLiteral("A"), {300 - system.size(QStringLiteral("A")).width() / 2, 372 - 12 + 4.0},
             system.pointSize(), colors::black);
}

TEST_F(ThreeComp, printsThePeakUnderTheNameOnRequest) {
  const TextAttributes font = TextAttributes::helvetica(12);
  drawAll();
  const QString name = QStringLiteral("BHR"), peak = QStringLiteral("1.000e+01");
  expectText(recording_, name, placed(name, font, {524, kMiddle.bottom() + 12}, 3, 3), 12, colors::black);
  EXPECT_FALSE(recording_.strings().contains(peak));
  view_.setShowMaxAmplitude(true);
  drawAll();
  expectText(recording_, peak, placed(peak, font, {524, kMiddle.bottom()}, 3, 3), 12, colors::black);
}

TEST_F(ThreeComp, endsWithATimeAxisOf18PointLabelsUnderTheLowestPanel) {
  drawAll();
  EXPECT_TRUE(
      recording_.toText().endsWith(timeAxisText(72, 528, 48, TextAttributes::helvetica(18), colors::black, 0, 2)));
}

TEST_F(ThreeComp, drawsAComparisonInRed36PointsLowerAndCaptionsIt) {
  view_.comparison = component(QStringLiteral("SYN"), {0, 4, 0});
  view_.setOpComparison(true);
  draw(component(QStringLiteral("BHZ"), {0, 5, 0}), component(QStringLiteral("BHR"), {0, -10, 0}), nullptr);
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 3u);
  EXPECT_EQ(strokes[1].color, colors::red);
  const double unit = kHeight / 16.5;
  expectPoints(strokes[1].path.traces()[0], {{72, 320 - 36}, {300, 320 - 36 + 4 * unit}});
  EXPECT_TRUE(recording_.strings().contains(QStringLiteral("SYN")));
  EXPECT_FALSE(recording_.strings().contains(QStringLiteral("BHZ")));
  // Traces and comparisons of the panels 0 and 1, and the comparison of the empty panel 2.
  EXPECT_EQ(view_.altScales, (std::vector<bool>{false, true, false, true, true}));
  EXPECT_FALSE(view_.useAltScale());
}

TEST_F(ThreeComp, scalesAComparisonByItsOwnRangeUnlessSelfScaled) {
  class OtherRange : public ComparingView {
  public:
    using ComparingView::ComparingView;
    void computePlotLimits() override {
      ThreeCompView::computePlotLimits();
      setComparisonRange(-1, 3);
    }
  };
  OtherRange view(QRectF(0, 0, 600, 420));
  const auto observation =
      std::make_shared<StationObservation>(component(QStringLiteral("BHZ"), {0, 5, 0}), nullptr, nullptr);
  view.setObservation(observation);
  view.comparison = component(QStringLiteral("SYN"), {0, 1, 0});
  view.setOpComparison(true);
  view.drawInto(recording_);
  expectPoints(traceStrokes(recording_)[1].path.traces()[0], {{72, 284}, {300, 284 + kHeight / 4}});
  view.setSelfScaled(true);
  recording_.clear();
  view.drawInto(recording_);
  expectPoints(traceStrokes(recording_)[1].path.traces()[0], {{72, 284}, {300, 284 + kHeight / 2}});
}

TEST_F(ThreeComp, laysPanelsOutAndMapsSamplesAsAnIndependentReckoningDoes) {
  std::mt19937 random(45);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const int width = uniformInt(random, 160, 1400), height = uniformInt(random, 130, 1000);
    std::vector<Component> list;
    for (int i = 0; i < 3; ++i) {
      list.push_back(component(QStringLiteral("C%1").arg(i), noise(random, uniformInt(random, 3, 80), 50)));
      list.back()->deltaSeconds = uniform(random, 0.01f, 2);
      list.back()->beginSeconds = uniform(random, -50, 50);
      if (uniformInt(random, 0, 4) == 0 && (i > 0)) list.back() = nullptr;
    }
    const auto observation = std::make_shared<StationObservation>(list[0], list[1], list[2]);
    ThreeCompView view(QRectF(0, 0, width, height));
    view.setObservation(observation);
    recording_.clear();
    view.drawInto(recording_);
    const double panelHeight = (height - 108) / 3.0, panelWidth = width - 144;
    const auto strokes = traceStrokes(recording_);
    const auto lines = singleLines(recording_, colors::lightGray);
    std::size_t drawn = 0, lined = 0;
    for (int i = 0; i < 3; ++i) {
      const Component& record = list[std::size_t(i)];
      if (!record) continue;
      const double center = height - 48 - panelHeight * (i + 0.5) - 6 * i;
      expectNear(lines[lined++].segments()[0], {72, center, width - 72.0, center});
      std::vector<QPointF> expected;
      const int first = std::max(0, int((view.xmin() - record->beginSeconds) / record->deltaSeconds));
      const int last = std::min(record->npts(), int((view.xmax() - record->beginSeconds) / record->deltaSeconds));
      for (int k = first; k < last; ++k) {
        const float t = record->deltaSeconds * float(k) + record->beginSeconds;
        expected.emplace_back(72 + panelWidth / double(view.xmax() - view.xmin()) * double(t - view.xmin()),
                              center + panelHeight / double(view.ymax() - view.ymin()) *
                                           double(record->samples[std::size_t(k)]));
      }
      if (expected.empty()) continue;
      ASSERT_LT(drawn, strokes.size());
      expectPoints(strokes[drawn++].path.traces()[0], expected);
    }
    EXPECT_EQ(drawn, strokes.size());
  }
}

} // namespace
} // namespace xov::testing
