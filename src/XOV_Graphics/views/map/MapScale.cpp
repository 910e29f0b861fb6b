#include "XOV_Graphics/views/map/MapScale.h"

#include "XOV_Graphics/views/map/DegreeLabels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kEquatorialRadiusKm = 6378.137;
constexpr double kEccentricitySquared = 0.00669437999014;
constexpr double kRadiansPerDegree = std::numbers::pi / 180;
constexpr double kLargestShare = 0.25; // of the map's width
constexpr double kShortest = 1e-6;     // km
constexpr double kLongest = 1e5;
constexpr double kMetresPerKilometre = 1000;
constexpr double kLargestDifference = 0.1; // of a kilometre's length, that goes without a word

QString lengthText(double kilometres) {
  return kilometres < 1 ? QStringLiteral("%1 m").arg(kilometres * kMetresPerKilometre)
                        : QStringLiteral("%1 km").arg(kilometres);
}

// Whether a kilometre at one of the edges is longer or shorter than in the middle by more than that.
bool differsAtEdges(const PlotLimits& limits, double middleDeg) {
  const double middle = std::cos(middleDeg * kRadiansPerDegree);
  return std::ranges::any_of(std::array{limits.ymin, limits.ymax}, [&](float edgeDeg) {
    return std::abs(std::cos(double(edgeDeg) * kRadiansPerDegree) / middle - 1) > kLargestDifference;
  });
}

} // namespace

double kilometresOfLongitudeDegree(double latitudeDeg) {
  const double sine = std::sin(latitudeDeg * kRadiansPerDegree);
  const double radius = kEquatorialRadiusKm / std::sqrt(1 - kEccentricitySquared * sine * sine);
  return radius * std::cos(latitudeDeg * kRadiansPerDegree) * kRadiansPerDegree;
}

std::optional<MapScaleBar> mapScaleBar(const QRectF& map, const PlotLimits& limits) {
  MapScaleBar bar;
  bar.latitudeDeg = (double(limits.ymin) + double(limits.ymax)) / 2;
  const double width = std::abs(map.width());
  const double kilometres =
      std::abs(double(limits.xmax) - double(limits.xmin)) * kilometresOfLongitudeDegree(bar.latitudeDeg);
  const double longest = kLargestShare * kilometres;
  if (!(width > 0) || !(longest >= kShortest && longest <= kLongest)) return {};
  const double unit = std::pow(10, std::floor(std::log10(longest)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * unit <= longest) bar.kilometres = factor * unit;
  }
  bar.length = width * bar.kilometres / kilometres;
  bar.text = lengthText(bar.kilometres);
  const bool isWhole = bar.latitudeDeg == std::round(bar.latitudeDeg);
  if (differsAtEdges(limits, bar.latitudeDeg))
    bar.text += QStringLiteral(" at ") + degreeText(Qt::YAxis, bar.latitudeDeg, isWhole ? 0 : 1);
  return bar;
}

} // namespace xov
