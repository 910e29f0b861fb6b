// Every class of view, for tests that go through all of them.
#pragma once

#include "XOV_Graphics/views/image/NoiseStatisticsView.h"
#include "XOV_Graphics/views/image/SpectrogramView.h"
#include "XOV_Graphics/views/image/XOVImageView.h"
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
#include "XOV_Graphics/views/xy/XOVChartView.h"
#include "XOV_Graphics/views/xy/XOVHistogramView.h"
#include "XOV_Graphics/views/xy/spectrumView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"
#include "XOV_Graphics/views/xy/xyScatterPlot.h"

#include <gtest/gtest.h>

namespace xov::testing {

/// Those that derive from XOVView, which comes first.
using PlotViews =
    ::testing::Types<XOVView, xyPlotView, xyScatterPlot, XOV2DScatterPlotView, spectrumView, XOVHistogramView,
                     MultiSeisView, SeisView01, SeisView02, wvfrmView, ThreeCompView, uniformTimeSeriesView,
                     helicorderView, realTimeDisplayView01, XOVRealTimeDisplayView02, XOVImageView, xovFKImageView,
                     SpectrogramView, NoiseStatisticsView, PowerSpectraView, geoMapView, FocalMechanismView,
                     ParticleMotionView>;
/// Those that a host may make.
using AllViews =
    ::testing::Types<XOVChartView, XOVView, xyPlotView, xyScatterPlot, XOV2DScatterPlotView, spectrumView,
                     XOVHistogramView, MultiSeisView, SeisView01, SeisView02, wvfrmView, ThreeCompView,
                     uniformTimeSeriesView, helicorderView, realTimeDisplayView01, XOVRealTimeDisplayView02,
                     XOVImageView, xovFKImageView, SpectrogramView, NoiseStatisticsView, PowerSpectraView, geoMapView,
                     FocalMechanismView, ParticleMotionView>;

} // namespace xov::testing
