#include "bench/Archives.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "bench/ProcessCost.h"
#include "bench/Report.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <random>
#include <vector>

namespace xov::bench {

namespace {

constexpr std::size_t kDay = 8640000;

// Counts of a noisy day over and over.
std::shared_ptr<SacSeismogram> recording(std::size_t days) {
  std::mt19937 random(30);
  std::vector<float> samples(days * kDay);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i < kDay ? float(random() % 2001) - 1000 : samples[i - kDay];
  SacHeader header;
  header.delta = 0.01F;
  header.b = 0;
  header.knetwk = "XX";
  header.kstnm = "LONG";
  header.kcmpnm = "HHZ";
  setReferenceTime(header, QDateTime(QDate(2024, 4, 1), QTime(0, 0), Qt::UTC));
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

QString row(const QString& name, const ProcessCost& ours, const ProcessCost& other, double sampleMegabytes) {
  return QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 |\n")
      .arg(name)
      .arg(ours.processorMs, 0, 'f', 0)
      .arg(other.processorMs, 0, 'f', 0)
      .arg(ours.processorMs / other.processorMs, 0, 'f', 2)
      .arg(ours.clockMs, 0, 'f', 0)
      .arg(ours.peakMegabytes, 0, 'f', 0)
      .arg(other.peakMegabytes, 0, 'f', 0)
      .arg(ours.peakMegabytes / sampleMegabytes, 0, 'f', 2);
}

double megabytesOf(std::size_t samples) { return double(samples * sizeof(float)) / kBytesPerMegabyte; }

} // namespace

QString archiveTable(int rounds) {
  const QString xov = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../apps/xov/xov"));
  const QTemporaryDir folder;
  const QString picture = folder.filePath(QStringLiteral("picture.png"));
  const QString tenDays = folder.filePath(QStringLiteral("ten.sac"));
  const QString months[] = {folder.filePath(QStringLiteral("month.sac")),
                            folder.filePath(QStringLiteral("month.mseed"))};
  {
    if (!writeSac(*recording(10), tenDays)) return {};
    const auto month = recording(30);
    if (!writeSac(*month, months[0]) || !writeMiniSeed({month}, months[1])) return {};
  }
  const auto cost = [&](const char* command, const QString& file, const QStringList& options) {
    return leastCost(QStringList{xov, QLatin1String(command), file, QStringLiteral("-o"), picture} + options, rounds);
  };
  const QStringList whole{QStringLiteral("--sample-memory"), QStringLiteral("100000")};
  const QStringList indexed{QStringLiteral("--index-cache"), folder.filePath(QStringLiteral("indexes"))};
  const QStringList window{QStringLiteral("--start"), QStringLiteral("2024-04-17T05:00:00"), QStringLiteral("--end"),
                           QStringLiteral("2024-04-17T05:10:00")};
  QString table =
      QStringLiteral("| 100 Hz | CPU ms | section, read whole: CPU ms | ratio | ms | peak MB | its peak MB "
                     "| peak / samples |\n|---|---:|---:|---:|---:|---:|---:|---:|\n");
  table += row(QStringLiteral("drum of ten days beside a section of them"), cost("drum", tenDays, whole),
               cost("section", tenDays, whole), megabytesOf(10 * kDay));
  const double megabytes = megabytesOf(30 * kDay);
  for (const QString& month : months) {
    const QString kind = month.section(QLatin1Char('.'), -1);
    table += row(
        QStringLiteral("section of a month (%1), index made").arg(kind),
        leastCost({xov, QStringLiteral("section"), month, QStringLiteral("-o"), picture, indexed[0], indexed[1]}, 1),
        cost("section", month, whole), megabytes);
    for (const char* command : {"section", "drum"})
      table += row(QStringLiteral("%1 of a month (%2), index kept").arg(QLatin1String(command), kind),
                   cost(command, month, indexed), cost(command, month, whole), megabytes);
    table += row(QStringLiteral("ten minutes of a month (%1), index kept").arg(kind),
                 cost("section", month, indexed + window), cost("section", month, whole + window), megabytes);
  }
  return table;
}

} // namespace xov::bench
