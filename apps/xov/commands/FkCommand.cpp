#include "apps/xov/commands/FkCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/inputs/ValueRange.h"
#include "apps/xov/output/TitledView.h"
#include "apps/xov/terminal/Progress.h"

#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/grid/GridCell.h>
#include <XOV_Graphics/grid/XyzGrid.h>
#include <XOV_Graphics/platform/TextAttributes.h>
#include <XOV_Graphics/seismic/array/RecordArray.h>
#include <XOV_Graphics/views/image/xovFKImageView.h>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov::cli {

namespace {

constexpr double kMostSlowness = 100; // s/km
constexpr double kMostHz = 1e6;
constexpr double kLowestDb = -300;
constexpr double kHighestFloorDb = -0.1;
constexpr double kMostSeconds = 1e9;
constexpr std::size_t kSamplesToUse = 4096; // unless the user names a window: the strongest ones of longer recordings
constexpr float kTitleSize = 13;            // what fits above the view's data frame
constexpr double kTitleSideGap = 6;         // points
constexpr double kDegreesPerRadian = 180 / std::numbers::pi;

// Surface waves and body waves alike: 0.333, 7.07 and 12.5.
QString threeDigits(double number) {
  const int decimals = 2 - int(std::floor(std::log10(number)));
  return QString::number(number, 'f', std::clamp(decimals, 0, 6));
}

// What was done to the recordings is told in the title's line, since there is no room for another one.
float sizeOfTitle(const QString& title, double viewWidth) {
  const double width = TextAttributes::helvetica(double(kTitleSize)).size(title).width();
  const double room = viewWidth - 2 * kTitleSideGap;
  return width > room && room > 0 ? float(double(kTitleSize) * room / width) : kTitleSize;
}

Grid gridOf(const BeamPower& beam) {
  Grid grid;
  grid.rows = beam.steps;
  grid.columns = beam.steps;
  grid.values = beam.power;
  grid.xmin = grid.ymin = -beam.slownessLimit;
  grid.xmax = grid.ymax = beam.slownessLimit;
  return grid;
}

/// Where the largest power lies.
struct BeamPeak {
  double east = 0; // s/km
  double north = 0;
  double power = 0;
  bool isOnEdge = false; // of the grid, so that a larger one may lie beyond
};

BeamPeak peakOf(const BeamPower& beam) {
  const GridCell cell = largestCell(beam.power, beam.steps).value_or(GridCell());
  return {beam.slowness(cell.column), beam.slowness(beam.steps - 1 - cell.row),
          double(beam.power[std::size_t(cell.row) * std::size_t(beam.steps) + std::size_t(cell.column)]),
          cell.isOnEdge(beam.steps, beam.steps)};
}

QString bandText(const BeamPower& beam, const QString& between) {
  return QStringLiteral("%1%2%3 Hz").arg(beam.lowestHz, 0, 'g', 3).arg(between).arg(beam.highestHz, 0, 'g', 3);
}

// The back azimuth, apparent velocity and power of the largest power, and the frequencies, in one line, which says
// when it lies on the edge of the grid.
QString beamTitle(const BeamPower& beam, const BeamPeak& peak) {
  const double slowness = std::hypot(peak.east, peak.north);
  const QString power = QStringLiteral("power %1%2")
                            .arg(peak.power, 0, 'f', 2)
                            .arg(peak.isOnEdge ? QStringLiteral(" on the edge") : QString());
  const QString band = bandText(beam, QStringLiteral("-"));
  // At zero slowness the wave comes from straight below.
  if (slowness < beam.slownessLimit / (beam.steps - 1)) return QStringLiteral("from below, %1, %2").arg(power, band);
  const double azimuth = std::atan2(peak.east, peak.north) * kDegreesPerRadian;
  return QStringLiteral("back azimuth %1°, %2 km/s, %3, %4")
      .arg(azimuth < 0 ? azimuth + 360 : azimuth, 0, 'f', 0)
      .arg(threeDigits(1 / slowness))
      .arg(power, band);
}

} // namespace

