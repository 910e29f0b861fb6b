#include "bench/Soak.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "bench/Report.h"
#include "examples/synthetic/SiteNoise.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <bit>
#include <cmath>
#include <ctime>
#include <map>
#include <unistd.h>

namespace xov::bench {

namespace {

constexpr int kStations = 12;
constexpr const char* kComponents[] = {"HHZ", "HHN", "HHE"};
constexpr double kSoakRateHz = 100;
constexpr double kSoakStart = 1.6e9; // since 1970: 2020-09-13T12:26:40Z
constexpr double kNoiseNm = 300;     // root mean square; samples are whole numbers of nm/s
constexpr float kSoakAmplitude = 1500;
constexpr QRectF kSoakFrame(0, 0, 1600, 900);
constexpr double kSecondsPerHour = 3600;
constexpr double kHoursPerDay = 24;
constexpr int kMillisecondsPerRedraw = 200;
constexpr double kWarmUp = 0.25;                           // share of the run, in which buffers fill
constexpr qint64 kStalledMs = 30000;                       // without a sample
constexpr std::uint64_t kFnvStart = 14695981039346656037U; // FNV-1a
constexpr std::uint64_t kFnvPrime = 1099511628211U;

QString stationName(int station) { return QStringLiteral("S%1").arg(station, 2, 10, QLatin1Char('0')); }

SacHeader soakHeader(int station, const char* component) {
  SacHeader header;
  header.knetwk = "XX";
  header.kstnm = SacText<8>(stationName(station).toStdString());
  header.kcmpnm = SacText<8>(component);
  header.delta = float(1 / kSoakRateHz);
  return header;
}

QString codesOf(const SacHeader& header) { return header.kstnm.text() + '.' + header.kcmpnm.text(); }

/// A file an hour, as a recorder that is on the air leaves them.
QStringList writeSoakFiles(const QTemporaryDir& folder, double hours) {
  struct Channel {
    SacHeader header;
    synthetic::SiteNoise noise;
  };
  std::vector<Channel> channels;
  std::uint64_t seed = 1;
  for (int station = 0; station < kStations; ++station) {
    for (const char* component : kComponents) {
      const auto sensor = component == kComponents[0] ? synthetic::Sensor::Vertical : synthetic::Sensor::Horizontal;
      channels.push_back({soakHeader(station, component), {sensor, kNoiseNm, kSoakRateHz, seed}});
      seed += 10; // a noise has several
    }
  }
  QStringList files;
  const auto total = std::int64_t(std::llround(hours * kSecondsPerHour * kSoakRateHz));
  const auto anHour = std::int64_t(kSecondsPerHour * kSoakRateHz);
  for (std::int64_t first = 0; first < total; first += anHour) {
    SeismogramArray records;
    for (Channel& channel : channels) {
      std::vector<float> samples(std::size_t(std::min(anHour, total - first)));
      for (float& sample : samples)
        sample = float(std::round(channel.noise.next()));
      setReferenceTime(channel.header, QDateTime::fromMSecsSinceEpoch(
                                           std::llround((kSoakStart + double(first) / kSoakRateHz) * 1000), Qt::UTC));
      channel.header.b = 0;
      channel.header.npts = int(samples.size());
      records.push_back(std::make_shared<SacSeismogram>(channel.header, std::move(samples)));
    }
    files.append(folder.filePath(QStringLiteral("hour-%1.mseed").arg(files.size(), 3, 10, QLatin1Char('0'))));
    if (const Status status = writeMiniSeed(records, files.back()); !status) qFatal("%s", qPrintable(status.error()));
  }
  return files;
}

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

/// Memory that this process has now, in megabytes.
double residentMegabytes() {
  QFile file(QStringLiteral("/proc/self/statm"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / kBytesPerMegabyte;
}

struct Moment {
  double hours = 0; // of the recording
  double megabytes = 0;
  double redrawMilliseconds = 0; // of the processor
};

/// Displays keep the shapes of the last thousand texts, and the clock gives them new ones each second: one that has
/// been there for long has got them all.
void drawAThousandClocks() {
  constexpr int kClocks = 1100;
  RealTimeFeed feed(1);
  feed.append(soakHeader(0, kComponents[0]), kSoakStart, 1 / kSoakRateHz, std::vector<float>(10, 1));
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
    const std::clock_t start = std::clock();
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(std::llround(newest_ * 1000), Qt::UTC);
    const RealTimeSpan span = feed_.show(now, spanSeconds_, Edge::Right);
    view_.setXLimitsMinMax(span.xmin, span.xmax);
    view_.setRefDate(now);
    if (view_.pictureOfRect(view_.bounds()).isNull()) qFatal("soak: no picture");
    moments_.push_back({(newest_ - kSoakStart) / kSecondsPerHour, residentMegabytes(),
                        1e3 * double(std::clock() - start) / CLOCKS_PER_SEC});
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

/// By how many megabytes memory grows a recorded day: the straight line that fits best.
double growthPerDay(std::span<const Moment> moments) {
  double hours = 0;
  double megabytes = 0;
  for (const Moment& m : moments) {
    hours += m.hours / double(moments.size());
    megabytes += m.megabytes / double(moments.size());
  }
  double above = 0;
  double below = 0;
  for (const Moment& m : moments) {
    above += (m.hours - hours) * (m.megabytes - megabytes);
    below += (m.hours - hours) * (m.hours - hours);
  }
  return below > 0 ? above / below * kHoursPerDay : 0;
}

double medianRedraw(std::span<const Moment> moments) {
  std::vector<double> times;
  for (const Moment& m : moments)
    times.push_back(m.redrawMilliseconds);
  if (times.empty()) return 0;
  std::ranges::nth_element(times, times.begin() + std::ptrdiff_t(times.size() / 2));
  return times[times.size() / 2];
}

} // namespace

SoakResult soak(double hours, double speed) {
  const QTemporaryDir folder;
  const QStringList files = writeSoakFiles(folder, hours);
  SeedLinkServerSettings served;
  served.speed = speed;
  SeedLinkServer server(served);
  QByteArray state;
  for (const QString& file : files) {
    if (const Status status = server.addFile(file); !status) qFatal("%s", qPrintable(status.error()));
  }
  for (int station = 0; station < kStations; ++station)
    state += "XX_" + stationName(station).toLatin1() + " 0 0\n"; // from the beginning on
  if (const Status status = server.listen(); !status) qFatal("%s", qPrintable(status.error()));

  SeedLinkSettings settings;
  settings.server = {QStringLiteral("127.0.0.1"), server.port(), false};
  settings.stations = parseSeedLinkStations(QStringLiteral("XX_*")).value();
  settings.stateFile = folder.filePath(QStringLiteral("state"));
  QFile stateFile(settings.stateFile);
  if (!stateFile.open(QIODevice::WriteOnly) || stateFile.write(state) < 0) qFatal("soak: no state file");
  stateFile.close();
  const auto perChannel = std::int64_t(std::llround(hours * kSecondsPerHour * kSoakRateHz));
  const std::int64_t samples = perChannel * kStations * std::ssize(kComponents);
  drawAThousandClocks();
  SoakedDisplay display(settings, std::min(kSecondsPerHour, hours * kSecondsPerHour * kWarmUp / 2));
  QElapsedTimer clock;
  clock.start();
  const std::clock_t processor = std::clock();
  display.run(samples);
  const double seconds = double(clock.elapsed()) / 1e3;
  const double processorSeconds = double(std::clock() - processor) / CLOCKS_PER_SEC;

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

  const std::vector<Moment>& all = display.moments();
  const auto warm = std::ranges::find_if(all, [&](const Moment& m) { return m.hours >= hours * kWarmUp; });
  const std::span<const Moment> measured(warm, all.end());
  const std::size_t quarter = std::max<std::size_t>(measured.size() / 4, 1);
  const double first = measured.empty() ? 0 : medianRedraw(measured.first(quarter));
  const double last = measured.empty() ? 0 : medianRedraw(measured.last(quarter));
  SoakResult result;
  result.isComplete = lost == 0 && doubled == 0 && same == expected.size() && arrived == samples;
  result.table = QString::asprintf(
      "| soak | seconds | CPU s | samples | lost | doubled | channels as the files have them | MB when warm | MB at "
      "the "
      "end | MB a day | redraws | CPU ms of the first quarter | of the last |\n"
      "|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n"
      "| %g h at %g x | %.0f | %.1f | %lld | %lld | %lld | %zu of %zu | %.1f | %.1f | %+.2f | %zu | %.1f | %.1f |\n",
      hours, speed, seconds, processorSeconds, static_cast<long long>(arrived), static_cast<long long>(lost),
      static_cast<long long>(doubled), same, expected.size(), measured.empty() ? 0 : measured.front().megabytes,
      measured.empty() ? 0 : measured.back().megabytes, growthPerDay(measured), measured.size(), first, last);
  return result;
}

} // namespace xov::bench
