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

#include <ostream>
#include <vector>

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

/// A class of view, for tests that need it as any view only: they are compiled once.
struct ViewClass {
  const QMetaObject* type;
  View* (*make)(QWidget* parent);
  View* (*makeIn)(const QRectF& frame, QWidget* parent);
  bool isPlot; ///< derives from XOVView
};

inline void PrintTo(const ViewClass& one, std::ostream* out) { *out << one.type->className(); }

template <typename ViewType>
ViewClass viewClass() {
  return {&ViewType::staticMetaObject, [](QWidget* parent) -> View* { return new ViewType(parent); },
          [](const QRectF& frame, QWidget* parent) -> View* { return new ViewType(frame, parent); },
          std::is_base_of_v<XOVView, ViewType>};
}

template <typename... Views>
std::vector<ViewClass> viewClasses(::testing::Types<Views...>) {
  return {viewClass<Views>()...};
}

/// What INSTANTIATE_TEST_SUITE_P() calls a class of view: its name without the namespace.
inline std::string viewClassName(const ::testing::TestParamInfo<ViewClass>& info) {
  return std::string(info.param.type->className()).substr(std::string("xov::").size());
}

} // namespace xov::testing
