#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/View.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QPicture>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>
#include <optional>
#include <vector>

namespace xov {
namespace {

using testing::DrawingView;
using testing::pixelAt;

constexpr QRgb kWhite = 0xffffffff;
constexpr QRgb kRed = 0xffff0000;

// White paper, the lower left tenth red, and ink beyond the view on all sides.
void drawCorner(const QRectF&) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::white);
  context.fillRect({-50, -50, 200, 140});
  context.setColor(colors::red);
  context.fillRect({0, 0, 10, 4});
}

QImage canvas(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::blue);
  return image;
}

TEST(ViewPaint, fillsTheTargetAndNothingOutside) {
  DrawingView view({0, 0, 100, 40}, drawCorner);
  QImage image = canvas(300, 200);
  QPainter painter(&image);
  view.paint(painter, {50, 20, 200, 120}); // two and three times the view's size
  painter.end();
  EXPECT_EQ(pixelAt(image, 49, 100), 0xff0000ff);
  EXPECT_EQ(pixelAt(image, 250, 100), 0xff0000ff);
  EXPECT_EQ(pixelAt(image, 100, 19), 0xff0000ff);
  EXPECT_EQ(pixelAt(image, 100, 140), 0xff0000ff);
  EXPECT_EQ(pixelAt(image, 50, 20), kWhite);
  EXPECT_EQ(pixelAt(image, 50, 139), kRed); // its corner at the lower left, 20 × 12 pixels
  EXPECT_EQ(pixelAt(image, 69, 128), kRed);
  EXPECT_EQ(pixelAt(image, 70, 128), kWhite);
  EXPECT_EQ(pixelAt(image, 69, 127), kWhite);
}

TEST(ViewPaint, keepsToThePaintersTransformClipAndOpacity) {
  DrawingView view({0, 0, 100, 40}, drawCorner);
  QImage image = canvas(300, 200);
  QPainter painter(&image);
  painter.translate(50, 20);
  painter.scale(2, 3);
  painter.setClipRect(QRectF(0, 0, 50, 20));
  painter.setOpacity(0.5);
  view.paint(painter, {0, 0, 100, 40});
  painter.end();
  EXPECT_NEAR(qRed(pixelAt(image, 50, 20)), 128, 1); // white over blue
  EXPECT_NEAR(qBlue(pixelAt(image, 50, 20)), 255, 1);
  EXPECT_NEAR(qRed(pixelAt(image, 149, 79)), 128, 1);
  EXPECT_EQ(pixelAt(image, 150, 79), 0xff0000ff);
  EXPECT_EQ(pixelAt(image, 149, 80), 0xff0000ff);
}

TEST(ViewPaint, theOpacityOfAnImageIsOfThePaintersOwn) {
  QImage white(1, 1, QImage::Format_RGB32);
  white.fill(Qt::white);
  DrawingView view({0, 0, 10, 10}, [&](const QRectF&) {
    GraphicsContext::current().drawImage(white, {0, 0, 10, 10}, {0, 0, 1, 1}, 0.5);
  });
  QImage image = canvas(10, 10);
  QPainter painter(&image);
  painter.setOpacity(0.5);
  view.paint(painter, {0, 0, 10, 10});
  painter.end();
  EXPECT_NEAR(qRed(pixelAt(image, 5, 5)), 64, 1); // a quarter of 255
}

TEST(ViewPaint, thePaintersStateIsAsBefore) {
  DrawingView view({0, 0, 100, 40}, [](const QRectF&) {
    GraphicsContext& context = GraphicsContext::current();
    context.saveState(); // and never restored
    context.clipToRect({0, 0, 5, 5});
    context.drawText(QStringLiteral("a"), {0, 0}, TextAttributes::helvetica(12));
  });
  QImage image = canvas(300, 200);
  QPainter painter(&image);
  painter.setPen(QPen(Qt::green, 3));
  painter.setBrush(Qt::yellow);
  painter.setOpacity(0.25);
  painter.translate(7, 8);
  const QPen pen = painter.pen();
  const QFont font = painter.font();
  const QTransform transform = painter.worldTransform();
  const auto hints = painter.renderHints();
  view.paint(painter, {0, 0, 100, 40});
  EXPECT_EQ(painter.pen(), pen);
  EXPECT_EQ(painter.brush().color(), QColor(Qt::yellow));
  EXPECT_EQ(painter.font(), font);
  EXPECT_EQ(painter.opacity(), 0.25);
  EXPECT_EQ(painter.worldTransform(), transform);
  EXPECT_EQ(painter.renderHints(), hints);
  EXPECT_FALSE(painter.hasClipping());
}

