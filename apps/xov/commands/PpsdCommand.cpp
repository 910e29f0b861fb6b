#include "apps/xov/commands/PpsdCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/RecordCopy.h>
#include <XOV_Graphics/seismic/prepare/SpectrumPieces.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/seismic/signal/NoiseStatistics.h>
#include <XOV_Graphics/views/image/NoiseStatisticsView.h>
#include <algorithm>
#include <cmath>
#include <optional>

namespace xov::cli {

namespace {

constexpr double kLongestSegment = 1e6; // seconds
constexpr double kMostOverlap = 0.95;
constexpr double kFarthestDb = 2000;
constexpr double kFarthestSeconds = 1e12; // from 1970, as far as dates are told

// In dB of the acceleration of the ground where that is known, else of the samples.
void convert(NoiseStatistics& statistics, const SpectralUnit& unit) {
  for (std::size_t i = 0; i < statistics.decibels.size(); ++i) {
    float& value = statistics.decibels[i];
    if (!(value > kNoPowerDb)) continue;
    const double hz = 1 / statistics.periods[i % statistics.periods.size()];
    const double more = unit.motion ? *decibelsToAcceleration(*unit.motion, hz) : 0;
    value += float(unit.decibelOffset + more);
  }
}

// "2025-03-12 00:00–23:59", from the first sample to the last one; empty where times are unknown.
QString spanOf(const SeismogramArray& pieces) {
  std::optional<double> first;
  double last = 0;
  for (const auto& piece : pieces) {
    const std::optional<double> start = startSeconds(*piece);
    if (!start || piece->npts() <= 0) continue;
    const double end = *start + double(piece->npts() - 1) * intervalSeconds(*piece);
    last = first ? std::max(last, end) : end;
    first = first ? std::min(*first, *start) : *start;
  }
  if (!first || !(std::abs(*first) < kFarthestSeconds && std::abs(last) < kFarthestSeconds)) return {};
  const QDateTime from = QDateTime::fromSecsSinceEpoch(qint64(std::floor(*first)), Qt::UTC);
  const QDateTime to = QDateTime::fromSecsSinceEpoch(qint64(std::floor(last)), Qt::UTC);
  const QString moment = QStringLiteral("yyyy-MM-dd HH:mm");
  return from.toString(moment) + QStringLiteral("–") +
         to.toString(from.date() == to.date() ? QStringLiteral("HH:mm") : moment);
}

} // namespace

void PpsdCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  inputs_.addMemoryOptions(options);
  options.add("--segment", segment_, "Seconds of the segments that are counted (default 3600)")
      .typeName("S")
      .check(numberFromTo(1, kLongestSegment));
  options.add("--overlap", overlap_, "Share of a segment that the next one has, too (default 0.5)")
      .typeName("SHARE")
      .check(numberFromTo(0, kMostOverlap));
  options.add("--db-range", decibels_, "Ends of the axis of decibels (default: those of the noise)")
      .typeName("MIN MAX")
      .check(numberFromTo(-kFarthestDb, kFarthestDb))
      .takesExactly(2);
  options.addFlag("--no-noise-models", withoutNoiseModels_, "Leave out the New Low and High Noise Models");
  options.addFlag("--no-percentiles", withoutPercentiles_,
                  "Leave out the lines of the 10th, 50th and 90th percentile");
  image_.addColorOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
  options.afterParsing([this] { expectRising("--db-range", decibels_); });
}

ExitCode PpsdCommand::run() {
  const auto recording = readRecording(inputs_, preparation_);
  if (!recording) return ExitCode::Failed;
  const SeismogramArray& pieces = recording->pieces;
  const SpectralUnit unit = spectralUnitOf(pieces);
  auto statistics = std::make_shared<NoiseStatistics>(
      noiseStatistics(spectrogramPieces(pieces), {.segmentSeconds = segment_, .overlap = overlap_}));
  if (statistics->segments == 0 || statistics->periods.empty()) {
    complain(QStringLiteral("found no segment of %1 s without a gap; --segment makes them shorter").arg(segment_));
    return ExitCode::Failed;
  }
  convert(*statistics, unit);
  if (!unit.motion && !withoutNoiseModels_)
    note(QStringLiteral(
        "the noise models are left out: they are of ground motion, which --remove-response acc makes"));
  const ExitCode delivered = output_.deliver(nameFieldsOf(pieces), [&](const QRectF& frame) {
    auto view = std::make_unique<NoiseStatisticsView>(frame);
    view->setShowNoiseModels(unit.motion && !withoutNoiseModels_);
    view->setShowPercentiles(!withoutPercentiles_);
    if (!decibels_.empty()) {
      view->setYLimitsMinMax(float(decibels_[0]), float(decibels_[1]));
      view->set_fixedYAxisRange(true);
    }
    image_.applyColors(*view);
    view->setStatistics(statistics);
    view->setYLabelString(unit.motion ? QStringLiteral("Acceleration, dB rel. 1 (m/s²)²/Hz") : unit.decibels);
    QStringList title{titleOfRecording(pieces), spanOf(pieces),
                      QStringLiteral("%1 segments of %2 s").arg(statistics->segments).arg(segment_)};
    title.removeAll(QString());
    view->setTitle(output_.titleOr(title.join(QStringLiteral("  "))));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(recording->status, delivered);
}

} // namespace xov::cli
