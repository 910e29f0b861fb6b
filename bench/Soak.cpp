#include "bench/Soak.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "bench/ProcessCost.h"
#include "bench/SoakFiles.h"
#include "bench/Steadiness.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>

namespace xov::bench {

namespace {

constexpr int kStations = 12;
constexpr QRectF kSoakFrame(0, 0, 1600, 900);
constexpr int kMillisecondsPerRedraw = 200;
constexpr double kWarmUp = 0.25;                           // share of the run, in which buffers fill
constexpr qint64 kStalledMs = 30000;                       // without a sample
constexpr std::uint64_t kFnvStart = 14695981039346656037U; // FNV-1a
constexpr std::uint64_t kFnvPrime = 1099511628211U;

QString codesOf(const SacHeader& header) { return header.kstnm.text() + '.' + header.kcmpnm.text(); }

/// The samples of a channel, one behind the other.
struct HeardChannel {
  std::int64_t count = 0;
  std::int64_t lost = 0;
  std::int64_t doubled = 0;
  std::uint64_t sum = kFnvStart;

  void take(double startSeconds, std::span<const float> samples) {
    const std::int64_t place = std::llround((startSeconds - kSoakStart) * kSoakRateHz);
    lost += std::max<std::int64_t>(place - count, 0);
    doubled += std::max<std::int64_t>(count - place, 0);
    for (const float sample : samples)
      sum = (sum ^ std::bit_cast<std::uint32_t>(sample)) * kFnvPrime;
    count = place + std::ssize(samples);
  }
};
using Heard = std::map<QString, HeardChannel>;

Heard heardFromFiles(const QStringList& files) {
  Heard heard;
  for (const QString& path : files) {
    const auto file = readSeismogramFile(path);
    if (!file) qFatal("%s", qPrintable(file.error()));
    for (const auto& record : file->records) {
      const std::span<const float> samples(record->GetSacSeis(), std::size_t(record->npts()));
      heard[codesOf(*record->GetSacHeader())].take(startSeconds(*record).value_or(0), samples);
    }
  }
  return heard;
}

/// Displays keep the shapes of the last thousand texts, and the clock gives them new ones each second: one that has
/// been there for long has got them all.
void drawAThousandClocks() {
  constexpr int kClocks = 1100;
  RealTimeFeed feed(1);
  feed.append(soakHeader(0, kSoakComponents[0]), kSoakStart, 1 / kSoakRateHz, std::vector<float>(10, 1));
  const std::shared_ptr<const SeismogramArray> records = feed.records(); // the feed keeps it
  realTimeDisplayView01 view(QRectF(0, 0, 300, 200));
  view.setWvfrmsArray(records);
  for (int second = 1; second <= kClocks; ++second) {
    view.setRefDate(QDateTime::fromMSecsSinceEpoch(std::llround((kSoakStart - second) * 1000), Qt::UTC));
    if (view.pictureOfRect(view.bounds()).isNull()) qFatal("soak: no picture");
  }
}

/// A client of the server with a display, which is drawn five times a second.
class SoakedDisplay {
public:
  SoakedDisplay(const SeedLinkSettings& settings, double spanSeconds)
      : spanSeconds_(spanSeconds),
        feed_(spanSeconds),
        view_(kSoakFrame),
        client_(settings) {
    const std::shared_ptr<const SeismogramArray> records = feed_.records(); // the feed keeps it
    view_.setWvfrmsArray(records);
    view_.setYLimitsMinMax(-kSoakAmplitude, kSoakAmplitude);
    client_.onRecord([this](const LiveRecord& record) { take(record); });
    client_.onMessage([](const QString& line) { std::fprintf(stderr, "soak: %s\n", qPrintable(line)); });
  }

  /// Returns when that many samples have arrived, or no more come.
  void run(std::int64_t samples) {
    QEventLoop loop;
    QTimer redraw;
    QObject::connect(&redraw, &QTimer::timeout, &loop, [&] {
      if (count_ > 0) redrawNow();
      if (count_ >= samples || silence_.elapsed() > kStalledMs) loop.quit();
    });
    silence_.start();
    client_.start();
    redraw.start(kMillisecondsPerRedraw);
    loop.exec();
    client_.stop();
  }