TEST(ViewPaint, withoutAPainterOrATargetNothingIsDrawn) {
  DrawingView view({0, 0, 100, 40}, drawCorner);
  QPainter idle;
  view.paint(idle, {0, 0, 10, 10});
  QImage image = canvas(10, 10);
  QPainter painter(&image);
  view.paint(painter, {0, 0, 10, 0});
  view.paint(painter, {0, 0, -5, 10});
  view.paint(painter, {0, 0, std::nan(""), 10});
  DrawingView empty({0, 0, 0, 40}, drawCorner);
  empty.paint(painter, {0, 0, 10, 10});
  painter.end();
  EXPECT_EQ(view.draws, 0);
  EXPECT_EQ(empty.draws, 0);
  EXPECT_EQ(image, canvas(10, 10));
}

/// A view with a frame, a caption and a trace of a hundred thousand samples.
class TraceView : public View {
public:
  TraceView() : View({0, 0, 400, 200}), samples_(100000) {
    for (std::size_t i = 0; i < samples_.size(); ++i)
      samples_[i] = float(100 + 80 * std::sin(double(i) / 40) * std::sin(double(i) / 9000));
  }
  void drawRect(const QRectF&) override {
    GraphicsContext& context = GraphicsContext::current();
    context.setColor(colors::black);
    context.strokeRect({10, 10, 380, 180});
    context.drawText(QStringLiteral("Station TLY"), {20, 170}, TextAttributes::helvetica(12));
    Trace trace;
    trace.samples = samples_.data();
    trace.last = std::int64_t(samples_.size());
    trace.xScale = 380.0 / double(samples_.size());
    trace.xOffset = 10;
    Path path;
    path.appendTrace(trace);
    context.strokePath(path);
  }

private:
  std::vector<float> samples_;
};

/// The standard output of a program; nothing where it is not installed.
std::optional<QString> outputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  if (!process.waitForStarted() || !process.waitForFinished()) return std::nullopt;
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
  return QString::fromUtf8(process.readAllStandardOutput());
}

TEST(ViewPaint, aPrintersPageHoldsFontsAndLinesAndNoPicture) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("page.pdf"));
  {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    QPainter painter(&printer);
    ASSERT_TRUE(painter.isActive());
    TraceView view;
    view.paint(painter, {1000, 1000, 6000, 3000});
  }
  const auto fonts = outputOf(QStringLiteral("pdffonts"), {path});
  const auto images = outputOf(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path});
  const auto text = outputOf(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
  if (!fonts || !images || !text) GTEST_SKIP() << "poppler's programs are not installed";
  // Two lines of headings, then one a font or a picture.
  EXPECT_EQ(fonts->trimmed().count(QLatin1Char('\n')), 2) << qPrintable(*fonts);
  EXPECT_EQ(images->trimmed().count(QLatin1Char('\n')), 1) << qPrintable(*images);
  EXPECT_EQ(text->trimmed(), "Station TLY");
  // A page of a bare frame takes some kilobytes; the trace's 1,520 columns of four points or so take more.
  EXPECT_GT(QFileInfo(path).size(), 20000);
}

TEST(ViewPaint, aTraceLooksLikeThatOfThePicture) {
  TraceView view;
  view.setExportPixelRatio(2);
  QImage picture = view.pictureOfRect(view.bounds());
  picture.setDevicePixelRatio(1);
  QImage painted(picture.size(), QImage::Format_ARGB32_Premultiplied);
  painted.fill(Qt::transparent);
  QPainter painter(&painted);
  view.paint(painter, painted.rect());
  painter.end();
  double sum = 0;
  int inked = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int a = qAlpha(picture.pixel(x, y)), b = qAlpha(painted.pixel(x, y));
      sum += std::abs(a - b);
      inked += a > 0 || b > 0 ? 1 : 0;
    }
  }
  EXPECT_GT(inked, 10000);
  // Columns of a quarter point stand for the samples, and the frame has no soft edges in the picture.
  EXPECT_LT(sum / inked, 16);
}

// A picture of Qt's is what any painter is told: points of lines and strings, and no image.
TEST(ViewPaint, aRecordedPictureCanBePlayedAnywhere) {
  TraceView view;
  QPicture recorded;
  QPainter recorder(&recorded);
  view.paint(recorder, {0, 0, 400, 200});
  recorder.end();
  QImage image = canvas(400, 200);
  QPainter painter(&image);
  painter.drawPicture(0, 0, recorded);
  painter.end();
  EXPECT_EQ(pixelAt(image, 5, 5), 0xff0000ff);
  EXPECT_NE(pixelAt(image, 10, 100), 0xff0000ff);  // the frame
  EXPECT_NE(pixelAt(image, 100, 100), 0xff0000ff); // the trace
}

} // namespace
} // namespace xov
