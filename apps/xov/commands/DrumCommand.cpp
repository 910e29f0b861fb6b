#include "apps/xov/commands/DrumCommand.h"

#include "apps/xov/inputs/ColorList.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/live/EventSources.h"
#include "apps/xov/live/Interrupt.h"
#include "apps/xov/live/LiveDrum.h"
#include "apps/xov/live/Redraw.h"
#include "apps/xov/output/PlotReceiver.h"
#include "apps/xov/output/RecordNames.h"
#include "apps/xov/output/TitledView.h"

#include <QColor>
#include <QCoreApplication>
#include <QPointer>
#include <QShortcut>
#include <QTimeZone>

#include <XOV_Graphics/colour/CategoryColors.h>
#include <XOV_Graphics/seismic/prepare/DrumPage.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr char kDay[] = "day";
constexpr double kShortestRow = 1;
constexpr double kLongestRow = 31 * 86400.0;
constexpr double kLargestMagnitude = 20;
constexpr double kShortestReach = 0.1;
constexpr double kLongestReach = 100;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kSecondsPerDay = 86400;
constexpr int kMillisecondsPerDrum = 1000; // an hour's row gets a quarter of a point further a second
constexpr double kFarthestSeconds = 1e11;  // three thousand years

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

// What a window receives for as long as it is open.
struct DrumSources {
  EventSources events;
  std::unique_ptr<LiveDrum> live;
};

// Page Down and Page Up show the drums of other channels.
void addPageKeys(helicorderView& view, const std::shared_ptr<LiveDrum>& live) {
  for (const auto& [key, step] : {std::pair(Qt::Key_PageDown, 1), std::pair(Qt::Key_PageUp, -1)}) {
    auto* const shortcut = new QShortcut(QKeySequence(key), &view);
    shortcut->setContext(Qt::WidgetShortcut); // several drums may stand in a window
    QObject::connect(shortcut, &QShortcut::activated, &view, [live, &view, step = step] {
      live->turn(step);
      live->show(view);
      view.update();
    });
  }
}

} // namespace

void DrumCommand::addOptions(const Options& options) {
  inputs_.allowNone();
  inputs_.addOptions(options);
  inputs_.addMemoryOptions(options);
  const Option server = seedLink_.addOptions(options);
  daily_.addOptions(options, server);
  late_.addOptions(options);
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
  eventService_.addOptions(options, server);
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
  output_.addKioskOption(options);
  options.afterParsing([this] { checkInputs(); });
}

