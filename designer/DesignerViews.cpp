#include "designer/DesignerViews.h"

#include <XOV_Graphics/views/image/NoiseStatisticsView.h>
#include <XOV_Graphics/views/image/SpectrogramView.h>
#include <XOV_Graphics/views/image/XOVImageView.h>
#include <XOV_Graphics/views/image/xovFKImageView.h>
#include <XOV_Graphics/views/map/geoMapView.h>
#include <XOV_Graphics/views/seismic/FocalMechanismView.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <XOV_Graphics/views/seismic/ParticleMotionView.h>
#include <XOV_Graphics/views/seismic/SeisView01.h>
#include <XOV_Graphics/views/seismic/SeisView02.h>
#include <XOV_Graphics/views/seismic/ThreeCompView.h>
#include <XOV_Graphics/views/seismic/uniformTimeSeriesView.h>
#include <XOV_Graphics/views/seismic/wvfrmView.h>
#include <XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <XOV_Graphics/views/timeline/realTimeDisplayView01.h>
#include <XOV_Graphics/views/xy/PowerSpectraView.h>
#include <XOV_Graphics/views/xy/XOV2DScatterPlotView.h>
#include <XOV_Graphics/views/xy/XOVChartView.h>
#include <XOV_Graphics/views/xy/XOVHistogramView.h>
#include <XOV_Graphics/views/xy/spectrumView.h>
#include <XOV_Graphics/views/xy/xyPlotView.h>
#include <XOV_Graphics/views/xy/xyScatterPlot.h>

namespace xov::designer {

namespace {

template <typename ViewType>
QWidget* make(QWidget* parent) {
  return new ViewType(parent);
}

const DesignerView kViews[] = {
    {"xyPlotView", "XOV_Graphics/views/xy/xyPlotView.h", Motif::Line, make<xyPlotView>},
    {"xyScatterPlot", "XOV_Graphics/views/xy/xyScatterPlot.h", Motif::Points, make<xyScatterPlot>},
    {"XOV2DScatterPlotView", "XOV_Graphics/views/xy/XOV2DScatterPlotView.h", Motif::Circles,
     make<XOV2DScatterPlotView>},
    {"spectrumView", "XOV_Graphics/views/xy/spectrumView.h", Motif::Peaks, make<spectrumView>},
    {"XOVHistogramView", "XOV_Graphics/views/xy/XOVHistogramView.h", Motif::Bars, make<XOVHistogramView>},
    {"XOVChartView", "XOV_Graphics/views/xy/XOVChartView.h", Motif::Columns, make<XOVChartView>},
    {"MultiSeisView", "XOV_Graphics/views/seismic/MultiSeisView.h", Motif::Section, make<MultiSeisView>},
    {"SeisView01", "XOV_Graphics/views/seismic/SeisView01.h", Motif::Overlay, make<SeisView01>},
    {"SeisView02", "XOV_Graphics/views/seismic/SeisView02.h", Motif::Bands, make<SeisView02>},
    {"wvfrmView", "XOV_Graphics/views/seismic/wvfrmView.h", Motif::Pairs, make<wvfrmView>},
    {"ThreeCompView", "XOV_Graphics/views/seismic/ThreeCompView.h", Motif::Components, make<ThreeCompView>},
    {"uniformTimeSeriesView", "XOV_Graphics/views/seismic/uniformTimeSeriesView.h", Motif::Series,
     make<uniformTimeSeriesView>},
    {"helicorderView", "XOV_Graphics/views/timeline/helicorderView.h", Motif::Drum, make<helicorderView>},
    {"realTimeDisplayView01", "XOV_Graphics/views/timeline/realTimeDisplayView01.h", Motif::LiveLong,
     make<realTimeDisplayView01>},
    {"XOVRealTimeDisplayView02", "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h", Motif::LiveShort,
     make<XOVRealTimeDisplayView02>},
    {"XOVImageView", "XOV_Graphics/views/image/XOVImageView.h", Motif::Cells, make<XOVImageView>},
    {"xovFKImageView", "XOV_Graphics/views/image/xovFKImageView.h", Motif::Slowness, make<xovFKImageView>},
    {"SpectrogramView", "XOV_Graphics/views/image/SpectrogramView.h", Motif::Spectrogram, make<SpectrogramView>},
    {"NoiseStatisticsView", "XOV_Graphics/views/image/NoiseStatisticsView.h", Motif::Noise,
     make<NoiseStatisticsView>},
    {"PowerSpectraView", "XOV_Graphics/views/xy/PowerSpectraView.h", Motif::Spectra, make<PowerSpectraView>},
    {"geoMapView", "XOV_Graphics/views/map/geoMapView.h", Motif::Globe, make<geoMapView>},
    {"FocalMechanismView", "XOV_Graphics/views/seismic/FocalMechanismView.h", Motif::BeachBall,
     make<FocalMechanismView>},
    {"ParticleMotionView", "XOV_Graphics/views/seismic/ParticleMotionView.h", Motif::Orbit, make<ParticleMotionView>},
};

} // namespace

std::span<const DesignerView> designerViews() { return kViews; }

} // namespace xov::designer
