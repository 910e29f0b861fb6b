// A batch of pages without a display: batch_pages FOLDER writes 100 PDF files, one earthquake each. Exits with 1 when
// a page could not be written.
#include <QApplication>
#include <QDir>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <cmath>
#include <cstdio>

namespace {

constexpr int kPages = 100;
constexpr float kDelta = 0.05F; // seconds
constexpr int kSamples = 4000;

/// A wave of `frequency` Hz that arrives after `arrival` seconds and fades.
std::shared_ptr<xov::SacSeismogram> record(int station, float arrival, float frequency) {
  std::vector<float> samples(kSamples);
  for (int i = 0; i < kSamples; ++i) {
    const float t = float(i) * kDelta - arrival;
    if (t > 0) samples[std::size_t(i)] = std::sin(6.2832F * frequency * t) * t * std::exp(-t / 8);
  }
  xov::SacHeader header;
  header.delta = kDelta;
  header.b = 0;
  header.kstnm = xov::SacText<8>("ST" + std::to_string(station));
  return std::make_shared<xov::SacSeismogram>(header, std::move(samples));
}

bool writePage(int page, const QString& path) {
  const auto records = std::make_shared<xov::SeismogramArray>();
  for (int station = 1; station <= 6; ++station)
    records->push_back(record(station, float(10 + 4 * station + page % 20), 0.2F + 0.01F * float(page)));
  xov::MultiSeisView view(QRectF(0, 0, 500, 350));
  view.setWvfrmsArray(records);
  view.setTitle(QStringLiteral("Event %1").arg(page));
  view.setXLabelString(QStringLiteral("Time (s)"));
  QString error;
  if (view.writePDFToFile(path, &error)) return true;
  std::fprintf(stderr, "%s\n", qPrintable(error));
  return false;
}

} // namespace

int main(int argc, char** argv) {
  // No window system is asked for, so that it runs on a server or under cron.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: batch_pages FOLDER\n");
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(argv[1]));
  if (!folder.mkpath(QStringLiteral("."))) return 1;
  for (int page = 1; page <= kPages; ++page) {
    if (!writePage(page, folder.filePath(QStringLiteral("event-%1.pdf").arg(page, 3, 10, QLatin1Char('0')))))
      return 1;
  }
  std::printf("%d pages in %s\n", kPages, qPrintable(folder.path()));
  return 0;
}
