#include "apps/xov/commands/MonitorCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/live/EventSources.h"
#include "apps/xov/live/Interrupt.h"
#include "apps/xov/live/LiveDisplay.h"
#include "apps/xov/live/Redraw.h"
#include "apps/xov/live/SpeedOption.h"
#include "apps/xov/output/PlotReceiver.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <XOV_Graphics/base/TimeText.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h>
#include <XOV_Graphics/views/timeline/realTimeDisplayView01.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr char kLeft[] = "left";
constexpr int kMillisecondsPerFrame = 16; // of a display that shows 60 pictures a second
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kShortestSpan = 1;
constexpr double kLongestSpan = 86400;

// What a window receives for as long as it is open.
struct MonitorSources {
  MonitorSources(const SeedLinkSettings& settings, const ReplaySettings& shown)
      : live(settings, events.events(), shown.spanSeconds, shown.edge) {}
  EventSources events;
  LiveDisplay live;
};

// From the first event of the event loop on, until everything has arrived.
void play(const std::shared_ptr<Replay>& replay, RealTimeDisplayView& view) {
  const auto clock = std::make_shared<QElapsedTimer>();
  const auto timer = std::make_shared<QTimer*>(nullptr);
  *timer = redrawEvery(kMillisecondsPerFrame, view, [replay, clock, timer, &view] {
    if (!clock->isValid()) clock->start();
    replay->showAt(double(clock->elapsed()) / kMillisecondsPerSecond, view);
    if (replay->isAtEnd()) (*timer)->stop();
  });
}

} // namespace

void MonitorCommand::addOptions(const Options& options) {
  inputs_.allowNone();
  inputs_.addOptions(options, "FILES,--replay");
  const Option server = seedLink_.addOptions(options);
  addSpeedOption(options, speed_);
  options.add("--span", spanSeconds_, "Seconds on the display (default 600)")
      .typeName("S")
      .check(numberFromTo(kShortestSpan, kLongestSpan));
  options.add("--origin", origin_, "Edge that minutes count from: right (now, the default) or left")
      .typeName("EDGE")
      .check(oneOf({kLeft, "right"}));
  options.add("--gain", gain_, "Enlarge traces by this factor (default 1)").typeName("G").check(numberAboveZero());
  options.add("--at", at_, "Begin at this recorded time (UTC); with -o, show this moment")
      .typeName("TIME")
      .check(utcTime());
  options.addFlag("--zone-name", zoneName_, "Write the local time with the name of its zone");
  events_.addOptions(options);
  eventService_.addOptions(options, server);
  late_.addOptions(options);
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options);
  output_.addKioskOption(options);
  options.afterParsing([this] { checkInputs(); });
}

void MonitorCommand::checkInputs() const {
  seedLink_.check(!inputs_.names().isEmpty());
  eventService_.check();
  if (seedLink_.isGiven() && preparation_.isWanted())
    throw UsageError("--seedlink", "found options of preparation, too; what arrives is shown as it is");
}

// A window shows what arrives until it is closed; a file shows what has arrived after a while.
ExitCode MonitorCommand::runLive() const {
  const Result<SeedLinkSettings> settings = seedLink_.settings();
  if (!settings) {
    complain(settings.error());
    return ExitCode::Failed;
  }
  const ReplaySettings shown = this->settings();
  std::weak_ptr<LiveDisplay> shownLive; // the views': sockets do not outlive the desktop
  std::unique_ptr<Interrupt> interrupt;
  const bool isOwnProgram = currentPlotReceiver() == nullptr;
  ExitCode received = ExitCode::Ok;
  const auto showInWindow = [&](const QRectF& frame) {
    if (isOwnProgram) interrupt = std::make_unique<Interrupt>([] { QCoreApplication::exit(); });
    auto view = makeView(frame);
    view->setTitle(output_.titleOr(seedLink_.serverText()));
    std::shared_ptr<LiveDisplay> live = shownLive.lock(); // of a view that this one takes the place of
    if (!live) {
      const auto sources = std::make_shared<MonitorSources>(*settings, shown);
      live = {sources, &sources->live};
      shownLive = live;
      live->live().start();
      sources->events.start(events_.path(), eventService_.settings(shown.spanSeconds, presentOf(shownLive)));
    }
    live->attachTo(*view);
    redrawEvery(kMillisecondsPerFrame, *view, [live, shown = view.get()] { live->show(*shown); });
    return view;
  };
  const auto showInFile = [&](XOVView& view) {
    receiveFor(seedLink_.waitSeconds());
    const auto live = shownLive.lock();
    live->show(static_cast<RealTimeDisplayView&>(view));
    if (live->live().hasSamples()) return;
    complain(seedLink_.serverText() + QStringLiteral(": nothing has arrived"));
    received = ExitCode::Failed;
  };
  const ExitCode delivered = output_.deliver(showInWindow, showInFile);
  return std::max(delivered, received);
}