void DrumCommand::checkInputs() const {
  seedLink_.check(!inputs_.names().isEmpty());
  eventService_.check();
  if (seedLink_.isGiven()) {
    if (preparation_.isWanted())
      throw UsageError("--seedlink", "found options of preparation, too; what arrives is shown as it is");
    if (!page_.empty()) throw UsageError("--page", "what arrives has a page a day of each channel");
  } else if (late_.isGiven()) {
    throw UsageError("--seedlink", "expected with --latency and --late");
  }
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
  if (seedLink_.isGiven()) return runLive();
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
  std::shared_ptr<const SeismogramArray> pieces;
  const auto layOut = [&](const DrumSheet& sheet, SeismogramArray records) {
    const bool isDay = sheet.start.isValid();
    Result<DrumPage> laid =
        layOutDrum(std::move(records), rowSeconds_, rows_, isDay ? DrumSpan{sheet.start, sheet.end} : span);
    if (!laid) complain(several ? laid.error() + QStringLiteral("; --channels or --page chooses") : laid.error());
    const bool isLaidOut = bool(laid);
    page = std::move(laid).value();
    for (const QString& text : page.notes)
      note(text);
    pieces = std::make_shared<SeismogramArray>(page.pieces);
    return isLaidOut;
  };
  std::vector<PlotPage> plots;
  const bool isOne = sheets.size() == 1;
  if (isOne && !layOut(sheets.front(), std::move(sheets.front().records))) return ExitCode::Failed;
  plots.reserve(sheets.size());
  for (const DrumSheet& sheet : sheets)
    plots.push_back({nameFieldsOf(isOne ? *pieces : sheet.records), {}});
  const MarkedEvents marked = events_.read();
  const ExitCode delivered = output_.deliver(plots, [&](const QRectF& frame, std::size_t i) {
    if (!isOne && !layOut(sheets[i], sheets[i].records)) found.status = ExitCode::Failed;
    auto view = makeView(frame, marked.events);
    view->setWvfrmArray(pieces);
    Output::keep(pieces);
    Output::keep(marked.events);
    view->setNRows(page.rows);
    view->setGainFactor(float(gain_.value_or(page.gain)));
    if (span.start.isValid() || sheets[i].start.isValid()) view->setPageStart(page.start);
    view->setAmplitudeUnit(amplitudeUnit(*pieces));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max({found.status, marked.status, delivered});
}

std::unique_ptr<helicorderView> DrumCommand::makeView(const QRectF& frame,
                                                      const std::shared_ptr<const EventOriginArray>& events) const {
  const QTimeZone zone = zoneNamed(zone_);
  auto view = std::make_unique<TitledView<helicorderView>>(frame);
  view->setTheHypoArray(events);
  view->setRowDuration(float(rowSeconds_));
  view->setMagThreshold(float(smallestMagnitude_));
  view->setShowZeroLines(zeroLines_);
  view->setLabelHours(hours_);
  lineWidth_.apply(*view);
  view->setRowColors(chosenColors());
  view->setColorsByDay(dayColors_);
  view->setLocalZone(zone);
  view->setClipReach(clip_);
  view->setShowEventLabels(eventLabels_);
  view->setSpreadsHourLabels(true);
  view->setShowAmplitudeBar(scaleBar_);
  view->setTitle(output_.titleOr(zone.isValid() ? QString() : QStringLiteral("UTC")));
  return view;
}

int DrumCommand::rowsOfADay() const {
  return rows_.value_or(int(std::clamp(std::ceil(kSecondsPerDay / rowSeconds_), 1.0, double(kMostDrumRows))));
}

// Drawn as the one that is shown, which may get another ratio of pixels while it is.
bool DrumCommand::keepPage(const DrumSheet& sheet, double ratio, std::unique_ptr<helicorderView> page) const {
  if (!daily_.isGiven()) return true;
  const auto pieces = std::make_shared<const SeismogramArray>(sheet.records);
  page->setNRows(rowsOfADay());
  page->setExportPixelRatio(ratio);
  putPage(pieces, sheet.start, gain_, *page);
  return daily_.keep(*page, nameFieldsOf(*pieces));
}

// A window shows the drum of the day until it is closed; a file shows what has arrived after a while.
ExitCode DrumCommand::runLive() const {
  Result<SeedLinkSettings> found = seedLink_.settings();
  if (!found) {
    complain(found.error());
    return ExitCode::Failed;
  }
  SeedLinkSettings settings = std::move(found).value();
  settings.beginsWithDay = true;
  std::weak_ptr<DrumSources> shownSources;
  std::weak_ptr<LiveDrum> shownLive; // the views': sockets do not outlive the desktop
  QPointer<helicorderView> shownView;
  std::unique_ptr<Interrupt> interrupt;
  const bool isOwnProgram = currentPlotReceiver() == nullptr;
  ExitCode received = ExitCode::Ok;
  const auto showInWindow = [&](const QRectF& frame) {
    if (isOwnProgram) interrupt = std::make_unique<Interrupt>([] { QCoreApplication::exit(); });
    std::shared_ptr<DrumSources> sources = shownSources.lock(); // of a view that this one takes the place of
    const bool isFirst = sources == nullptr;
    if (isFirst) shownSources = sources = std::make_shared<DrumSources>();
    auto view = makeView(frame, sources->events.events());
    view->setNRows(rowsOfADay());
    shownView = view.get();
    if (isFirst) {
      const auto keep = [this, &shownView, &received, frame,
                         events = sources->events.events()](const DrumSheet& sheet) {
        const double ratio = shownView ? shownView->exportPixelRatio() : 1;
        if (!keepPage(sheet, ratio, makeView(frame, events))) received = ExitCode::Failed;
      };
      const LiveDrumLook look{view->plotTitle(), gain_, chosenColors(), late_.lateness()};
      sources->live = std::make_unique<LiveDrum>(settings, look, keep);
      shownLive = std::shared_ptr<LiveDrum>(sources, sources->live.get());
      sources->live->live().start();
      sources->events.start(events_.path(), eventService_.settings(kSecondsPerDay, presentOf(shownLive)));
    }
    const std::shared_ptr<LiveDrum> live(sources, sources->live.get());
    view->setTitle({});
    addPageKeys(*view, live);
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, view.get(),
                     [live] { live->leave(); });
    redrawEvery(kMillisecondsPerDrum, *view, [live, shown = view.get()] { live->show(*shown); });
    return view;
  };
  const auto showInFile = [&](XOVView& view) {
    receiveFor(seedLink_.waitSeconds());
    const auto live = shownLive.lock();
    live->show(static_cast<helicorderView&>(view));
    live->leave();
    const std::size_t channels = live->days().channelCount();
    if (channels == 1) return;
    complain(seedLink_.serverText() + (channels == 0
                                           ? QStringLiteral(": nothing has arrived")
                                           : QStringLiteral(": found %1 channels, expected one: the stations "
                                                            "of --seedlink choose, --daily keeps them all")
                                                 .arg(channels)));
    received = ExitCode::Failed;
  };
  const ExitCode delivered = output_.deliver(showInWindow, showInFile);
  return std::max(delivered, received);
}

} // namespace xov::cli
