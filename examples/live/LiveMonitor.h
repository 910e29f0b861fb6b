#pragma once

#include <QThread>
#include <QTimer>

#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/views/timeline/realTimeDisplayView01.h>
#include <cmath>
#include <memory>
#include <vector>

/// A live display of the last minute of two channels. A worker thread, as one that reads from an instrument or a
/// server, makes samples and hands them to the window's thread, which alone touches the feed and the view.
class LiveMonitor : public xov::realTimeDisplayView01 {
public:
  LiveMonitor() {
    setWvfrmsArray(feed_.records());
    QObject::connect(&redraw_, &QTimer::timeout, this, [this] { showLatest(); });
    redraw_.start(kRedrawMilliseconds);
    worker_->start();
  }
  ~LiveMonitor() override {
    worker_->requestInterruption();
    worker_->wait(); // before the view goes, which the thread's calls are for
  }

  /// Samples that arrived so far.
  qint64 samples() const { return samples_; }

private:
  static constexpr double kSpan = 60;    // seconds
  static constexpr double kDelta = 0.02; // seconds
  static constexpr int kPacket = 10;     // samples
  static constexpr int kPacketMilliseconds = 200;
  static constexpr int kRedrawMilliseconds = 40;

  // In the worker's thread.
  void work() {
    double time = double(QDateTime::currentMSecsSinceEpoch()) / 1000;
    while (!worker_->isInterruptionRequested()) {
      std::vector<float> packet(kPacket);
      for (int i = 0; i < kPacket; ++i)
        packet[std::size_t(i)] = float(std::sin(4 * (time + i * kDelta)) * std::sin(0.7 * (time + i * kDelta)));
      // Queued: runs in the view's thread, and not at all once the view is gone.
      QMetaObject::invokeMethod(
          this, [this, time, packet] { take(time, packet); }, Qt::QueuedConnection);
      time += kPacket * kDelta;
      QThread::msleep(kPacketMilliseconds);
    }
  }

  // In the view's thread from here on.
  void take(double time, const std::vector<float>& packet) {
    for (const char* channel : {"BHZ", "BHN"}) {
      xov::SacHeader header;
      header.knetwk = "XX";
      header.kstnm = "LIVE";
      header.kcmpnm = channel;
      feed_.append(header, time, kDelta, packet);
      samples_ += qint64(packet.size());
    }
  }
  void showLatest() {
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const xov::RealTimeSpan span = feed_.show(now, kSpan, xov::Edge::Right);
    setXLimitsMinMax(span.xmin, span.xmax);
    setRefDate(now);
    update();
  }

  xov::RealTimeFeed feed_{kSpan};
  qint64 samples_ = 0;
  QTimer redraw_;
  std::unique_ptr<QThread> worker_{QThread::create([this] { work(); })};
};
