#include "XOV_Graphics/seismic/realtime/EventWatch.h"

#include "XOV_Graphics/seismic/realtime/CallsBack.h"
#include "XOV_Graphics/seismic/realtime/EventFiles.h"
#include "XOV_Graphics/seismic/realtime/TimerMilliseconds.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QTimer>

#include <algorithm>

namespace xov {

namespace {

// A folder that somebody copies a thousand files into tells of each.
constexpr int kGatherMs = 20;
// What a display may wait for between two redraws.
constexpr qint64 kReadAtOnceMs = 10;

} // namespace

class EventWatch::Private : public CallsBack {
public:
  explicit Private(EventWatchSettings settings)
      : settings_(std::move(settings)),
        files_(settings_.path, {settings_.mostFiles, settings_.mostEvents}) {
    for (QTimer* timer : {&gather_, &poll_, &read_})
      timer->setSingleShot(true);
    for (const auto signal : {&QFileSystemWatcher::fileChanged, &QFileSystemWatcher::directoryChanged})
      connect(&system_, signal, this, [this] { lookSoon(); });
    for (QTimer* timer : {&gather_, &poll_})
      connect(timer, &QTimer::timeout, this, [this] { look(); });
    connect(&read_, &QTimer::timeout, this, [this] { read(); });
  }

  void start() {
    if (isStarted_) return;
    isStarted_ = true;
    look();
  }

  void stop() override {
    isStarted_ = false;
    for (QTimer* timer : {&gather_, &poll_, &read_})
      timer->stop();
  }

  bool isUpToDate() const { return isStarted_ && hasLooked_ && !files_.hasUnread() && !gather_.isActive(); }

  std::function<void(const HypocentreArray&)> take_;
  std::function<void(const QString&)> tell_;

private:
  void lookSoon() {
    if (isStarted_ && !gather_.isActive()) gather_.start(kGatherMs);
  }

  // A file that another one takes the place of is lost to the system's watch; so is a folder.
  void watchPaths() {
    const QFileInfo path(settings_.path);
    QStringList paths(path.filePath());
    if (!path.isDir()) paths.append(path.path());
    for (const QString& each : paths) {
      const bool isKnown = system_.files().contains(each) || system_.directories().contains(each);
      if (!isKnown && QFileInfo::exists(each)) system_.addPath(each);
    }
  }

  void look() {
    hasLooked_ = true;
    gather_.stop();
    watchPaths();
    files_.look(QDateTime::currentMSecsSinceEpoch(), timerMilliseconds(settings_.settleSeconds));
    read();
  }

  void read() {
    QElapsedTimer clock;
    clock.start();
    while (files_.hasUnread() && clock.elapsed() < kReadAtOnceMs)
      files_.readNext(QDateTime::currentMSecsSinceEpoch());
    const double pause =
        files_.isUnsettled() ? std::min(settings_.settleSeconds, settings_.pollSeconds) : settings_.pollSeconds;
    poll_.start(timerMilliseconds(pause));
    if (files_.hasUnread()) read_.start(0);
    tell();
  }

  // Either callback may stop the watch, or destroy it.
  void tell() {
    for (const QString& line : files_.takeMessages())
      call(tell_, line);
    if (files_.takeChanged()) call(take_, files_.events());
  }

  EventWatchSettings settings_;
  EventFiles files_;
  bool isStarted_ = false;
  bool hasLooked_ = false;
  QFileSystemWatcher system_;
  QTimer gather_, poll_, read_;
};

EventWatch::EventWatch(EventWatchSettings settings) : d_(std::make_unique<Private>(std::move(settings))) {}
EventWatch::~EventWatch() { Private::leave(d_); }

void EventWatch::onEvents(std::function<void(const HypocentreArray&)> take) { d_->take_ = std::move(take); }
void EventWatch::onMessage(std::function<void(const QString&)> take) { d_->tell_ = std::move(take); }
void EventWatch::start() { d_->start(); }
void EventWatch::stop() { d_->stop(); }
bool EventWatch::isUpToDate() const { return d_->isUpToDate(); }

} // namespace xov
