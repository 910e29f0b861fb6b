#include "apps/xov/commands/DrumCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"
#include "apps/xov/output/TitledView.h"

#include <XOV_Graphics/seismic/prepare/DrumPage.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr double kShortestRow = 1;
constexpr double kLongestRow = 31 * 86400.0;
constexpr double kLargestMagnitude = 20;

} // namespace

void DrumCommand::addOptions(CLI::App& options) {
  inputs_.addOptions(options);
  options.add_option("--rows", rows_, "Number of rows (default: as many as the recording needs)")
      ->type_name("N")
      ->check(wholeNumberFromTo(1, kMostDrumRows));
  options.add_option("--row-duration", rowSeconds_, "Seconds a row (default 3600)")
      ->type_name("S")
      ->check(numberFromTo(kShortestRow, kLongestRow));
  options
      .add_option("--gain", gain_,
                  "Half row heights that the largest sample rises (default: at most 8, less for a noisy record)")
      ->type_name("G")
      ->check(numberAboveZero());
  events_.addOptions(options);
  options.add_option("--mag", smallestMagnitude_, "Smallest magnitude of marked events (default 4)")
      ->type_name("M")
      ->check(numberFromTo(-kLargestMagnitude, kLargestMagnitude));
  options.add_flag("--zero-lines", zeroLines_, "Draw a thin zero line through each row");
  options.add_flag("--hours", hours_, "Count the time scale in hours instead of minutes");
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
}

ExitCode DrumCommand::run() {
  Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  const bool several = channelsOf(found.records).size() > 1;
  Result<DrumPage> page = layOutDrum(std::move(found.records), rowSeconds_, rows_);
  if (!page) {
    complain(several ? page.error() + QStringLiteral("; --channels chooses") : page.error());
    return ExitCode::Failed;
  }
  for (const QString& text : page->notes)
    note(text);
  const MarkedEvents marked = events_.read();
  const auto pieces = std::make_shared<const SeismogramArray>(page->pieces);
  const ExitCode delivered = output_.deliver(nameFieldsOf(*pieces), [&](const QRectF& frame) {
    auto view = std::make_unique<TitledView<helicorderView>>(frame);
    view->setWvfrmArray(pieces);
    view->setTheHypoArray(marked.events);
    view->setNRows(page->rows);
    view->setRowDuration(float(rowSeconds_));
    view->setGainFactor(float(gain_.value_or(page->gain)));
    view->setMagThreshold(float(smallestMagnitude_));
    view->setShowZeroLines(zeroLines_);
    view->setLabelHours(hours_);
    lineWidth_.apply(*view);
    view->setTitle(output_.titleOr(QStringLiteral("UTC")));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max({found.status, marked.status, delivered});
}

} // namespace xov::cli
