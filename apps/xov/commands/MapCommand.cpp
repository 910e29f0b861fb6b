#include "apps/xov/commands/MapCommand.h"

#include "apps/xov/inputs/Validators.h"

#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

// Around the map, as the view lays it out.
constexpr double kBesides = 96;
constexpr double kAboveAndBelow = 80;
constexpr double kWidth = 900;
constexpr double kSmallestWidth = 400;
constexpr double kLargestHeight = 700;
constexpr double kSmallestHeight = 240;
constexpr double kColorBarWidth = 88;
constexpr double kLegendHeight = 36;
constexpr float kWidestWithScaleBar = 90; // degrees of longitude: on wider maps a kilometre has no one length

struct Align {
  const char* name;
  std::int32_t code;
};
constexpr Align kAligns[] = {{"centre", 0}, {"top", 1}, {"bottom", 2}};

std::vector<std::string> alignNames() {
  std::vector<std::string> names;
  for (const Align& align : kAligns)
    names.emplace_back(align.name);
  return names;
}

std::int32_t alignCode(const std::string& name) {
  const auto* const found =
      std::find_if(std::begin(kAligns), std::end(kAligns), [&](const Align& align) { return name == align.name; });
  return found == std::end(kAligns) ? 0 : found->code;
}

} // namespace

QSizeF mapViewSize(double widthOverHeight, const QSizeF& margins) {
  const double height =
      std::clamp(std::round((kWidth - kBesides) / widthOverHeight + kAboveAndBelow), kSmallestHeight, kLargestHeight);
  const double width =
      std::clamp(std::round((height - kAboveAndBelow) * widthOverHeight + kBesides), kSmallestWidth, kWidth);
  return QSizeF(width, height) + margins;
}

void MapCommand::addOptions(const Options& options) {
  background_.addOptions(options);
  options.add("--region", edges_, "What to show, in degrees (default: the globe, 0 360 -90 90)")
      .typeName("W E S N")
      .check(numberFromTo(-kLargestLongitude, kLargestLongitude))
      .takesExactly(4);
  features_.addOptions(options);
  options.add("--align", align_, "Where a map stands that is lower than its place: centre, top or bottom")
      .typeName("PLACE")
      .check(oneOf(alignNames()));
  const Option topo = options.named("--topo");
  options.add("--color-bar", colorBar_, "Draw a bar of the colours of elevations, with this title; '' for none")
      .typeName("TITLE")
      .needs(topo);
  options.addFlag("--no-degree-signs", noDegreeSigns_, "Label the edges with numbers alone, without E, W, N and S");
  options.addFlag("--no-scale-bar", noScaleBar_, "Draw no bar of kilometres");
  options.addFlag("--no-legend", noLegend_, "Do not explain magnitudes, depths and plate boundaries below the map");
  output_.addOptions(options);
  options.afterParsing([this] { findRegion(); });
}

void MapCommand::findRegion() {
  region_ = background_.region();
  std::string problem;
  if (edges_) {
    const std::optional<MapRegion> region = MapRegion::fromEdges(*edges_, problem);
    if (!region) throw UsageError("--region", problem);
    region_ = *region;
  }
  background_.checkRegion(region_);
  output_.setDefaultSize(
      mapViewSize(region_.widthOverHeight(), {colorBar_ ? kColorBarWidth : 0, hasLegend() ? kLegendHeight : 0}));
}

void MapCommand::showMargins(geoMapView& view, MapLegend legend) const {
  const PlotLimits& limits = region_.limits();
  view.setShowDegreeSigns(!noDegreeSigns_);
  view.setShowScaleBar(!noScaleBar_ && limits.xmax - limits.xmin <= kWidestWithScaleBar);
  if (hasLegend()) view.setLegend(std::move(legend));
  view.setShowColorBar(colorBar_.has_value());
  view.setColorBarTitle(QString::fromStdString(colorBar_.value_or("")));
}

ExitCode MapCommand::run() {
  bool all = true;
  const ExitCode delivered = output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<geoMapView>(frame);
    all = background_.show(*view, region_);
    MapLegend legend;
    all = features_.show(*view, region_, legend) && all;
    showMargins(*view, std::move(legend));
    view->setVAlignPlot(alignCode(align_));
    view->setTitle(output_.titleOr(features_.title()));
    return view;
  });
  return all ? delivered : ExitCode::Failed;
}

} // namespace xov::cli
