#include "XOV_Graphics/views/seismic/SectionLayout.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/graphics/AxisCodes.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/arrivals/EarthModel.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

using Placement = MultiSeisView::StripPlacement;

constexpr double kLargestSlots = 6;    // that a plot has room for
constexpr double kLeastMargin = 8;     // points beyond the outermost zero lines
constexpr double kLargestMargin = 0.1; // of the plot
constexpr double kFullCircle = 360;

struct Place {
  std::size_t record;
  double value;
};

std::vector<Place> placesOf(const SeismogramArray& records, Placement placement) {
  std::vector<Place> places;
  if (placement == Placement::Evenly) return places;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (const auto value = records[i] ? placeOf(*records[i], placement) : std::nullopt) places.push_back({i, *value});
  }
  return places;
}

SectionLayout evenly(std::size_t count, const QRectF& plot) {
  SectionLayout layout;
  const auto n = double(count);
  layout.slot = plot.height() / n;
  double center = plot.y() + plot.height() / (2 * n);
  for (std::size_t i = 0; i < count; ++i) {
    layout.strips.push_back({i, center});
    center += layout.slot;
  }
  return layout;
}

} // namespace

std::optional<double> placeOf(const SeismogramRecord& record, Placement placement) {
  const bool isAzimuth = placement == Placement::ByAzimuth;
  const auto degrees = double(isAzimuth ? record.azimuth() : record.gcarc());
  if (placement == Placement::Evenly || !isDefined(degrees) || !std::isfinite(degrees)) return {};
  if (placement == Placement::ByDistanceKm) return degrees * kKmPerDegree;
  return isAzimuth ? degrees - std::floor(degrees / kFullCircle) * kFullCircle : degrees;
}

bool anyHasPlace(const SeismogramArray& records, Placement placement) {
  return placement != Placement::Evenly && std::ranges::any_of(records, [&](const auto& record) {
           return record && placeOf(*record, placement).has_value();
         });
}

SectionLayout layoutSection(const SeismogramArray& records, Placement placement, const QRectF& plot, double reach) {
  const std::vector<Place> places = placesOf(records, placement);
  if (places.empty()) return evenly(records.size(), plot);
  const auto [nearest, farthest] = std::ranges::minmax_element(places, {}, &Place::value);
  SectionLayout layout;
  layout.hasAxis = true;
  layout.slot = std::min(std::max(plot.height() / double(places.size()), kLeastSlot), plot.height() / kLargestSlots);
  const double range = farthest->value - nearest->value;
  const double margin = std::clamp(std::isfinite(reach) ? reach * layout.slot : 0.0, kLeastMargin,
                                   std::max(kLargestMargin * plot.height(), kLeastMargin));
  const double room = plot.height() - 2 * margin;
  const double beyond = range > 0 && room > 0 ? margin * range / room : 1;
  layout.lower = toSinglePrecision(nearest->value - beyond);
  layout.upper = toSinglePrecision(farthest->value + beyond);
  if (!std::isfinite(layout.lower) || !std::isfinite(layout.upper) || !(layout.lower < layout.upper))
    return evenly(records.size(), plot);
  const double scale = plot.height() / (double(layout.upper) - double(layout.lower));
  for (const Place& place : places)
    layout.strips.push_back({place.record, plot.y() + (place.value - double(layout.lower)) * scale});
  return layout;
}

void showPlaces(SectionLayout& layout, const QRectF& plot, const PlotSpan& places) {
  if (!(places.width() > 0) || !(plot.height() > 0)) return;
  const double valuesPerPoint = (double(layout.upper) - double(layout.lower)) / plot.height();
  for (SectionLayout::Strip& strip : layout.strips) {
    const double value = double(layout.lower) + (strip.center - plot.y()) * valuesPerPoint;
    strip.center = plot.y() + (value - places.lower) / places.width() * plot.height();
  }
  std::erase_if(layout.strips, [&](const SectionLayout::Strip& strip) {
    return !(strip.center >= plot.y() && strip.center <= plot.y() + plot.height());
  });
  layout.lower = toSinglePrecision(places.lower);
  layout.upper = toSinglePrecision(places.upper);
}

QString sectionAxisTitle(Placement placement) {
  switch (placement) {
  case Placement::ByDistanceDegrees:
    return QStringLiteral("Distance (degrees)");
  case Placement::ByDistanceKm:
    return QStringLiteral("Distance (km)");
  case Placement::ByAzimuth:
    return QStringLiteral("Azimuth (degrees)");
  case Placement::Evenly:
    break;
  }
  return {};
}

float sectionTickInterval(Placement placement, float lower, float upper) {
  if (placement != Placement::ByAzimuth) return kAutomaticInterval;
  constexpr float kMostTicks = 9;
  const float range = upper - lower;
  for (const float interval : {10.0F, 15.0F, 30.0F, 45.0F})
    if (range > 3 * interval && range <= kMostTicks * interval) return interval;
  return kAutomaticInterval;
}

} // namespace xov
