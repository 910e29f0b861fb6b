#include "apps/xov/commands/SpectrogramCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/SpectrumPieces.h>
#include <XOV_Graphics/views/image/SpectrogramView.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr double kLongestWindow = 1e6; // seconds
constexpr double kMostOverlap = 0.95;
constexpr double kFarthestDb = 2000;
constexpr double kMostHz = 1e6;

} // namespace

void SpectrogramCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  inputs_.addMemoryOptions(options);
  options
      .add("--window", window_,
           "Seconds that are transformed at a time (default: a power of two of samples next to a sixtieth of "
           "the recording)")
      .typeName("S")
      .check(numberFromTo(0, kLongestWindow));
  options.add("--overlap", overlap_, "Least share of a window that the next one has, too (default 0.5)")
      .typeName("SHARE")
      .check(numberFromTo(0, kMostOverlap));
  options.addFlag("--log-frequency", logFrequency_, "Make the frequency axis logarithmic");
  options.add("--band", band_, "Ends of the frequency axis in Hz (default: up to Nyquist)")
      .typeName("F1 F2")
      .check(numberFromTo(0, kMostHz))
      .takesExactly(2);
  options
      .add("--db-range", decibels_, "Decibels at both ends of the colours (default: what all but the extremes reach)")
      .typeName("MIN MAX")
      .check(numberFromTo(-kFarthestDb, kFarthestDb))
      .takesExactly(2);
  options.addFlag("--no-seismogram", withoutSeismogram_, "Leave out the seismogram above");
  image_.addColorOptions(options);
  timeAxis_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
  options.afterParsing([this] {
    expectRising("--band", band_);
    expectRising("--db-range", decibels_);
  });
}

ExitCode SpectrogramCommand::run() {
  const auto recording = readRecording(inputs_, preparation_);
  if (!recording) return ExitCode::Failed;
  const auto pieces = std::make_shared<const SeismogramArray>(recording->pieces);
  const SpectralUnit unit = spectralUnitOf(*pieces);
  const ExitCode delivered = output_.deliver(nameFieldsOf(*pieces), [&](const QRectF& frame) {
    auto view = std::make_unique<SpectrogramView>(frame);
    view->setRecords(pieces);
    view->setWindowSeconds(window_);
    view->setOverlap(overlap_);
    view->setLogFrequency(logFrequency_);
    if (!band_.empty()) {
      view->setLowestHz(band_[0]);
      view->setHighestHz(band_[1]);
    }
    if (!decibels_.empty()) {
      view->setLowestDecibel(decibels_[0]);
      view->setHighestDecibel(decibels_[1]);
    }
    view->setShowSeismogram(!withoutSeismogram_);
    view->setDecibelOffset(unit.decibelOffset);
    view->setColorBarTitle(unit.decibels);
    image_.applyColors(*view);
    view->setTimeReference(timeAxis_.referenceOf(*pieces));
    view->setTitle(output_.titleOr(titleOfRecording(*pieces)));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(recording->status, delivered);
}

} // namespace xov::cli
