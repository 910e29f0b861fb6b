#include "bench/Desk.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/views/base/XOVView.h"
#include "apps/desk/files/FilesPanel.h"
#include "apps/desk/panes/Pane.h"
#include "apps/xov/commands/CommandLine.h"
#include "bench/Contest.h"

#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QTemporaryDir>

#include <cstdio>
#include <random>

namespace xov::bench {

namespace {

constexpr int kFiles = 1000;
constexpr double kListLimitMs = 2000;
constexpr double kDayLimit = 2; // times the program of Qt alone
constexpr int kDayRows = 24;
constexpr int kDaySamples = 8640000;
constexpr QSize kDayPicture(1200, 800);
const QList<QStringList> kDaySteps{
    {QStringLiteral("--filter"), QStringLiteral("bandpass"), QStringLiteral("1"), QStringLiteral("5")}};

std::shared_ptr<SacSeismogram> noiseOf(int count) {
  std::mt19937 random(8);
  SacHeader header;
  header.delta = 0.01F;
  header.b = 0;
  header.knetwk = "XX";
  header.kstnm = "DAY";
  header.kcmpnm = "HHZ";
  setReferenceTime(header, QDateTime(QDate(2024, 4, 1), QTime(0, 0), Qt::UTC));
  std::vector<float> samples(static_cast<std::size_t>(count));
  for (float& sample : samples)
    sample = float(random() % 2001) - 1000;
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

/// Lists what is in a folder and sorts it; how many rows there are.
int listFolder(const QString& folder) {
  desk::FilesPanel panel;
  panel.resize(kDayPicture);
  panel.show();
  QEventLoop loop;
  QObject::connect(&panel, &desk::FilesPanel::listed, &loop, &QEventLoop::quit);
  panel.add({folder});
  if (panel.isBusy()) loop.exec();
  panel.shown().sort(desk::FileCatalogue::Start);
  (void)panel.grab();
  return panel.catalogue().rowCount();
}

/// Makes a file another one for who keeps what was read of it.
void touch(const QString& path) {
  static QDateTime time(QDate(2024, 4, 2), QTime(0, 0), Qt::UTC);
  time = time.addSecs(1);
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(time, QFileDevice::FileModificationTime))
    std::fprintf(stderr, "xov_bench: %s keeps its time\n", qPrintable(path));
}

/// Opens a file in a pane as a double click does, and waits for its picture.
QImage openInPane(const QString& path, const QList<QStringList>& steps = {}) {
  desk::Pane pane([](const std::vector<std::string>& words) { return int(cli::CommandLine().run(words)); });
  pane.resize(kDayPicture);
  pane.show();
  QEventLoop loop;
  QObject::connect(&pane, &desk::Pane::viewMade, &loop, &QEventLoop::quit);
  QObject::connect(&pane, &desk::Pane::failed, &loop, &QEventLoop::quit);
  desk::PlotRequest request;
  request.kind = QStringLiteral("drum");
  request.files = QStringList{path};
  request.steps = steps;
  pane.setRequest(request);
  if (pane.isBusy()) loop.exec();
  return pane.grab().toImage();
}

/// The samples that are in memory as rows of plain lines.
void drawWithQtAlone(const SeismogramRecord& day) {
  QImage picture(kDayPicture, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setPen(QPen(Qt::black, 0));
  const float* const samples = day.GetSacSeis();
  constexpr int kRowSamples = kDaySamples / kDayRows;
  const double rowHeight = double(kDayPicture.height()) / kDayRows;
  const double scale = rowHeight / double(day.smax() - day.smin());
  QPolygonF line(kRowSamples);
  for (int row = 0; row < kDayRows; ++row) {
    for (int i = 0; i < kRowSamples; ++i)
      line[i] = QPointF(double(i) * kDayPicture.width() / kRowSamples,
                        (row + 0.5) * rowHeight - scale * double(samples[row * kRowSamples + i]));
    painter.drawPolyline(line);
  }
}

bool writeThousand(const QDir& folder) {
  const QString first = folder.filePath(QStringLiteral("1000.mseed"));
  if (!writeMiniSeed({noiseOf(6000)}, first)) return false; // a minute
  for (int i = 1; i < kFiles; ++i) {
    if (!QFile::copy(first, folder.filePath(QStringLiteral("%1.mseed").arg(1000 + i)))) return false;
  }
  return true;
}

} // namespace

QString deskTable(int rounds) {
  const QTemporaryDir folder;
  const QString dayPath = folder.filePath(QStringLiteral("day.mseed"));
  const QDir files(folder.filePath(QStringLiteral("files")));
  const auto day = noiseOf(kDaySamples);
  if (!files.mkpath(QStringLiteral(".")) || !writeThousand(files) || !writeMiniSeed({day}, dayPath)) return {};
  if (listFolder(files.path()) != kFiles || openInPane(dayPath).isNull())
    std::fprintf(stderr, "xov_bench: the desk does not show what it should\n");
  std::vector<Contest> contests = {
      {"a day at 100 Hz from opening to its picture",
       [&] {
         touch(dayPath);
         (void)openInPane(dayPath);
       }},
      {"Qt alone, from memory", [&] { drawWithQtAlone(*day); }},
      {"a thousand files into the list", [&] { (void)listFolder(files.path()); }},
      {"the first time",
       [&] {
         touch(dayPath);
         (void)openInPane(dayPath, kDaySteps);
       }},
      {"that day filtered, shown another time", [&] { (void)openInPane(dayPath, kDaySteps); }},
  };
  runInTurn(contests, rounds);
  desk::PlotMaker::waitForAll();
  const double listMs = median(contests[2].milliseconds);
  const double againRatio = median(contests[4].processorMilliseconds) / median(contests[3].processorMilliseconds);
  const double dayRatio = median(contests[0].processorMilliseconds) / median(contests[1].processorMilliseconds);
  return QStringLiteral("| desk | CPU ms | ms | beside | ratio | limit |\n|---|---:|---:|---|---:|---:|\n") +
         QStringLiteral("| %1 | %2 | %3 | 2 s by the clock | %4 | 1 |\n")
             .arg(QLatin1String(contests[2].name))
             .arg(median(contests[2].processorMilliseconds), 0, 'f', 0)
             .arg(listMs, 0, 'f', 0)
             .arg(listMs / kListLimitMs, 0, 'f', 3) +
         QStringLiteral("| %1 | %2 | %3 | %4: CPU %5 ms | %6 | %7 |\n")
             .arg(QLatin1String(contests[0].name))
             .arg(median(contests[0].processorMilliseconds), 0, 'f', 0)
             .arg(median(contests[0].milliseconds), 0, 'f', 0)
             .arg(QLatin1String(contests[1].name))
             .arg(median(contests[1].processorMilliseconds), 0, 'f', 0)
             .arg(dayRatio, 0, 'f', 2)
             .arg(kDayLimit, 0, 'f', 0) +
         QStringLiteral("| %1 | %2 | %3 | %4: CPU %5 ms | %6 | 1 |\n")
             .arg(QLatin1String(contests[4].name))
             .arg(median(contests[4].processorMilliseconds), 0, 'f', 0)
             .arg(median(contests[4].milliseconds), 0, 'f', 0)
             .arg(QLatin1String(contests[3].name))
             .arg(median(contests[3].processorMilliseconds), 0, 'f', 0)
             .arg(againRatio, 0, 'f', 2);
}

} // namespace xov::bench
