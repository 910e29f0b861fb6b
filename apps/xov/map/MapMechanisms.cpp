#include "apps/xov/map/MapMechanisms.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/map/MapEvents.h"

#include <XOV_Graphics/platform/Colors.h>
#include <XOV_Graphics/seismic/Undefined.h>
#include <XOV_Graphics/seismic/mechanism/SourceGeometry.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr char kDepth[] = "depth";
constexpr double kSmallestDiameter = 2; // points
constexpr double kLargestDiameter = 400;
constexpr double kRadiusOfSize1 = 12; // of a circle of the view
constexpr double kCirclesWide = 2;
constexpr double kSmallestRadius = 4;

std::string checkColor(const std::string& name) {
  if (name == kDepth || QColor::isValidColor(QString::fromStdString(name))) return {};
  return "found '" + name + "', expected depth, or a colour such as red or #c02020";
}

} // namespace

void MapMechanisms::addOptions(const Options& options, Option events) {
  Option wanted =
      options.addFlag("--mechanisms", wanted_, "Draw beach balls for the earthquakes whose mechanism the file tells")
          .needs(events);
  options.add("--mechanism-size", diameter_, "Their diameter in points (default: by magnitude)")
      .typeName("D")
      .check(numberFromTo(kSmallestDiameter, kLargestDiameter))
      .needs(wanted);
  options.add("--mechanism-color", color_, "Colour of compressional first motions: depth (default), or a colour")
      .typeName("COLOR")
      .check(Check{checkColor, {}})
      .needs(wanted);
  options.addFlag("--mechanisms-in-place", inPlace_, "Leave beach balls that overlap where they are").needs(wanted);
}

double MapMechanisms::radius(float magnitude) const {
  if (diameter_) return *diameter_ / 2;
  return std::max(kCirclesWide * kRadiusOfSize1 * double(magnitudeSymbolSize(magnitude)), kSmallestRadius);
}

HypocentreArray MapMechanisms::take(const HypocentreArray& events, geoMapView& view, const MapRegion& region,
                                    bool redFirst) const {
  const MapColorArray& colors = *view.theColors();
  HypocentreArray left;
  MapMechanismArray balls;
  for (const std::shared_ptr<Hypocentre>& event : events) {
    const HypocentreValues& values = event->values();
    const std::optional<MomentTensor> tensor =
        values.mechanism ? radiatingTensorOf(*values.mechanism) : std::optional<MomentTensor>();
    if (!tensor || !hasPlace(*event)) {
      left.push_back(event);
      continue;
    }
    MapMechanism ball;
    ball.latitudeDeg = values.latitudeDeg;
    ball.longitudeDeg = region.symbolLongitude(values.longitudeDeg);
    ball.tensor = *tensor;
    ball.radius = radius(event->magnitude());
    const int ofDepth = depthColorIndex(values.depthKm, colors.size(), redFirst);
    if (!color_.empty() && color_ != kDepth) {
      ball.color = QColor(QString::fromStdString(color_));
    } else {
      ball.color = ofDepth < 0 ? colors::darkGray : colors[std::size_t(ofDepth)];
    }
    balls.push_back(ball);
  }
  std::stable_sort(balls.begin(), balls.end(),
                   [](const MapMechanism& a, const MapMechanism& b) { return a.radius > b.radius; });
  view.setMechanisms(std::move(balls));
  view.setMovesMechanismsApart(!inPlace_);
  return left;
}

} // namespace xov::cli