void FkCommand::addOptions(const Options& options) {
  inputs_.addOptions(options, "FILES", "A grid of powers as lines of x, y and power, or the recordings of an array");
  options.add("--band", band_, "Lowest and highest frequency in Hz (default: 4 periods to half of Nyquist)")
      .typeName("F1 F2")
      .check(numberFromTo(0, kMostHz))
      .takesExactly(2);
  options
      .add("--window", window_,
           "Time to use, in seconds after the last recording begins (default: all, at most 4096 samples)")
      .typeName("T1 T2")
      .check(numberFromTo(0, kMostSeconds))
      .takesExactly(2);
  options.add("--limit", limit_, "Largest slowness of the grid in s/km (default 0.5)")
      .typeName("S")
      .check(numberFromTo(1e-6, kMostSlowness));
  options.add("--steps", steps_, "Slownesses along each axis (default 101)")
      .typeName("N")
      .check(wholeNumberFromTo(2, kMostBeamSteps));
  options
      .add("--circle-labels", circleLabels_,
           "What the circles tell: velocity in km/s (default), slowness in s/km, degrees in s/°, or none")
      .typeName("WHAT")
      .check(oneOf({"velocity", "slowness", "degrees", "none"}));
  options.addFlag("--no-peak-value", noPeakValue_, "Do not write the largest power beside its place");
  options.add("--decibels", floorDb_, "Show powers in decibels, and those below this one, such as -20, as this one")
      .typeName("FLOOR")
      .check(numberFromTo(kLowestDb, kHighestFloorDb));
  image_.addOptions(options);
  image_.addTextOption(options);
  preparation_.addOptions(options);
  preparation_.leavePlacesAlone();
  output_.addOptions(options);
  options.afterParsing([this] { checkOptions(); });
}

void FkCommand::checkOptions() const {
  expectRising("--band", band_);
  expectRising("--window", window_);
}

// The grid that the only file holds, where it is one; a file of recordings is not.
std::optional<Grid> FkCommand::readGrid() {
  const QStringList names = inputs_.names();
  if (names.size() != 1 || !preparation_.stationsFile().empty() || !QFileInfo(names[0]).isFile()) return {};
  Result<Grid> grid = readXyzGrid(names[0]);
  if (grid) return std::move(grid).value();
  gridError_ = grid.error();
  return {};
}

// All of short recordings; of long ones, which would take long and show noise, the piece that is most likely a wave.
bool FkCommand::chooseWindow(const RecordArray& array, BeamSearch& search) {
  const auto window = strongestWindow(array.traces, array.intervalSeconds, kSamplesToUse);
  if (!window) {
    complain(window.error());
    return false;
  }
  chosen_ = *window;
  if (!chosen_) return true;
  search.windowFrom = chosen_->fromSeconds;
  search.windowTo = chosen_->toSeconds;
  return true;
}

// What the user left to the command.
void FkCommand::sayWhatWasTaken(const BeamPower& beam) const {
  const QString band = bandText(beam, QStringLiteral(" to "));
  if (chosen_) {
    note(QStringLiteral("took %1 to %2 s, where the recordings are strongest, of %3 s, and %4; --window and --band "
                        "take others")
             .arg(chosen_->fromSeconds)
             .arg(chosen_->toSeconds)
             .arg(chosen_->commonSeconds)
             .arg(band));
  } else if (band_.empty()) {
    note(QStringLiteral("took %1; --band takes others").arg(band));
  }
}

