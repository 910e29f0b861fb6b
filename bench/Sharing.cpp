#include "bench/Sharing.h"

#include "XOV_Graphics/base/Threads.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/views/image/XOVImageView.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "bench/Contest.h"
#include "bench/Engines.h"
#include "bench/LiveDisplay.h"
#include "bench/Records.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace xov::bench {

namespace {

constexpr const char* kWorks[] = {"W1", "W2", "W3", "W5", "W8"};
constexpr int kShortRounds = 60; // of works of a few milliseconds, whose least times take longer to be met

double least(const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); }

constexpr int kCells = 8192; // a side
constexpr int kPieces = 8640;

GridFloats gridOfNoise() {
  std::mt19937 random(2009);
  std::vector<float> cells(std::size_t(kCells) * kCells);
  std::generate(cells.begin(), cells.end(), [&] { return float(random() % 4096) - 1000; });
  return std::make_shared<const std::vector<float>>(std::move(cells));
}

void showNewGrid(const GridFloats& cells) {
  XOVImageView view(QRectF(0, 0, 900, 600));
  view.setXLimitsMinMax(0, kCells);
  view.setYLimitsMinMax(0, kCells);
  view.setupImageDataNROWSNCOLS(cells, kCells, kCells);
}

// Files of noise in Steim 2; the last one is long.
QStringList writeRecords(const QDir& folder) {
  constexpr int kFiles = 20;
  constexpr std::size_t kShort = 400000, kLong = 8000000;
  std::mt19937 random(2009);
  QStringList paths;
  for (int k = 0; k <= kFiles; ++k) {
    std::vector<float> samples(k < kFiles ? kShort : kLong);
    for (float& sample : samples)
      sample = float(random() % 1000) - 500;
    SacHeader header;
    header.delta = 0.01F;
    header.b = 0;
    header.nzyear = 2024;
    header.nzjday = 100;
    header.nzhour = header.nzmin = header.nzsec = header.nzmsec = 0;
    header.kstnm = std::string_view("NOISE");
    const QString path = folder.filePath(QString::number(k));
    const auto record = std::make_shared<SacSeismogram>(header, std::move(samples));
    if (writeMiniSeed({record}, path)) paths.append(path);
  }
  return paths;
}

QString row(const char* name, const Contest& one, const Contest& two) {
  const double alone = least(one.milliseconds), shared = least(two.milliseconds);
  return QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |\n")
      .arg(QString::fromUtf8(name))
      .arg(alone, 0, 'f', 2)
      .arg(shared, 0, 'f', 2)
      .arg(alone / shared, 0, 'f', 2)
      .arg(least(one.processorMilliseconds), 0, 'f', 2)
      .arg(least(two.processorMilliseconds), 0, 'f', 2);
}

QString measured(const char* name, const std::function<void()>& work, int rounds) {
  const auto with = [&work](int threads) {
    return [&work, threads] {
      setThreadCount(threads);
      work();
    };
  };
  std::vector<Contest> contests = {{name, with(1)}, {name, with(2)}};
  runInTurn(contests, rounds);
  return row(name, contests[0], contests[1]);
}

} // namespace

QString sharingTable(int rounds) {
  const int before = threadCount();
  QString text = QStringLiteral("| work | 1 thread: ms | 2 threads: ms | times as fast | CPU ms | CPU ms with 2 |\n"
                                "|---|---:|---:|---:|---:|---:|\n");
  for (const char* name : kWorks) {
    const Work work = makeWork(name);
    const Engine& xov = *engineNamed("xov");
    Drawn drawn;
    text += measured(
        name, [&] { drawn = xov.draw(work); }, std::max(rounds, kShortRounds));
  }
  const GridFloats cells = gridOfNoise();
  text += measured(
      "8192 × 8192 cells, new view", [&] { showNewGrid(cells); }, rounds);
  const QImage picture = engineNamed("xov")->draw(makeWork("W3@2")).image;
  text += measured(
      "PNG of W3 at two pixels a point", [&] { encodeImage(picture, ImageFormat::Png); }, rounds);
  const auto pieces = dayInPieces(kPieces);
  helicorderView drum(QRectF(0, 0, 900, 600));
  drum.setWvfrmArray(pieces);
  text += measured(
      "drum of a day in 8,640 pieces", [&] { drum.pictureOfRect(drum.bounds()); }, std::max(rounds, kShortRounds));
  const QTemporaryDir folder;
  QStringList files = writeRecords(QDir(folder.path()));
  if (files.isEmpty()) return text;
  const QString longest = files.takeLast();
  std::size_t records = 0;
  text += measured(
      "20 files of miniSEED, 400,000 samples each", [&] { records += readSeismogramFiles(files).size(); }, rounds);
  text += measured(
      "one of 8 million samples", [&] { records += readSeismogramFile(longest)->records.size(); }, rounds);
  for (const std::string& name : liveDisplayNames())
    text += measured(name.c_str(), liveRedraws(name), std::max(rounds, kShortRounds));
  setThreadCount(before);
  return text;
}

} // namespace xov::bench
