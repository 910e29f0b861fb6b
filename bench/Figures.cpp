#include "bench/Figures.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "apps/xov/commands/CommandLine.h"
#include "bench/ProcessCost.h"
#include "bench/Steadiness.h"

#include <QDateTime>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <array>
#include <cmath>
#include <cstdio>

namespace xov::bench {

namespace {

constexpr std::size_t kSamples = 6000;
constexpr double kWarmShare = 0.1;
constexpr double kThousand = 1000;
constexpr std::array kFormats = {"pdf", "png", "tif", "svg", "jpg"};

std::string writeRecord(const QTemporaryDir& folder, const char* component) {
  std::vector<float> samples(kSamples);
  for (std::size_t i = 0; i < kSamples; ++i)
    samples[i] = float(1000 * std::sin(0.05 * double(i)) * std::exp(-0.001 * double(i)));
  SacHeader header;
  header.delta = 0.01F;
  header.b = 0;
  header.knetwk = "XX";
  header.kstnm = "FIG";
  header.kcmpnm = component;
  setReferenceTime(header, QDateTime(QDate(2024, 4, 1), QTime(0, 0), Qt::UTC));
  const QString path = folder.filePath(QLatin1String(component) + ".sac");
  return writeSac(SacSeismogram(header, std::move(samples)), path) ? path.toStdString() : std::string();
}

std::string writeTable(const QTemporaryDir& folder) {
  QFile file(folder.filePath(QStringLiteral("table.csv")));
  if (!file.open(QIODevice::WriteOnly)) return {};
  file.write("x,y\n");
  for (int i = 0; i < 500; ++i)
    file.write(QByteArray::number(i) + ',' + QByteArray::number(std::sin(0.1 * i)) + '\n');
  return file.fileName().toStdString();
}

using Words = std::vector<std::string>;

std::vector<Words> commands(const QTemporaryDir& folder) {
  const std::string z = writeRecord(folder, "BHZ");
  const std::string n = writeRecord(folder, "BHN");
  const std::string e = writeRecord(folder, "BHE");
  const std::string table = writeTable(folder);
  return {{"section", z, n, e}, {"drum", z},     {"three", z, n, e},  {"panels", z, n}, {"stack", z, n, e},
          {"spectrogram", z},   {"spectrum", z}, {"motion", z, n, e}, {"xy", table},    {"hist", table}};
}

} // namespace

QString figuresTable(int count) {
  QLoggingCategory::setFilterRules(QStringLiteral("xov.info=false"));
  const QTemporaryDir folder;
  const std::vector<Words> kinds = commands(folder);
  std::vector<Moment> moments;
  const double begin = ownProcessorMs();
  for (int i = 0; i < count; ++i) {
    Words words = kinds[std::size_t(i) % kinds.size()];
    // So that each kind is written in each format.
    const std::size_t format = (std::size_t(i) + std::size_t(i) / kinds.size()) % kFormats.size();
    words.insert(words.end(),
                 {"-q", "-o", folder.filePath(QStringLiteral("figure.")).toStdString() + kFormats[format]});
    const double start = ownProcessorMs();
    if (cli::CommandLine().run(words) != cli::ExitCode::Ok) {
      std::fprintf(stderr, "xov_bench: no figure of %s\n", words.front().c_str());
      return {};
    }
    moments.push_back(momentNow(i, ownProcessorMs() - start));
  }
  return QStringLiteral("| figures | CPU s ") + steadinessHeading("thousand", "figure") + QStringLiteral("\n") +
         QStringLiteral("|---:").repeated(10) + QStringLiteral("|\n") +
         QString::asprintf("| %d | %.0f ", count, (ownProcessorMs() - begin) / 1e3) +
         steadinessRow(steadiness(moments, kWarmShare * count, kThousand)) + QLatin1Char('\n');
}

} // namespace xov::bench
