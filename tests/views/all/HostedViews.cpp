#include "tests/views/all/HostedViews.h"

#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/SampledSignal.h"
#include "XOV_Graphics/seismic/StationObservation.h"
#include "XOV_Graphics/views/image/NoiseStatisticsView.h"
#include "XOV_Graphics/views/image/SpectrogramView.h"
#include "XOV_Graphics/views/image/xovFKImageView.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "XOV_Graphics/views/seismic/FocalMechanismView.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/ParticleMotionView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/ThreeCompView.h"
#include "XOV_Graphics/views/seismic/uniformTimeSeriesView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"
#include "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "XOV_Graphics/views/xy/PowerSpectraView.h"
#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"
#include "XOV_Graphics/views/xy/XOVHistogramView.h"
#include "XOV_Graphics/views/xy/spectrumView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"
#include "XOV_Graphics/views/xy/xyScatterPlot.h"
#include "tests/views/all/RandomMaps.h"

#include <algorithm>
#include <cmath>

namespace xov::testing {

namespace {

template <typename ViewType>
HostedView dressed(RandomHost& host) {
  auto view = std::make_unique<ViewType>(host.frame());
  host.dress(*view);
  return {std::move(view), {}};
}

template <typename ViewType>
HostedView xyView(RandomHost& host) {
  HostedView hosted = dressed<ViewType>(host);
  auto& view = static_cast<ViewType&>(*hosted.view);
  const std::vector<float> x = host.samples(3000);
  const std::vector<float> y = host.samples(3000);
  view.setDataPointersXY(x, y);
  view.setNpts(host.chance(0.7) ? int(std::min(x.size(), y.size())) : host.count(100000) - 10);
  view.setLogX(host.chance(0.3));
  view.setLogY(host.chance(0.3));
  if (host.chance(0.7)) view.computePlotLimits();
  return hosted;
}

HostedView scatterView(RandomHost& host) {
  HostedView hosted = dressed<XOV2DScatterPlotView>(host);
  auto& view = static_cast<XOV2DScatterPlotView&>(*hosted.view);
  if (host.chance(0.9)) {
    const auto x = std::make_shared<std::vector<float>>(host.samples(3000));
    const auto y = std::make_shared<std::vector<float>>(host.samples(3000));
    view.setXpYpNpts(x, y, host.count(4000));
  }
  view.setLogX(host.chance(0.3));
  view.setLogY(host.chance(0.3));
  view.setSymbolDiameter(host.chance(0.7) ? 12 : host.number());
  if (host.chance(0.7)) view.computePlotLimits();
  return hosted;
}

HostedView histogramView(RandomHost& host) {
  HostedView hosted = dressed<XOVHistogramView>(host);
  auto& view = static_cast<XOVHistogramView&>(*hosted.view);
  const std::vector<float> values = host.samples(3000);
  view.setValuesNPts(values.data(), int(values.size()));
  view.setLogX(host.chance(0.3));
  view.setLogY(host.chance(0.3));
  view.setNBinsMinMax(host.chance(0.9) ? host.count(200) - 5 : 2000000000, host.number(), host.number());
  view.binValues();
  return hosted;
}

template <typename ViewType>
HostedView stackedView(RandomHost& host) {
  HostedView hosted = dressed<ViewType>(host);
  const auto records = host.records();
  static_cast<ViewType&>(*hosted.view).setWvfrmsArray(records);
  // Some hosts let go before the view is drawn.
  if (host.chance(0.9)) hosted.data = records;
  return hosted;
}

HostedView multiSeisView(RandomHost& host) {
  HostedView hosted = stackedView<MultiSeisView>(host);
  auto& view = static_cast<MultiSeisView&>(*hosted.view);
  view.setShowZeroLine(host.chance(0.5));
  if (host.chance(0.3)) view.setPlotGainFactor(host.number());
  return hosted;
}

HostedView seisView01(RandomHost& host) {
  HostedView hosted = stackedView<SeisView01>(host);
  static_cast<SeisView01&>(*hosted.view).setFillPositive(host.chance(0.5));
  return hosted;
}

HostedView seisView02(RandomHost& host) {
  HostedView hosted = stackedView<SeisView02>(host);
  static_cast<SeisView02&>(*hosted.view).setplotStyle(host.count(3));
  return hosted;
}

HostedView waveformView(RandomHost& host) {
  HostedView hosted = dressed<wvfrmView>(host);
  auto& view = static_cast<wvfrmView&>(*hosted.view);
  const auto records = host.records();
  view.setWvfrmArray(records);
  if (host.chance(0.5)) view.setMaxAmplitude(host.number());
  if (host.chance(0.9)) hosted.data = records;
  return hosted;
}

HostedView threeCompView(RandomHost& host) {
  HostedView hosted = dressed<ThreeCompView>(host);
  auto& view = static_cast<ThreeCompView&>(*hosted.view);
  const auto observation = std::make_shared<StationObservation>(host.record(), host.record(), host.record());
  view.setObservation(observation);
  view.setSelfScaled(host.chance(0.5));
  view.setShowMaxAmplitude(host.chance(0.5));
  view.setOpComparison(host.chance(0.3));
  if (host.chance(0.9)) hosted.data = observation;
  return hosted;
}

HostedView uniformView(RandomHost& host) {
  HostedView hosted = dressed<uniformTimeSeriesView>(host);
  auto series = std::make_shared<UniformSignalArray>();
  for (int n = host.count(4); n > 0; --n) {
    series->push_back(std::make_shared<SampledSignal>(host.samples(3000), host.number(), QStringLiteral("signal")));
  }
  static_cast<uniformTimeSeriesView&>(*hosted.view).setWvfrmArray(series);
  return hosted;
}

HostedView mapView(RandomHost& host) {
  HostedView hosted = dressed<geoMapView>(host);
  auto& view = static_cast<geoMapView&>(*hosted.view);
  if (host.chance(0.7)) {
    view.setXLimitsMinMax(float(host.count(360) - 180), float(host.count(360)));
    view.setYLimitsMinMax(float(-host.count(90)), float(host.count(90)));
  }
  if (host.chance(0.7)) {
    view.setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(host.samples(3000)), host.count(50) - 2,
                                  host.count(60) - 2);
  }
  view.buildGrayScaleColorsNLevels(host.count(30) - 2);
  view.setVAlignPlot(host.count(4) - 1);
  view.setShowPlates(host.chance(0.7));
  view.setShowAxes(host.chance(0.8));
  view.setHideImage(host.chance(0.2));
  addFeatures(host, view);
  if (host.chance(0.5)) addMargins(host, view);
  return hosted;
}

HostedView mechanismView(RandomHost& host) {
  HostedView hosted = dressed<FocalMechanismView>(host);
  auto& view = static_cast<FocalMechanismView&>(*hosted.view);
  std::vector<CaptionedMechanism> mechanisms;
  for (int n = host.count(host.chance(0.5) ? 1 : 300); n > 0; --n) {
    CaptionedMechanism captioned;
    if (host.chance(0.7)) {
      const auto element = [&] { return double(host.number()); };
      captioned.mechanism.tensor = {element(), element(), element(), element(), element(), element()};
    }
    for (NodalPlane& plane : captioned.mechanism.planes)
      plane = {host.number(), host.number(), host.number()};
    if (host.chance(0.5)) captioned.caption = QString(host.count(40), QLatin1Char('c'));
    mechanisms.push_back(std::move(captioned));
  }
  view.setMechanisms(std::move(mechanisms));
  view.setShowPrincipalAxes(host.chance(0.7));
  view.setShowNodalPlanes(host.chance(0.7));
  view.setShowDetails(host.chance(0.7));
  return hosted;
}

HostedView motionView(RandomHost& host) {
  HostedView hosted = dressed<ParticleMotionView>(host);
  auto& view = static_cast<ParticleMotionView&>(*hosted.view);
  ParticleMotion motion;
  for (std::size_t k = 0; k < motion.samples.size(); ++k) {
    if (host.chance(0.9)) motion.samples[k] = std::make_shared<const std::vector<float>>(host.samples(3000));
    motion.names[k] = QString(host.count(4), QLatin1Char('Z'));
  }
  motion.firstAzimuthDeg = double(host.number());
  view.setMotion(motion);
  view.setShowPolarization(host.chance(0.7));
  return hosted;
}

// Some of them near a record's reference time, some at no time at all.
std::shared_ptr<EventOriginArray> events(RandomHost& host) {
  auto events = std::make_shared<EventOriginArray>();
  for (int n = host.count(6); n > 0; --n) {
    HypocentreValues values;
    if (host.chance(0.9)) values.originTime = host.time();
    values.Mw = float(host.count(9));
    values.mb = host.number();
    values.preferredMagnitude = host.chance(0.5) ? host.number() : float(host.count(9));
    events->push_back(host.chance(0.9) ? std::make_shared<Hypocentre>(values) : nullptr);
  }
  return events;
}

using PageData = std::pair<std::shared_ptr<SeismogramArray>, std::shared_ptr<EventOriginArray>>;

HostedView drumView(RandomHost& host) {
  HostedView hosted = dressed<helicorderView>(host);
  auto& view = static_cast<helicorderView&>(*hosted.view);
  const PageData page(host.records(), events(host));
  view.setWvfrmArray(page.first);
  view.setTheHypoArray(page.second);
  view.setNRows(host.chance(0.7) ? host.count(30) : host.count(2000000000) - 1000000000);
  view.setRowDuration(host.chance(0.7) ? float(1 + host.count(100)) : host.number());
  view.setGainFactor(host.chance(0.7) ? 8 : host.number());
  view.setMagThreshold(host.chance(0.7) ? 4 : host.number());
  view.setShowZeroLines(host.chance(0.5));
  view.setLabelHours(host.chance(0.5));
  if (host.chance(0.9)) hosted.data = page;
  return hosted;
}

template <typename ViewType>
HostedView liveView(RandomHost& host) {
  HostedView hosted = dressed<ViewType>(host);
  auto& view = static_cast<ViewType&>(*hosted.view);
  const PageData display(host.records(), events(host));
  view.setWvfrmsArray(display.first);
  view.setEventOrigins(display.second);
  view.setDrawOriginTimes(host.chance(0.7));
  view.setOriginOnRight(host.chance(0.5));
  if (host.chance(0.9)) view.setRefDate(host.time());
  if (host.chance(0.3)) view.setWaveformGain(host.number());
  if (host.chance(0.5)) view.computePlotLimits();
  if (host.chance(0.9)) hosted.data = display;
  return hosted;
}

HostedView spectrogramView(RandomHost& host) {
  HostedView hosted = dressed<SpectrogramView>(host);
  auto& view = static_cast<SpectrogramView&>(*hosted.view);
  view.setRecords(host.chance(0.9) ? host.records() : nullptr);
  view.setWindowSeconds(host.chance(0.7) ? 0 : double(host.number()));
  view.setOverlap(host.chance(0.7) ? 0.5 : double(host.number()));
  view.setLogFrequency(host.chance(0.5));
  if (host.chance(0.3)) view.setLowestHz(double(host.number()));
  if (host.chance(0.3)) view.setHighestHz(double(host.number()));
  if (host.chance(0.3)) view.setLowestDecibel(double(host.number()));
  if (host.chance(0.3)) view.setHighestDecibel(double(host.number()));
  view.setDecibelOffset(host.chance(0.7) ? 0 : double(host.number()));
  view.setShowSeismogram(host.chance(0.7));
  if (host.chance(0.5)) view.setTimeReference(host.time());
  return hosted;
}

HostedView noiseView(RandomHost& host) {
  HostedView hosted = dressed<NoiseStatisticsView>(host);
  auto& view = static_cast<NoiseStatisticsView&>(*hosted.view);
  NoiseStatistics statistics;
  const std::size_t periods = std::size_t(host.count(20));
  for (std::size_t i = 0; i < periods; ++i)
    statistics.periods.push_back(host.chance(0.8) ? std::exp2(double(i) / 8) : double(host.number()));
  statistics.segments = std::size_t(host.count(10));
  for (std::size_t i = 0; i < periods * statistics.segments; ++i)
    statistics.decibels.push_back(host.chance(0.8) ? float(-host.count(200)) : host.number());
  view.setShowNoiseModels(host.chance(0.5));
  view.setStatistics(host.chance(0.9) ? std::make_shared<const NoiseStatistics>(statistics) : nullptr);
  return hosted;
}

HostedView spectraView(RandomHost& host) {
  HostedView hosted = dressed<PowerSpectraView>(host);
  auto& view = static_cast<PowerSpectraView&>(*hosted.view);
  const auto curves = std::make_shared<SpectrumCurves>();
  for (int n = host.count(host.chance(0.9) ? 5 : 100); n > 0; --n)
    curves->push_back({QString(host.count(20), QLatin1Char('n')), host.samples(300), host.samples(300), {}});
  view.setCurves(host.chance(0.9) ? curves : nullptr);
  view.setLogX(host.chance(0.7));
  view.setLogY(host.chance(0.5));
  view.setShowNoiseModels(host.chance(0.5));
  view.setShowLegend(host.chance(0.8));
  return hosted;
}

// A grid that the limits fit or not, with as many values as it needs or others.
template <typename ViewType>
HostedView imageView(RandomHost& host) {
  HostedView hosted = dressed<ViewType>(host);
  auto& view = static_cast<ViewType&>(*hosted.view);
  view.setPalette(host.count(8) - 2);
  view.setNShades(host.chance(0.7) ? host.count(100) : host.count(4) - 2);
  view.setInverted(host.chance(0.3));
  view.setUseTopoValues(host.chance(0.5));
  const auto values = std::make_shared<const std::vector<float>>(host.samples(3000));
  const int rows = host.chance(0.8) ? host.count(60) : 2000000000;
  const int cols = host.chance(0.8) ? host.count(60) : host.count(2000000000) - 10;
  view.setShowAxes(rows <= 0 || cols <= 0 || host.chance(0.8)); // else there is nothing to draw
  view.setupImageDataNROWSNCOLS(values, rows, cols);
  if (host.chance(0.3)) view.setMinMax(host.number(), host.number());
  if (host.chance(0.3)) view.setScaleFactor(host.number());
  if (host.chance(0.5)) view.updateImagePlanes();
  if (host.chance(0.5)) view.setXLimitsMinMax(host.number(), host.number());
  if (host.chance(0.5)) view.setYLimitsMinMax(host.number(), host.number());
  if (host.chance(0.1)) view.setAnImage(QImage(3, 2, QImage::Format_RGB32));
  return hosted;
}

constexpr ViewMaker kMakers[] = {
    {"xyPlotView", xyView<xyPlotView>},
    {"xyScatterPlot", xyView<xyScatterPlot>},
    {"XOV2DScatterPlotView", scatterView},
    {"XOVHistogramView", histogramView},
    {"spectrumView", dressed<spectrumView>},
    {"MultiSeisView", multiSeisView},
    {"SeisView01", seisView01},
    {"SeisView02", seisView02},
    {"wvfrmView", waveformView},
    {"ThreeCompView", threeCompView},
    {"uniformTimeSeriesView", uniformView},
    {"geoMapView", mapView},
    {"FocalMechanismView", mechanismView},
    {"ParticleMotionView", motionView},
    {"helicorderView", drumView},
    {"realTimeDisplayView01", liveView<realTimeDisplayView01>},
    {"XOVRealTimeDisplayView02", liveView<XOVRealTimeDisplayView02>},
    {"XOVImageView", imageView<XOVImageView>},
    {"SpectrogramView", spectrogramView},
    {"NoiseStatisticsView", noiseView},
    {"PowerSpectraView", spectraView},
    {"xovFKImageView", imageView<xovFKImageView>},
};

} // namespace

std::span<const ViewMaker> viewMakers() { return kMakers; }

void askOfKind(const XOVView& view, const QRectF& box, RandomHost& host) {
  if (const auto* const traces = qobject_cast<const SeismogramView*>(&view)) {
    traces->recordsIn(box);
    traces->timesIn(box);
  }
  if (const auto* const section = qobject_cast<const MultiSeisView*>(&view))
    section->apparentVelocity(box.topLeft(), box.bottomRight());
  if (const auto* const drum = qobject_cast<const helicorderView*>(&view))
    drum->stretchAt(box.topLeft(), double(host.number()));
  if (const auto* const map = qobject_cast<const geoMapView*>(&view)) {
    map->pointAt(box.topLeft());
    map->pointsIn(box);
    map->mechanismsIn(box);
    map->mapBoxOf(box);
  }
}

} // namespace xov::testing
