#include "apps/xov/commands/DrumCommand.h"

#include "apps/xov/inputs/ColorList.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"
#include "apps/xov/output/TitledView.h"

#include <QColor>
#include <QTimeZone>

#include <XOV_Graphics/colour/CategoryColors.h>
#include <XOV_Graphics/seismic/prepare/DrumPage.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr char kDay[] = "day";
constexpr double kShortestRow = 1;
constexpr double kLongestRow = 31 * 86400.0;
constexpr double kLargestMagnitude = 20;
constexpr double kShortestReach = 0.1;
constexpr double kLongestReach = 100;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kFarthestSeconds = 1e11; // three thousand years

QTimeZone zoneNamed(const std::string& name) {
  return name.empty() ? QTimeZone() : QTimeZone(QByteArray::fromStdString(name));
}

Check zoneName() {
  const auto check = [](const std::string& text) -> std::string {
    if (zoneNamed(text).isValid()) return {};
    return "found '" + text + "', expected a time zone as Europe/Berlin or UTC+05:30";
  };
  return Check{check, {}};
}

// A time that a step cuts at, where the records have a time axis.
QDateTime momentOf(const WrittenTime& time, const SeismogramArray& records) {
  if (const auto* const date = std::get_if<QDateTime>(&time)) return *date;
  const double seconds = std::get<double>(time);
  if (records.empty() || !(std::abs(seconds) < kFarthestSeconds)) return {};
  return referenceTimeOf(*records.front()).addMSecs(qRound64(seconds * kMillisecondsPerSecond));
}

// What the last --start and --end say; seconds count from the reference time of the first record.
DrumSpan spanOf(const std::vector<PreparationStep>& steps, const SeismogramArray& records) {
  DrumSpan span;
  for (const PreparationStep& step : steps) {
    if (const auto* const start = std::get_if<StartStep>(&step)) span.start = momentOf(start->at, records);
    if (const auto* const end = std::get_if<EndStep>(&step)) span.end = momentOf(end->at, records);
  }
  return span;
}

} // namespace

void DrumCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  inputs_.addMemoryOptions(options);
  options.add("--rows", rows_, "Number of rows (default: as many as the recording needs)")
      .typeName("N")
      .check(wholeNumberFromTo(1, kMostDrumRows));
  options.add("--row-duration", rowSeconds_, "Seconds a row (default 3600)")
      .typeName("S")
      .check(numberFromTo(kShortestRow, kLongestRow));
  options
      .add("--gain", gain_,
           "Half row heights that the largest sample rises (default: at most 8, less for a noisy record)")
      .typeName("G")
      .check(numberAboveZero());
  events_.addOptions(options);
  options.add("--mag", smallestMagnitude_, "Smallest magnitude of marked events (default 4)")
      .typeName("M")
      .check(numberFromTo(-kLargestMagnitude, kLargestMagnitude));
  options.addFlag("--zero-lines", zeroLines_, "Draw a thin zero line through each row");
  options.addFlag("--hours", hours_, "Count the time scale in hours instead of minutes");
  options.addFlag("--scale-bar", scaleBar_, "Draw a bar that shows the scale of amplitudes, with its unit");
  options.addFlag("--event-labels", eventLabels_, "Write magnitude and name beside marked events");
  addColorList(options, "--row-colors", rowColors_,
               "Colours of the rows in turn (default: the pieces of the recording in black and red)");
  options.addFlag("--day-colors", dayColors_, "Change the colour with the day instead of with the row");
  options.add("--local-time", zone_, "Write the time in this zone at the right, as Europe/Berlin or UTC+05:30")
      .typeName("ZONE")
      .check(zoneName());
  options
      .add("--clip", clip_,
           "Hold traces within so many row heights of their zero line, and mark where (default: as they are)")
      .typeName("ROWS")
      .check(numberFromTo(kShortestReach, kLongestReach));
  options.add("--page", page_, "A page a day (UTC) of each channel, or a channel (default: one page)")
      .typeName("PAGE")
      .check(oneOf({kDay, "channel"}));
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
}

std::vector<QColor> DrumCommand::chosenColors() const {
  if (!rowColors_.empty() || !dayColors_) return colorsNamed(rowColors_);
  return {QColor(QRgb(categoryColor(0))), QColor(QRgb(categoryColor(2)))};
}

DrumPaging DrumCommand::paging() const {
  if (page_.empty()) return DrumPaging::None;
  return page_ == kDay ? DrumPaging::Day : DrumPaging::Channel;
}

ExitCode DrumCommand::run() {
  Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  const bool several = page_.empty() && channelsOf(found.records).size() > 1;
  const DrumSpan span = spanOf(preparation_.steps(), found.records);
  Result<std::vector<DrumSheet>> made = drumSheets(std::move(found.records), paging());
  if (!made || made->empty()) {
    complain(made ? QStringLiteral("found no record with samples and times, expected a reference time")
                  : made.error());
    return ExitCode::Failed;
  }
  std::vector<DrumSheet> sheets = std::move(made).value();
  DrumPage page; // the one at hand, whose pieces views do not hold themselves
  const auto pieces = std::make_shared<SeismogramArray>();
  const auto layOut = [&](const DrumSheet& sheet, SeismogramArray records) {
    const bool isDay = sheet.start.isValid();
    Result<DrumPage> laid =
        layOutDrum(std::move(records), rowSeconds_, rows_, isDay ? DrumSpan{sheet.start, sheet.end} : span);
    if (!laid) complain(several ? laid.error() + QStringLiteral("; --channels or --page chooses") : laid.error());
    const bool isLaidOut = bool(laid);
    page = std::move(laid).value();
    for (const QString& text : page.notes)
      note(text);
    *pieces = page.pieces;
    return isLaidOut;
  };
  std::vector<PlotPage> plots;
  const bool isOne = sheets.size() == 1;
  if (isOne && !layOut(sheets.front(), std::move(sheets.front().records))) return ExitCode::Failed;
  plots.reserve(sheets.size());
  for (const DrumSheet& sheet : sheets)
    plots.push_back({nameFieldsOf(isOne ? *pieces : sheet.records), {}});
  const MarkedEvents marked = events_.read();
  const QTimeZone zone = zoneNamed(zone_);
  const ExitCode delivered = output_.deliver(plots, [&](const QRectF& frame, std::size_t i) {
    if (!isOne && !layOut(sheets[i], sheets[i].records)) found.status = ExitCode::Failed;
    auto view = std::make_unique<TitledView<helicorderView>>(frame);
    view->setWvfrmArray(pieces);
    view->setTheHypoArray(marked.events);
    view->setNRows(page.rows);
    view->setRowDuration(float(rowSeconds_));
    view->setGainFactor(float(gain_.value_or(page.gain)));
    view->setMagThreshold(float(smallestMagnitude_));
    view->setShowZeroLines(zeroLines_);
    view->setLabelHours(hours_);
    lineWidth_.apply(*view);
    if (span.start.isValid() || sheets[i].start.isValid()) view->setPageStart(page.start);
    view->setRowColors(chosenColors());
    view->setColorsByDay(dayColors_);
    view->setLocalZone(zone);
    view->setClipReach(clip_);
    view->setShowEventLabels(eventLabels_);
    view->setShowAmplitudeBar(scaleBar_);
    view->setAmplitudeUnit(amplitudeUnit(*pieces));
    view->setTitle(output_.titleOr(zone.isValid() ? QString() : QStringLiteral("UTC")));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max({found.status, marked.status, delivered});
}

} // namespace xov::cli
