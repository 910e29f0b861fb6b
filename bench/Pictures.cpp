#include "bench/Pictures.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/platform/View.h"
#include "bench/Contest.h"
#include "bench/Engines.h"

#include <QBuffer>
#include <QImageWriter>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace xov::bench {

namespace {

constexpr QSize kWide(7680, 4320);

class BlankView : public View {
public:
  explicit BlankView(QSize size) : View(QRectF(QPointF(), QSizeF(size))) { setExportPixelRatio(1); }
  void drawRect(const QRectF&) override {
    GraphicsContext& context = GraphicsContext::current();
    context.setColor(colors::white);
    context.fillRect(bounds());
  }
};

QImage drawn(const char* name) { return engineNamed("xov")->draw(makeWork(name)).image; }

// Smooth areas of all colours, with a little noise, as relief and photographs have them.
QImage photograph() {
  std::mt19937 random(2009);
  QImage image(1800, 960, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const auto level = [&](double period) {
        const double wave = std::sin(x / period) * std::cos(y / (1.3 * period));
        return std::clamp(int(128 + 100 * wave) + int(random() % 5), 0, 255);
      };
      line[x] = qRgb(level(170), level(110), level(230));
    }
  }
  return image;
}

QByteArray writtenByQt(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter(&buffer, "png").write(image.convertToFormat(QImage::Format_RGB888));
  return bytes;
}

// Of one number more a line.
QString withSizes(const QString& rows, const std::vector<std::pair<qsizetype, qsizetype>>& sizes) {
  QString text;
  std::size_t row = 0;
  for (const QString& line : rows.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const bool isFile = row < sizes.size() && sizes[row].second > 0;
    text += line;
    text += isFile ? QStringLiteral(" %1 |\n").arg(double(sizes[row].first) / double(sizes[row].second), 0, 'f', 2)
                   : QStringLiteral(" - |\n");
    ++row;
  }
  return text;
}

} // namespace

QString pictureTable(int rounds) {
  struct Picture {
    const char* name;
    QImage image;
  };
  const Picture pictures[] = {{"PNG of W3 at two pixels a point", drawn("W3@2")},
                              {"PNG of W8", drawn("W8")},
                              {"PNG of S1", drawn("S1")},
                              {"PNG of 1800 × 960 pixels like a photograph", photograph()}};
  std::vector<Contest> contests;
  std::vector<std::pair<qsizetype, qsizetype>> sizes;
  QByteArray file;
  for (const Picture& picture : pictures) {
    contests.push_back({picture.name, [&] { file = encodeImage(picture.image, ImageFormat::Png); }});
    contests.push_back({"", [&] { file = writtenByQt(picture.image); }});
    sizes.emplace_back(encodeImage(picture.image, ImageFormat::Png).size(), writtenByQt(picture.image).size());
  }
  BlankView blank(kWide);
  QImage shown, paper(kWide, QImage::Format_RGB32);
  contests.push_back({"blank view of 7680 × 4320 pixels, memory filled", [&] {
                        shown = {};
                        shown = blank.pictureOfRect(blank.bounds());
                      }});
  contests.push_back({"", [&] { paper.fill(Qt::white); }});
  const Engine& xov = *engineNamed("xov");
  const Work finer = makeWork("W1@3"), fine = makeWork("W1@2");
  contests.push_back({"W1 at three pixels a point, at two", [&] { shown = xov.draw(finer).image; }});
  contests.push_back({"", [&] { shown = xov.draw(fine).image; }});
  runInTurn(contests, rounds);
  return QStringLiteral(
             "| pictures | CPU ms | Qt's writer, filling, two pixels: CPU ms | ratio | ms | its ms | file |\n"
             "|---|---:|---:|---:|---:|---:|---:|\n") +
         withSizes(pairedRows(contests), sizes);
}

} // namespace xov::bench
