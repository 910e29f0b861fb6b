#include "bench/Navigation.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/prepare/RecordWindow.h"
#include "XOV_Graphics/views/navigation/PlotNavigator.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "bench/Contest.h"

#include <QCoreApplication>
#include <QWheelEvent>

#include <limits>
#include <random>
#include <vector>

namespace xov::bench {

namespace {

constexpr QRectF kWindow(0, 0, 1600, 900);
constexpr std::size_t kNoisyDay = 8640000; // samples at 100 Hz
constexpr double kFrameMs = 1000.0 / 60;
constexpr int kWheelNotch = 120;

// Counts of a noisy day over and over.
std::shared_ptr<SacSeismogram> noisyRecording(std::size_t count) {
  std::mt19937 random(30);
  std::vector<float> samples(count);
  for (std::size_t i = 0; i < count; ++i)
    samples[i] = i < kNoisyDay ? float(random() % 2001) - 1000 : samples[i - kNoisyDay];
  SacHeader header;
  header.delta = 0.01F;
  header.b = 0;
  header.kstnm = "LONG";
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

// A section that the wheel zooms in and out again, about a third of its width.
class WheeledSection {
public:
  explicit WheeledSection(SeismogramArray records)
      : records_(std::make_shared<SeismogramArray>(std::move(records))),
        view_(kWindow) {
    view_.setWvfrmsArray(records_);
    view_.pictureOfRect(view_.bounds());
    new PlotNavigator(&view_);
  }

  void turn() {
    zoomsIn_ = !zoomsIn_;
    const QPointF at(kWindow.width() / 3, kWindow.height() / 2);
    QWheelEvent event(at, at, {}, {0, zoomsIn_ ? kWheelNotch : -kWheelNotch}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view_, &event);
    view_.pictureOfRect(view_.bounds());
  }

private:
  std::shared_ptr<SeismogramArray> records_;
  MultiSeisView view_;
  bool zoomsIn_ = false;
};

QString wheelRow(const QString& name, const Contest& contest, double limitMs) {
  const double ms = median(contest.milliseconds);
  return QStringLiteral("| %1 | %2 | %3 | %4 | %5 |\n")
      .arg(name)
      .arg(median(contest.processorMilliseconds), 0, 'f', 1)
      .arg(ms, 0, 'f', 1)
      .arg(limitMs, 0, 'f', 1)
      .arg(ms / limitMs, 0, 'f', 2);
}

QString timedRow(const char* name, SeismogramArray records, int rounds, double limitMs) {
  WheeledSection section(std::move(records));
  std::vector<Contest> contests = {{name, [&] { section.turn(); }}};
  runInTurn(contests, rounds);
  return wheelRow(QLatin1String(name), contests.front(), limitMs);
}

} // namespace

QString navigationTable(int rounds) {
  QString text = QStringLiteral("| wheel to picture, 1600 x 900 | CPU ms | ms | limit ms | ms / limit |\n"
                                "|---|---:|---:|---:|---:|\n");
  // Four fifths of them are 10 million.
  text += timedRow("10 to 12.5 million samples", {noisyRecording(12500000)}, rounds, kFrameMs);
  // The samples of three channels share their memory, but each is drawn for itself.
  const auto month = noisyRecording(30 * kNoisyDay);
  constexpr double kOpen = std::numeric_limits<double>::infinity();
  text += timedRow(
      "a month of three channels at 100 Hz",
      {month, std::make_shared<RecordWindow>(month, 1, kOpen), std::make_shared<RecordWindow>(month, 2, kOpen)},
      rounds, 2 * kFrameMs);
  return text;
}

} // namespace xov::bench