std::optional<BeamPower> FkCommand::analyse() {
  StationTable places;
  if (!preparation_.stationsFile().empty()) {
    const Result<StationTable> table = readStationTable(fileNameFromBytes(preparation_.stationsFile()));
    if (!table) {
      complain(table.error());
      return {};
    }
    places = *table;
  }
  Records found = inputs_.read();
  if (found.records.empty() && !gridError_.isEmpty()) complain(gridError_);
  if (found.status == ExitCode::Ok) found = preparation_.apply(std::move(found));
  if (found.status != ExitCode::Ok || found.records.empty()) return {};
  const Result<RecordArray> array = arrayOfRecords(found.records, found.files, places);
  if (!array) {
    complain(array.error());
    return {};
  }
  BeamSearch search;
  search.intervalSeconds = array->intervalSeconds;
  search.slownessLimit = limit_;
  search.steps = steps_;
  if (!band_.empty()) {
    search.lowestHz = band_[0];
    search.highestHz = band_[1];
  }
  if (!window_.empty()) {
    search.windowFrom = window_[0];
    search.windowTo = window_[1];
  }
  if (window_.empty() && !chooseWindow(*array, search)) return {};
  std::optional<Progress> progress;
  Result<BeamPower> beam = beamPower(array->traces, search, [&](std::int64_t done, std::int64_t total) {
    if (!progress) progress.emplace(QStringLiteral("forming beams"), total);
    progress->advanceTo(done);
  });
  progress.reset();
  if (!beam) {
    complain(beam.error());
    return {};
  }
  sayWhatWasTaken(*beam);
  return std::move(beam).value();
}

namespace {

// Ten times the logarithm of each power, from the floor on.
std::vector<float> decibels(const std::vector<float>& powers, double floorDb) {
  std::vector<float> values(powers.size());
  std::transform(powers.begin(), powers.end(), values.begin(), [floorDb](float power) {
    if (std::isnan(power)) return power;
    return power > 0 ? float(std::max(10 * std::log10(double(power)), floorDb)) : float(floorDb);
  });
  return values;
}

xovFKImageView::CircleLabels circleLabelsNamed(const std::string& name) {
  if (name == "slowness") return xovFKImageView::SecondsPerKilometre;
  if (name == "degrees") return xovFKImageView::SecondsPerDegree;
  return name == "none" ? xovFKImageView::NoLabels : xovFKImageView::KilometresPerSecond;
}

} // namespace

ExitCode FkCommand::draw(const Grid& grid, const QString& title) {
  const auto values =
      std::make_shared<const std::vector<float>>(floorDb_ ? decibels(grid.values, *floorDb_) : grid.values);
  bool written = true;
  const ExitCode delivered = output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<TitledView<xovFKImageView>>(frame);
    const ValueRange x = nonEmptyRange(nearestFinite(grid.xmin), nearestFinite(grid.xmax));
    const ValueRange y = nonEmptyRange(nearestFinite(grid.ymin), nearestFinite(grid.ymax));
    view->setXLimitsMinMax(x.min, x.max);
    view->setYLimitsMinMax(y.min, y.max);
    image_.apply(*view);
    view->setMissingCellsTransparent(true);
    view->setCircleLabels(circleLabelsNamed(circleLabels_));
    view->setShowPeakValue(!noPeakValue_);
    if (floorDb_) {
      view->setColorsFromMinimum(true);
      view->setPeakUnit(QStringLiteral("dB"));
    }
    view->setupImageDataNROWSNCOLS(values, grid.rows, grid.columns);
    view->setTitle(output_.titleOr(title));
    view->setTitleFontSize(sizeOfTitle(view->plotTitle(), frame.width()));
    written = image_.writeText(*view);
    return view;
  });
  return written ? delivered : ExitCode::Failed;
}

ExitCode FkCommand::run() {
  if (const auto grid = readGrid()) return draw(*grid, QFileInfo(inputs_.names()[0]).fileName());
  if (isReadingFailure(gridError_)) {
    complain(gridError_);
    return ExitCode::Failed;
  }
  const auto beam = analyse();
  if (!beam) return ExitCode::Failed;
  const BeamPeak peak = peakOf(*beam);
  if (peak.isOnEdge) note(QStringLiteral("the largest power lies on the edge of the grid; --limit makes it larger"));
  const QString done = preparation_.text();
  return draw(gridOf(*beam), beamTitle(*beam, peak) + (done.isEmpty() ? QString() : QStringLiteral("; ") + done));
}

} // namespace xov::cli
