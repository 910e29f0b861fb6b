#include "bench/SoakFiles.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "examples/synthetic/SiteNoise.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace xov::bench {

namespace {

constexpr double kNoiseNm = 300; // root mean square

} // namespace

QString soakStation(int station) { return QStringLiteral("S%1").arg(station, 2, 10, QLatin1Char('0')); }

SacHeader soakHeader(int station, const char* component) {
  SacHeader header;
  header.knetwk = kSoakNetwork;
  header.kstnm = SacText<8>(soakStation(station).toStdString());
  header.kcmpnm = SacText<8>(component);
  header.delta = float(1 / kSoakRateHz);
  return header;
}

QStringList writeSoakFiles(const QTemporaryDir& folder, int stations, double hours) {
  struct Channel {
    SacHeader header;
    synthetic::SiteNoise noise;
  };
  std::vector<Channel> channels;
  std::uint64_t seed = 1;
  for (int station = 0; station < stations; ++station) {
    for (const char* component : kSoakComponents) {
      const auto sensor =
          component == kSoakComponents[0] ? synthetic::Sensor::Vertical : synthetic::Sensor::Horizontal;
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

} // namespace xov::bench
