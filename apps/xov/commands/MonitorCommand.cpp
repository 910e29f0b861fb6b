#include "apps/xov/commands/MonitorCommand.h"

#include "apps/xov/inputs/Validators.h"

#include <QElapsedTimer>
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

} // namespace

void MonitorCommand::addOptions(CLI::App& options) {
  inputs_.addOptions(options, "FILES,--replay");
  options.add_option("--speed", speed_, "Recorded seconds a second (default 1)")
      ->type_name("N")
      ->check(numberAboveZero())
      ->check(numberFromTo(0, kLargestSpeed));
  options.add_option("--span", spanSeconds_, "Seconds on the display (default 600)")
      ->type_name("S")
      ->check(numberFromTo(kShortestSpan, kLongestSpan));
  options.add_option("--origin", origin_, "Edge that minutes count from: right (now, the default) or left")
      ->type_name("EDGE")
      ->check(oneOf({kLeft, "right"}));
  options.add_option("--gain", gain_, "Enlarge traces by this factor (default 1)")
      ->type_name("G")
      ->check(numberAboveZero());
  options.add_option("--at", at_, "Begin at this recorded time (UTC); with -o, show this moment")
      ->type_name("TIME")
      ->check(utcTime());
  options.add_flag("--zone-name", zoneName_, "Write the local time with the name of its zone");
  events_.addOptions(options);
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options);
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
