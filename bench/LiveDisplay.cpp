#include "bench/LiveDisplay.h"

#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "bench/ProcessCost.h"
#include "bench/RivalProcess.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

namespace xov::bench {

namespace {

struct Display {
  const char* name;
  int channels;
};

constexpr Display kDisplays[] = {{"W7-12", 12}, {"W7-36", 36}};

constexpr QRectF kFrame(0, 0, 1600, 900);
constexpr double kSpanS = 3600;
constexpr double kRateHz = 100;
constexpr double kFramesPerSecond = 60;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kStartS = 1.3e9; // since 1970
constexpr float kAmplitude = 3;   // a band's half height; noise stays within a third of it

const Display* displayNamed(const std::string& name) {
  const auto* const found = std::ranges::find(kDisplays, name, [](const Display& d) { return std::string(d.name); });
  return found == std::end(kDisplays) ? nullptr : found;
}

SacHeader headerOf(int channel) {
  SacHeader header;
  header.knetwk = "XX";
  std::string station(1, 'S');
  station += std::to_string(channel);
  header.kstnm = SacText<8>(station);
  header.kcmpnm = "HHZ";
  return header;
}

// Channels that noise arrives at.
class Source {
public:
  explicit Source(int channels) : feed_(kSpanS) {
    for (int i = 0; i < channels; ++i)
      headers_.push_back(headerOf(i));
  }

  RealTimeFeed& feed() { return feed_; }

  /// Lets everything arrive up to that many samples since the start.
  void arriveUpTo(std::int64_t sample) {
    std::vector<float> samples(std::size_t(sample - arrived_));
    for (const SacHeader& header : headers_) {
      for (float& value : samples)
        value = noise_(random_);
      feed_.append(header, kStartS + double(arrived_) / kRateHz, 1 / kRateHz, samples);
    }
    arrived_ = sample;
  }

private:
  RealTimeFeed feed_;
  std::vector<SacHeader> headers_;
  std::mt19937 random_{7};
  std::uniform_real_distribution<float> noise_{-1, 1};
  std::int64_t arrived_ = 0;
};

// A display that has been drawn once with its whole span.
class LiveDisplay {
public:
  explicit LiveDisplay(int channels) : source_(channels), view_(kFrame) {
    records_ = source_.feed().records();
    view_.setWvfrmsArray(records_);
    view_.setYLimitsMinMax(-kAmplitude, kAmplitude);
    redraw();
  }

  /// Draws the next frame; returns milliseconds.
  double redraw() {
    const double seconds = kSpanS + frame_++ / kFramesPerSecond;
    QElapsedTimer timer;
    timer.start();
    source_.arriveUpTo(std::int64_t(seconds * kRateHz));
    const QDateTime now =
        QDateTime::fromMSecsSinceEpoch(qint64((kStartS + seconds) * kMillisecondsPerSecond), Qt::UTC);
    const RealTimeSpan span = source_.feed().show(now, kSpanS, Edge::Right);
    view_.setXLimitsMinMax(span.xmin, span.xmax);
    view_.setRefDate(now);
    const QImage picture = view_.pictureOfRect(view_.bounds());
    return picture.isNull() ? 0 : double(timer.nsecsElapsed()) / 1e6;
  }

private:
  Source source_;
  realTimeDisplayView01 view_;
  std::shared_ptr<const SeismogramArray> records_;
  int frame_ = 0;
};

} // namespace

std::vector<std::string> liveDisplayNames() {
  std::vector<std::string> names;
  for (const Display& display : kDisplays)
    names.emplace_back(display.name);
  return names;
}

bool isLiveDisplay(const std::string& name) { return displayNamed(name) != nullptr; }

std::function<void()> liveRedraws(const std::string& name) {
  const Display* const display = displayNamed(name);
  if (display == nullptr) return {};
  return [live = std::make_shared<LiveDisplay>(display->channels)] { live->redraw(); };
}

Measurement measureLiveDisplay(const std::string& name, int redraws) {
  Measurement measurement;
  measurement.work = name;
  measurement.engine = "xov";
  const Display* const display = displayNamed(name);
  if (display == nullptr || redraws < 1) return measurement;
  LiveDisplay live(display->channels);
  std::vector<double> times;
  const double start = ownProcessorMs();
  for (int i = 0; i < redraws; ++i)
    times.push_back(live.redraw());
  measurement.processorMilliseconds = (ownProcessorMs() - start) / redraws;
  std::ranges::sort(times);
  measurement.milliseconds = times[times.size() / 2];
  measurement.fastest = times.front();
  measurement.slowest = times.back();
  measurement.rounds = redraws;
  measurement.sampleMegabytes = display->channels * kSpanS * kRateHz * sizeof(float) / kBytesPerMegabyte;
  measurement.peakMegabytes = peakMegabytesOf(QCoreApplication::applicationPid());
  return measurement;
}

QString frameShares(const std::vector<Measurement>& measurements) {
  QString text;
  for (const Measurement& m : measurements) {
    if (!isLiveDisplay(m.work) || !m.milliseconds) continue;
    const double share = *m.milliseconds * kFramesPerSecond / kMillisecondsPerSecond;
    text += QString::asprintf("%s: a redraw takes %.0f %% of a frame at 60 frames a second\n", m.work.c_str(),
                              share * 100);
  }
  return text;
}

} // namespace xov::bench