ReplaySettings MonitorCommand::settings() const {
  ReplaySettings settings;
  settings.speed = speed_;
  settings.spanSeconds = spanSeconds_;
  settings.edge = origin_ == kLeft ? Edge::Left : Edge::Right;
  if (!at_.empty()) settings.start = parsedUtcTime(at_);
  return settings;
}

// What is amiss with --at; empty when the recording has that time.
QString MonitorCommand::outsideNote(const SeismogramArray& records) const {
  if (at_.empty()) return {};
  std::optional<double> first;
  std::optional<double> last;
  for (const auto& record : records) {
    const std::optional<double> start = startSeconds(*record);
    if (!start || record->npts() < 1) continue;
    const double end = *start + intervalSeconds(*record) * (record->npts() - 1);
    first = std::min(first.value_or(*start), *start);
    last = std::max(last.value_or(end), end);
  }
  const double at = double(parsedUtcTime(at_).toMSecsSinceEpoch()) / kMillisecondsPerSecond;
  if (!first || (at >= *first && at <= *last)) return {};
  const auto text = [](double seconds) {
    return utcText(QDateTime::fromMSecsSinceEpoch(std::llround(seconds * kMillisecondsPerSecond), Qt::UTC));
  };
  return QStringLiteral("--at: found %1, but the recording lasts from %2 to %3")
      .arg(QString::fromStdString(at_), text(*first), text(*last));
}

std::unique_ptr<RealTimeDisplayView> MonitorCommand::makeView(const QRectF& frame) const {
  std::unique_ptr<RealTimeDisplayView> view;
  if (zoneName_)
    view = std::make_unique<XOVRealTimeDisplayView02>(frame);
  else
    view = std::make_unique<realTimeDisplayView01>(frame);
  view->setWaveformGain(float(gain_));
  view->setShowLatency(late_.lateness().isShown);
  view->setLateSeconds(late_.lateness().seconds);
  lineWidth_.apply(*view);
  return view;
}

ExitCode MonitorCommand::run() {
  if (seedLink_.isGiven()) return runLive();
  const Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  const MarkedEvents marked = events_.read();
  const auto replay = std::make_shared<Replay>(found.records, marked.events, settings());
  if (!replay->canPlay()) {
    complain(found.files.front() + QStringLiteral(": found no samples with times, expected a reference time"));
    return ExitCode::Failed;
  }
  if (const QString outside = outsideNote(found.records); !outside.isEmpty()) note(outside);
  const auto showInWindow = [&](const QRectF& frame) {
    auto view = makeView(frame);
    view->setTitle(output_.titleOr(titleOfChannels(found.records)));
    view->setSubtitle(preparation_.text());
    replay->attachTo(*view);
    play(replay, *view);
    return view;
  };
  // A file has no event loop: it shows one moment.
  const auto showInFile = [&](XOVView& view) {
    if (at_.empty()) replay->showAt(replay->durationSeconds(), static_cast<RealTimeDisplayView&>(view));
  };
  return std::max({found.status, marked.status, output_.deliver(showInWindow, showInFile)});
}

} // namespace xov::cli
