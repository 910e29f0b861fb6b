#include "apps/xov/commands/MonitorCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/live/Interrupt.h"
#include "apps/xov/live/LiveDisplay.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

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
constexpr double kLargestSpeed = 1e6;
constexpr double kLongestWait = 86400;

// Redraws at a steady rate from the first event of the event loop on, until everything has arrived.
void play(const std::shared_ptr<Replay>& replay, RealTimeDisplayView& view) {
  auto* const timer = new QTimer(&view);
  timer->setTimerType(Qt::PreciseTimer);
  const auto clock = std::make_shared<QElapsedTimer>();
  QObject::connect(timer, &QTimer::timeout, &view, [replay, clock, timer, &view] {
    if (!clock->isValid()) clock->start();
    replay->showAt(double(clock->elapsed()) / kMillisecondsPerSecond, view);
    view.update();
    if (replay->isAtEnd()) timer->stop();
  });
  timer->start(kMillisecondsPerFrame);
}

// Shows what has arrived, at a steady rate.
void showLive(const std::shared_ptr<LiveDisplay>& live, RealTimeDisplayView& view) {
  auto* const timer = new QTimer(&view);
  timer->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer, &QTimer::timeout, &view, [live, &view] {
    live->show(view);
    view.update();
  });
  timer->start(kMillisecondsPerFrame);
}

} // namespace

void MonitorCommand::addOptions(const Options& options) {
  inputs_.allowNone();
  inputs_.addOptions(options, "FILES,--replay");
  seedLink_.addOptions(options);
  options.add("--wait", waitSeconds_, "Seconds to receive before a file is written with -o (default 10)")
      .typeName("S")
      .check(numberFromTo(0, kLongestWait));
  options.add("--speed", speed_, "Recorded seconds a second (default 1)")
      .typeName("N")
      .check(numberAboveZero())
      .check(numberFromTo(0, kLargestSpeed));
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
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options);
  options.afterParsing([this] { checkInputs(); });
}

void MonitorCommand::checkInputs() const {
  if (seedLink_.isGiven() && !inputs_.names().isEmpty())
    throw UsageError("--seedlink", "found files, too; expected either");
  seedLink_.check();
  if (!seedLink_.isGiven() && inputs_.names().isEmpty())
    throw UsageError("FILES", "expected seismogram files, or --seedlink");
}

// A window shows what arrives until it is closed; a file shows what has arrived after a while.
ExitCode MonitorCommand::runLive() const {
  const Result<SeedLinkSettings> settings = seedLink_.settings();
  if (!settings) {
    complain(settings.error());
    return ExitCode::Failed;
  }
  const MarkedEvents marked = events_.read();
  const ReplaySettings shown = this->settings();
  std::weak_ptr<LiveDisplay> shownLive; // the view's: sockets do not outlive the desktop
  std::unique_ptr<Interrupt> interrupt;
  ExitCode received = ExitCode::Ok;
  const auto showInWindow = [&](const QRectF& frame) {
    const auto live = std::make_shared<LiveDisplay>(*settings, marked.events, shown.spanSeconds, shown.edge);
    shownLive = live;
    interrupt = std::make_unique<Interrupt>([] { QCoreApplication::quit(); });
    auto view = makeView(frame);
    view->setWaveformGain(float(gain_));
    view->setTitle(output_.titleOr(seedLink_.serverText()));
    lineWidth_.apply(*view);
    live->attachTo(*view);
    live->start();
    showLive(live, *view);
    return view;
  };
  const auto showInFile = [&](XOVView& view) {
    QEventLoop loop;
    QTimer::singleShot(int(waitSeconds_ * kMillisecondsPerSecond), &loop, &QEventLoop::quit);
    loop.exec();
    const auto live = shownLive.lock();
    live->show(static_cast<RealTimeDisplayView&>(view));
    if (live->hasSamples()) return;
    complain(seedLink_.serverText() + QStringLiteral(": nothing has arrived"));
    received = ExitCode::Failed;
  };
  const ExitCode delivered = output_.deliver(showInWindow, showInFile);
  return std::max({marked.status, delivered, received});
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
  if (zoneName_) return std::make_unique<XOVRealTimeDisplayView02>(frame);
  return std::make_unique<realTimeDisplayView01>(frame);
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
    view->setWaveformGain(float(gain_));
    lineWidth_.apply(*view);
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