  const Heard& heard() const { return heard_; }
  const std::vector<Moment>& moments() const { return moments_; }

private:
  void take(const LiveRecord& record) {
    const SacHeader header = record.header();
    feed_.append(header, record.startSeconds(), record.deltaSeconds(), record.samples);
    heard_[codesOf(header)].take(record.startSeconds(), record.samples);
    count_ += std::ssize(record.samples);
    newest_ = std::max(newest_, record.startSeconds() + double(record.samples.size()) * record.deltaSeconds());
    silence_.start();
  }

  void redrawNow() {
    const double start = ownProcessorMs();
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(std::llround(newest_ * 1000), Qt::UTC);
    const RealTimeSpan span = feed_.show(now, spanSeconds_, Edge::Right);
    view_.setXLimitsMinMax(span.xmin, span.xmax);
    view_.setRefDate(now);
    if (view_.pictureOfRect(view_.bounds()).isNull()) qFatal("soak: no picture");
    moments_.push_back(momentNow((newest_ - kSoakStart) / kSecondsPerHour, ownProcessorMs() - start));
  }

  double spanSeconds_;
  RealTimeFeed feed_;
  realTimeDisplayView01 view_;
  Heard heard_;
  std::int64_t count_ = 0;
  double newest_ = 0;
  QElapsedTimer silence_;
  std::vector<Moment> moments_;
  SeedLinkClient client_; // goes first
};

} // namespace

SoakResult soak(double hours, double speed) {
  const QTemporaryDir folder;
  const QStringList files = writeSoakFiles(folder, kStations, hours);
  SeedLinkServerSettings served;
  served.speed = speed;
  SeedLinkServer server(served);
  QByteArray state;
  for (const QString& file : files) {
    if (const Status status = server.addFile(file); !status) qFatal("%s", qPrintable(status.error()));
  }
  for (int station = 0; station < kStations; ++station)
    state += "XX_" + soakStation(station).toLatin1() + " 0 0\n"; // from the beginning on
  if (const Status status = server.listen(); !status) qFatal("%s", qPrintable(status.error()));

  SeedLinkSettings settings;
  settings.server = {QStringLiteral("127.0.0.1"), server.port(), false};
  settings.stations = parseSeedLinkStations(QStringLiteral("XX_*")).value();
  settings.stateFile = folder.filePath(QStringLiteral("state"));
  QFile stateFile(settings.stateFile);
  if (!stateFile.open(QIODevice::WriteOnly) || stateFile.write(state) < 0) qFatal("soak: no state file");
  stateFile.close();
  const auto perChannel = std::int64_t(std::llround(hours * kSecondsPerHour * kSoakRateHz));
  const std::int64_t samples = perChannel * kStations * std::ssize(kSoakComponents);
  drawAThousandClocks();
  SoakedDisplay display(settings, std::min(kSecondsPerHour, hours * kSecondsPerHour * kWarmUp / 2));
  QElapsedTimer clock;
  clock.start();
  const double processor = ownProcessorMs();
  display.run(samples);
  const double seconds = double(clock.elapsed()) / 1e3;
  const double processorSeconds = (ownProcessorMs() - processor) / 1e3;

  std::int64_t lost = 0;
  std::int64_t doubled = 0;
  std::int64_t arrived = 0;
  std::size_t same = 0;
  const Heard expected = heardFromFiles(files);
  for (const auto& [channel, heard] : display.heard()) {
    lost += heard.lost;
    doubled += heard.doubled;
    arrived += heard.count;
    const auto file = expected.find(channel);
    if (file != expected.end() && file->second.sum == heard.sum && file->second.count == heard.count) ++same;
  }
  lost += samples - arrived;

  SoakResult result;
  result.isComplete = lost == 0 && doubled == 0 && same == expected.size() && arrived == samples;
  result.table =
      QStringLiteral("| soak | seconds | CPU s | samples | lost | doubled | channels as the files have them ") +
      steadinessHeading("day", "redraw") + QStringLiteral("\n|---") + QStringLiteral("|---:").repeated(14) +
      QStringLiteral("|\n") +
      QString::asprintf("| %g h at %g x | %.0f | %.1f | %lld | %lld | %lld | %zu of %zu ", hours, speed, seconds,
                        processorSeconds, static_cast<long long>(arrived), static_cast<long long>(lost),
                        static_cast<long long>(doubled), same, expected.size()) +
      steadinessRow(steadiness(display.moments(), hours * kWarmUp, kHoursPerDay)) + QLatin1Char('\n');
  return result;
}

} // namespace xov::bench
