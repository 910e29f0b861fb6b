// Every class of view: made, laid out, drawn empty and drawn with data, onto every surface.
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/SampledSignal.h"
#include "XOV_Graphics/seismic/StationObservation.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "tests/support/FakeRecord.h"
#include "tests/views/all/AllViews.h"

#include <gtest/gtest.h>

#include <QImage>

#include <cmath>

namespace xov {
namespace {

const QRectF kFrame(0, 0, 420, 300);

// What a host has: kept alive while its views are shown.
struct Data {
  std::vector<float> x = {0, 1, 2, 3, 4};
  std::vector<float> y = {1, 5, 2, 4, 3};
  std::shared_ptr<SeismogramArray> records = std::make_shared<SeismogramArray>();
  std::shared_ptr<ThreeComponentObservation> observation;
  std::shared_ptr<UniformSignalArray> series = std::make_shared<UniformSignalArray>();
  QDateTime start = QDateTime(QDate(2011, 3, 11), QTime(5, 0), Qt::UTC);
  std::shared_ptr<EventOriginArray> events = std::make_shared<EventOriginArray>();

  Data() {
    std::vector<float> samples(400);
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = float(100 * std::sin(double(i) * 0.2));
    for (int i = 0; i < 4; ++i) {
      const auto record = std::make_shared<testing::FakeRecord>(samples, 0.1f);
      setReferenceTime(record->header, start);
      record->reference = std::make_shared<UtcTime>(start);
      records->push_back(record);
    }
    HypocentreValues earthquake;
    earthquake.originTime = start.addSecs(20);
    earthquake.Mw = 6;
    events->push_back(std::make_shared<Hypocentre>(earthquake));
    observation = std::make_shared<StationObservation>((*records)[0], (*records)[1], (*records)[2]);
    series->push_back(std::make_shared<SampledSignal>(samples, 0.1f, QStringLiteral("series")));
  }
};

const Data& data() {
  static const Data one;
  return one;
}

void fill(XOVView&) {}

void fill(xyPlotView& view) {
  view.setDataPointersXY(data().x, data().y);
  view.setNpts(5);
  view.computePlotLimits();
}

void fill(XOV2DScatterPlotView& view) {
  view.setXpYpNpts(std::make_shared<std::vector<float>>(data().x), std::make_shared<std::vector<float>>(data().y), 5);
  view.computePlotLimits();
}

void fill(XOVHistogramView& view) {
  view.setValuesNPts(data().y.data(), 5);
  view.setNBinsMinMax(4, 0, 5);
  view.binValues();
}

void fill(MultiSeisView& view) { view.setWvfrmsArray(data().records); }

void fill(SeisView01& view) { view.setWvfrmsArray(data().records); }

void fill(SeisView02& view) { view.setWvfrmsArray(data().records); }

void fill(SpectrogramView& view) { view.setRecords(data().records); }

void fill(NoiseStatisticsView& view) {
  NoiseStatistics statistics;
  statistics.periods = {1, 2, 4};
  statistics.segments = 2;
  statistics.decibels = {-100, -110, -120, -101, -112, -123};
  view.setStatistics(std::make_shared<const NoiseStatistics>(statistics));
}

void fill(PowerSpectraView& view) {
  view.setCurves(std::make_shared<const SpectrumCurves>(SpectrumCurves{
      {QStringLiteral("one"), {1, 2, 3}, {5, 7, 6}, {}}, {QStringLiteral("two"), {1, 2, 3}, {1, 2, 4}, {}}}));
}

void fill(wvfrmView& view) {
  view.setXLimitsMinMax(0, 40);
  view.setMaxAmplitude(100);
  view.setWvfrmArray(data().records);
}

void fill(ThreeCompView& view) { view.setObservation(data().observation); }

void fill(uniformTimeSeriesView& view) {
  view.setXLimitsMinMax(0, 40);
  view.setWvfrmArray(data().series);
}

void fill(geoMapView& view) {
  view.setupImageDataNROWSNCOLS(
      std::make_shared<const std::vector<float>>(std::vector<float>{-5000, 100, 2000, 9000}), 2, 2);
  view.buildSeisColorTable();
  auto point = std::make_shared<geoMapPoint>();
  point->setLatLonDepth(20, 100, 30);
  point->setSymbolSize(0.5f);
  view.thePoints()->push_back(point);
  auto vector = std::make_shared<geoMapVector>();
  vector->setEastValue(10);
  vector->setScaleFactor(2);
  view.addTheVector(vector);
  MapMechanism thrust;
  thrust.tensor = {1, 0, -1, 0, 0, 0};
  view.setMechanisms({thrust, thrust});
  view.setLabels({{10, 20, QStringLiteral("A"), 4}});
  view.setLegend({{QStringLiteral("Depth"), {{QStringLiteral("one"), Qt::red, 3}}, {Qt::red, Qt::blue}, {}}});
  view.setMovesMechanismsApart(true);
  view.setShowScaleBar(true);
}

void fill(FocalMechanismView& view) {
  CaptionedMechanism thrust;
  thrust.mechanism.planes[0] = {0, 45, 90};
  thrust.caption = QStringLiteral("a thrust");
  view.setMechanisms({thrust});
  view.setShowPrincipalAxes(true);
  view.setShowNodalPlanes(true);
  view.setShowDetails(true);
}

void fill(ParticleMotionView& view) {
  const auto samples = std::make_shared<const std::vector<float>>(data().y.begin(), data().y.begin() + 4);
  ParticleMotion motion;
  motion.samples = {samples, samples, samples};
  motion.names = {QStringLiteral("Z"), QStringLiteral("N"), QStringLiteral("E")};
  view.setMotion(motion);
  view.setShowPolarization(true);
}

void fill(helicorderView& view) {
  view.setNRows(4);
  view.setRowDuration(20);
  view.setWvfrmArray(data().records);
  view.setTheHypoArray(data().events);
}

void fill(RealTimeDisplayView& view) {
  view.setWvfrmsArray(data().records);
  view.setEventOrigins(data().events);
  view.setDrawOriginTimes(true);
  view.setRefDate(data().start.addSecs(40));
  view.computePlotLimits();
}

void fill(XOVImageView& view) {
  view.setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(data().y.begin(), data().y.begin() + 4), 2,
                                2);
}

// Draws onto all surfaces and returns the picture.
QImage drawEverywhere(View& view, RecordingContext& recording) {
  const QImage window = view.grab().toImage();
  EXPECT_EQ(window.size(), view.size() * view.devicePixelRatioF());
  EXPECT_TRUE(view.dataWithPDFInsideRect(view.bounds()).startsWith("%PDF-"));
  view.drawInto(recording);
  const QImage picture = view.pictureOfRect(view.bounds());
  EXPECT_EQ(picture.size(), QSize(420, 300));
  return picture;
}

template <typename ViewType>
class Inventory : public ::testing::Test {};

TYPED_TEST_SUITE(Inventory, testing::PlotViews);

TYPED_TEST(Inventory, isMadeLaidOutAndDrawnEmpty) {
  TypeParam view(kFrame);
  EXPECT_EQ(view.bounds(), kFrame);
  view.computeRects();
  EXPECT_GT(view.pRect().width(), 0);
  RecordingContext recording;
  drawEverywhere(view, recording);
  EXPECT_EQ(recording.items().empty(), (std::is_same_v<TypeParam, XOVView>)) << "only the base draws nothing";
}

TYPED_TEST(Inventory, isDrawnWithData) {
  TypeParam empty(kFrame);
  TypeParam view(kFrame);
  fill(view);
  RecordingContext nothing;
  RecordingContext recording;
  const QImage blank = drawEverywhere(empty, nothing);
  const QImage picture = drawEverywhere(view, recording);
  constexpr bool kDrawsNoData = std::is_same_v<TypeParam, XOVView> || std::is_same_v<TypeParam, spectrumView>;
  EXPECT_EQ(picture == blank, kDrawsNoData);
  EXPECT_EQ(recording.items().size() == nothing.items().size(), kDrawsNoData);
}

TEST(ChartViewInventory, isMadeAndDrawsNothing) {
  XOVChartView view;
  view.resize(40, 30);
  EXPECT_TRUE(view.pRect().isEmpty());
  EXPECT_FALSE(view.grab().toImage().isNull());
}

} // namespace
} // namespace xov
