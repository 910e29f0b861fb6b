#include "bench/Smallest.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "bench/ProcessCost.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <cmath>
#include <vector>

namespace xov::bench {

namespace {

constexpr std::size_t kSamples = 1000;

bool writeRecord(const QString& path) {
  std::vector<float> samples(kSamples);
  for (std::size_t i = 0; i < kSamples; ++i)
    samples[i] = float(std::sin(0.05 * double(i)) * std::exp(-0.003 * double(i)));
  SacHeader header;
  header.delta = 0.01F;
  header.b = 0;
  return bool(writeSac(SacSeismogram(header, std::move(samples)), path));
}

bool writePixels(const QImage& picture, const QString& path) {
  const QImage pixels = picture.convertToFormat(QImage::Format_RGB888);
  QFile file(path);
  if (pixels.isNull() || !file.open(QIODevice::WriteOnly)) return false;
  for (int row = 0; row < pixels.height(); ++row) {
    const qint64 bytes = 3 * qint64(pixels.width());
    if (file.write(reinterpret_cast<const char*>(pixels.constScanLine(row)), bytes) != bytes) return false;
  }
  return true;
}

} // namespace

QString smallestTable(int rounds) {
  const QDir programs(QCoreApplication::applicationDirPath());
  const QTemporaryDir folder;
  const QString record = folder.filePath(QStringLiteral("small.sac"));
  const QString picture = folder.filePath(QStringLiteral("picture.png"));
  const QString pixels = folder.filePath(QStringLiteral("pixels"));
  const QStringList ours{programs.filePath(QStringLiteral("../apps/xov/xov")), QStringLiteral("section"), record,
                         QStringLiteral("-o"), picture};
  if (!writeRecord(record) || !(costOf(ours).clockMs > 0)) return {};
  const QImage drawn(picture);
  if (!writePixels(drawn, pixels)) return {};
  const QStringList qt{programs.filePath(QStringLiteral("xov_bench_qt")), pixels, QString::number(drawn.width()),
                       QString::number(drawn.height()), folder.filePath(QStringLiteral("qt.png"))};
  ProcessCost least, leastOfQt;
  constexpr int kRunsARound = 5;
  for (int run = 0; run < rounds * kRunsARound; ++run) {
    least = lesser(least, costOf(ours));
    leastOfQt = lesser(leastOfQt, costOf(qt));
  }
  return QStringLiteral("| %1 × %2 pixels | CPU ms | Qt alone: CPU ms | ratio | ms | its ms | ratio |\n"
                        "|---|---:|---:|---:|---:|---:|---:|\n"
                        "| section of a record of %3 samples, written by `xov` | ")
             .arg(drawn.width())
             .arg(drawn.height())
             .arg(kSamples) +
         QStringLiteral("%1 | %2 | %3 | %4 | %5 | %6 |\n")
             .arg(least.processorMs, 0, 'f', 1)
             .arg(leastOfQt.processorMs, 0, 'f', 1)
             .arg(least.processorMs / leastOfQt.processorMs, 0, 'f', 2)
             .arg(least.clockMs, 0, 'f', 1)
             .arg(leastOfQt.clockMs, 0, 'f', 1)
             .arg(least.clockMs / leastOfQt.clockMs, 0, 'f', 2);
}

} // namespace xov::bench
