#include "XOV_Graphics/platform/surface/PaperTraces.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/PaperContext.h"
#include "XOV_Graphics/platform/surface/PdfFile.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "XOV_Graphics/platform/surface/Picture.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QMap>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace xov {
namespace {

const QRectF kPage(0, 0, 200, 100);
const float kSamples[] = {1, 4, 2, 8};

/// The points (0, 23), (10, 32), (20, 26), (30, 44): x = 10 i, y = 3 v + 20.
Trace smallTrace() {
  Trace trace;
  trace.samples = kSamples;
  trace.last = 4;
  trace.xScale = 10;
  trace.yScale = 3;
  trace.yOffset = 20;
  return trace;
}

Path smallPath(double width = 1) {
  Path path;
  path.appendTrace(smallTrace());
  path.setLineWidth(width);
  return path;
}

/// smallTrace() in hundredths of a point, about its first x and its middle height (23 + 44) / 2 = 33.5, on a page of
/// 100 points' height.
QByteArray smallOperators(const QByteArray& color, const QByteArray& width) {
  return "q\n0.01 0 0 -0.01 0 100 cm\n" + color + " RG\n" + width +
         " w 0 J 1 j [] 0 d\nq\n1 0 0 1 0 3350 cm\n0 -1050 m\n1000 -150 l\n2000 -750 l\n3000 1050 l\nS\nQ\nQ\n";
}

QByteArray contentOf(const QByteArray& pdf) {
  const auto file = PdfFile::parse(pdf);
  EXPECT_TRUE(file);
  return file ? file->content() : QByteArray();
}

QByteArray contentOfPage(const Drawing& draw) { return contentOf(pdfPage(kPage, draw)); }

/// What the painter writes for the marker number `index`.
QByteArray marker(int index) {
  const QByteArray y = QByteArray::number(-1 - index), below = QByteArray::number(-2 - index);
  return "-314159265 " + y + " m\n-314159265 " + below + " l\n-314159264 " + below + " l\n-314159265 " + y +
         " l\nh\nf\n";
}

void strokeInto(PaperTraces& traces, const QColor& color) {
  const QRectF visible = kPage.adjusted(-10, -10, 10, 10);
  EXPECT_FALSE(traces.stroke({smallTrace()}, visible, QTransform(1, 0, 0, -1, 0, 100), 1, color).isEmpty());
}

/// What another program says of the page, which must be nothing on its standard error; `arguments` follow the file.
QByteArray said(const QString& program, const QStringList& options, const QByteArray& pdf,
                const QStringList& arguments) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("page.pdf")));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size());
  file.close();
  QProcess tool;
  tool.start(program, options + QStringList{file.fileName()} + arguments);
  EXPECT_TRUE(tool.waitForFinished(60000)) << qPrintable(tool.errorString());
  EXPECT_EQ(tool.readAllStandardError(), "");
  return tool.readAllStandardOutput();
}

/// The page as another program draws it.
QImage drawnByCairo(const QByteArray& pdf, int dotsPerInch) {
  const QStringList options{QStringLiteral("-png"), QStringLiteral("-singlefile"), QStringLiteral("-r"),
                            QString::number(dotsPerInch)};
  const QByteArray png = said(QStringLiteral("pdftocairo"), options, pdf, {QStringLiteral("-")});
  return QImage::fromData(png).convertToFormat(QImage::Format_RGB32);
}

void fillPage(GraphicsContext& context) {
  context.setColor(colors::white);
  context.fillRect(kPage);
}

TEST(PaperTraces, insertionKeepsTheRestOfTheContent) {
  PaperTraces traces;
  strokeInto(traces, colors::red);
  strokeInto(traces, QColor(0, 0, 255));
  const auto content = traces.insertInto("before\n" + marker(0) + "between\n" + marker(1) + "behind\n");
  ASSERT_TRUE(content);
  EXPECT_EQ(*content,
            "before\n" + smallOperators("1 0 0", "100") + "between\n" + smallOperators("0 0 1", "100") + "behind\n");
}

TEST(PaperTraces, refusesContentWhoseMarkersAreNotThoseHandedOut) {
  const QByteArray first = marker(0), second = marker(1);
  for (const QByteArray& content :
       {QByteArray(), first, second, first + first, second + first, first + second + second,
        first + second + marker(2), first + QByteArray(second).replace("f\n", "f*\n"), first + second.chopped(3)}) {
    PaperTraces traces;
    strokeInto(traces, colors::red);
    strokeInto(traces, colors::red);
    EXPECT_FALSE(traces.insertInto(content)) << content.constData();
    EXPECT_TRUE(traces.insertInto(first + second)); // nothing was lost by trying
  }
}

TEST(PaperTraces, whatDoesNotShowNeedsNoMarker) {
  PaperTraces traces;
  const QRectF above(0, 200, 100, 100);
  EXPECT_TRUE(traces.stroke({smallTrace()}, above, QTransform(), 1, colors::red).isEmpty());
  EXPECT_TRUE(traces.isEmpty());
  EXPECT_EQ(traces.insertInto("rest"), QByteArray("rest"));
}

TEST(PaperTraces, aPageHasItsTracesInTheirOrderBetweenOtherDrawing) {
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    context.setColor(colors::red);
    context.fillRect({1, 1, 2, 2});
    context.strokePath(smallPath(0.7));
    context.fillRect({5, 5, 6, 6});
    context.setColor(QColor(0, 0, 255));
    context.strokePath(smallPath());
    context.fillRect({9, 9, 10, 10});
  });
  // Lower left corners, in y downwards: 100 - 1, 100 - 5 and 100 - 9.
  qsizetype at = 0;
  for (const QByteArray& step : {QByteArray("\n1 99 m\n"), smallOperators("1 0 0", "70"), QByteArray("\n5 95 m\n"),
                                 smallOperators("0 0 1", "100"), QByteArray("\n9 91 m\n")}) {
    const qsizetype place = content.indexOf(step);
    EXPECT_GE(place, at) << step.constData() << content.constData();
    EXPECT_EQ(content.indexOf(step, place + 1), -1);
    at = place;
  }
  EXPECT_FALSE(content.contains("314159"));
}

TEST(PaperTraces, aFilledTraceIsOnePathOfItsRule) {
  for (const auto& [rule, op] : {std::pair{Path::Winding::NonZero, "f"}, {Path::Winding::EvenOdd, "f*"}}) {
    Path path = smallPath();
    path.appendTrace(smallTrace());
    path.setWindingRule(rule);
    const QByteArray content = contentOfPage([&path](GraphicsContext& context) { context.fillPath(path); });
    const QByteArray area = "0 2300 m\n1000 3200 l\n2000 2600 l\n3000 4400 l\n";
    EXPECT_TRUE(content.contains("0 100 cm\n0 0 0 rg\n" + area + area + op + "\nQ\n")) << content.constData();
  }
}

TEST(PaperTraces, aFillBesideLinesIsThePainters) {
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    Path path = smallPath();
    path.appendRect({50, 50, 10, 10});
    context.fillPath(path);
  });
  EXPECT_FALSE(content.contains("0.01 0 0 -0.01"));
  EXPECT_TRUE(content.contains("\n50 50 m\n"));
}

TEST(PaperTraces, aPageWithoutTracesIsByteForByteThePainters) {
  const auto draw = [](GraphicsContext& context) {
    context.setColor(colors::red);
    context.fillRect({1, 1, 20, 20});
    context.drawText(QStringLiteral("no trace"), {60, 40}, TextAttributes::helvetica(14));
  };
  QByteArray painted;
  QBuffer buffer(&painted);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setCreator(QStringLiteral("XOV_Graphics"));
  writer.setResolution(72);
  writer.setPageLayout(QPageLayout(QPageSize(kPage.size(), QPageSize::Point, QString(), QPageSize::ExactMatch),
                                   QPageLayout::Portrait, QMarginsF()));
  QPainter painter(&writer);
  PaperContext context(painter, QTransform(1, 0, 0, -1, 0, 100), kPage, nullptr);
  draw(context);
  painter.end();
  QByteArray page = pdfPage(kPage, draw);
  const auto cutDate = [](QByteArray& pdf) {
    const qsizetype at = pdf.indexOf("/CreationDate");
    pdf.remove(at, pdf.indexOf('\n', at) - at);
    // A zone other than UTC makes the date longer, which moves what follows.
    pdf.truncate(pdf.lastIndexOf("xref\n0 "));
  };
  cutDate(painted);
  cutDate(page);
  EXPECT_EQ(page, painted);
}

TEST(PaperTraces, theTransformIsThatOfTheContext) {
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    context.concat(QTransform(2, 0, 0, 4, 30, 5));
    context.strokePath(smallPath());
  });
  // x = 2 x + 30, y = 100 - (4 y + 5); a step is a hundredth of that.
  EXPECT_TRUE(content.contains("q\n0.02 0 0 -0.04 30 95 cm\n0 0 0 RG\n")) << content.constData();
}

TEST(PaperTraces, theClipIsInForceWhereTheTraceIs) {
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    context.saveState();
    context.clipToRect({5, 30, 100, 40});
    context.strokePath(smallPath());
    context.restoreState();
  });
  const qsizetype clip = content.indexOf("5 70 m\n105 70 l\n105 30 l\n5 30 l\n5 70 l\nh\nW* n\n");
  const qsizetype lines = content.indexOf(" w 0 J 1 j [] 0 d\n");
  ASSERT_GE(clip, 0) << content.constData();
  ASSERT_GT(lines, clip);
  // Every state saved behind the clip and restored again lies before the lines.
  int depth = 0;
  for (const char c : content.mid(clip, lines - clip)) {
    depth += c == 'q' ? 1 : 0;
    depth -= c == 'Q' ? 1 : 0;
    EXPECT_GE(depth, 0);
  }
}

TEST(PaperTraces, underAnEmptyClipThereIsNothing) {
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    context.clipToRect({0, 0, 10, 10});
    context.clipToRect({50, 50, 10, 10});
    context.strokePath(smallPath());
  });
  EXPECT_FALSE(content.contains("RG\n"));
  EXPECT_FALSE(content.contains("314159"));
  EXPECT_FALSE(content.contains("\nS\n"));
}

TEST(PaperTraces, aTranslucentTraceIsOnePath) {
  std::vector<float> samples = noise(2000, 3, 5); // on 200 points: every sample is a point of the line
  samples[1000] = std::numeric_limits<float>::quiet_NaN();
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  trace.xScale = 0.1;
  trace.yOffset = 50;
  Path path;
  path.appendTrace(trace);
  path.appendTrace(smallTrace());
  const auto strokes = [&](const QColor& color) {
    const QByteArray content = contentOfPage([&](GraphicsContext& context) {
      context.setColor(color);
      context.strokePath(path);
    });
    return content.count("\nS\n");
  };
  EXPECT_EQ(strokes(QColor(0, 0, 255, 128)), 1);
  // 1000 points: 3 strokes of 257 segments, each sharing one with the next, and one of the rest (3 · 256 + 231 =
  // 999); 999 points: the same, one segment less; and the small trace.
  EXPECT_EQ(strokes(QColor(0, 0, 255)), 4 + 4 + 1);
}

TEST(PaperTraces, besideTracesTextStaysText) {
  const QByteArray pdf = pdfPage(kPage, [](GraphicsContext& context) {
    context.strokePath(smallPath());
    context.drawText(QStringLiteral("Station HERN"), {60, 40}, TextAttributes::helvetica(14));
    context.strokePath(smallPath());
  });
  EXPECT_EQ(said(QStringLiteral("pdftotext"), {}, pdf, {QStringLiteral("-")}).simplified(), "Station HERN");
}

TEST(PaperTraces, theSameTracesGiveTheSameBytes) {
  const auto draw = [](GraphicsContext& context) {
    context.strokePath(smallPath(0.7));
    context.setColor(QColor(0, 0, 255, 128));
    context.strokePath(smallPath());
  };
  EXPECT_EQ(pdfPage(kPage, draw), pdfPage(kPage, draw));
}

TEST(PaperTraces, strokesOfOneLineShareASegment) {
  std::vector<float> samples(259, 0.0F);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i % 2 == 0 ? 1.0F : -1.0F;
  Trace trace;
  trace.samples = samples.data();
  trace.last = 259;
  trace.xScale = 0.5;
  trace.yOffset = 50;
  Path path;
  path.appendTrace(trace);
  const QByteArray content = contentOfPage([&](GraphicsContext& context) { context.strokePath(path); });
  // About a height of 50 points; point i lies at 50 i steps, even ones 100 steps above, odd ones below. The second
  // stroke counts from point 256.
  const QByteArray end = "12800 100 l\n12850 -100 l\nS\nQ\n";
  const QByteArray next = "q\n1 0 0 1 12800 5000 cm\n0 100 m\n50 -100 l\n100 100 l\nS\nQ\nQ\n";
  EXPECT_TRUE(content.contains("q\n1 0 0 1 0 5000 cm\n0 100 m\n50 -100 l\n")) << content.left(600).constData();
  EXPECT_TRUE(content.contains(end + next)) << content.right(300).constData();
}

TEST(PaperTraces, wherePainterAndMarkersDisagreeThePainterDrawsItAll) {
  const test::LogCatcher log;
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    Path impostor; // the first marker's corners on the page, whose y grows downwards from 100
    impostor.moveTo({-314159265, 101});
    impostor.lineTo({-314159265, 102});
    impostor.lineTo({-314159264, 102});
    impostor.close();
    context.fillPath(impostor);
    context.strokePath(smallPath());
  });
  EXPECT_EQ(content.count("-314159265 -1 m\n"), 1); // the impostor's own
  ASSERT_EQ(log.lines().size(), 1);
  EXPECT_TRUE(log.lines()[0].startsWith(QLatin1String("xov: PDF: "))) << qPrintable(log.lines()[0]);
  EXPECT_FALSE(content.contains("RG\n"));
  EXPECT_TRUE(content.contains("\n0 23 m\n10 32 l\n20 26 l\n30 44 l\nS\n")) << content.constData();
}

TEST(PaperTraces, coordinatesBeyondWholeStepsGoThroughThePainter) {
  const QTransform flip(1, 0, 0, -1, 0, 100);
  EXPECT_TRUE(PaperTraces::canHold({0, 0, 99999, 99999}, flip));
  EXPECT_FALSE(PaperTraces::canHold({0, 0, 100001, 10}, flip));
  EXPECT_FALSE(PaperTraces::canHold({0, -100001, 10, 10}, flip));
  EXPECT_FALSE(PaperTraces::canHold({0, 0, std::nan(""), 10}, flip));
  EXPECT_FALSE(PaperTraces::canHold(kPage, QTransform::fromScale(1e10, 1)));
  const QByteArray content = contentOfPage([](GraphicsContext& context) {
    context.concat(QTransform::fromScale(1e-4, 1e-4)); // the page is two million points wide
    Trace trace = smallTrace();
    trace.xScale = trace.yScale = 1e5;
    Path path;
    path.appendTrace(trace);
    path.setLineWidth(1e4);
    context.strokePath(path);
  });
  EXPECT_TRUE(content.contains(" l\n300000 800020 l\nS\n")) << content.constData();
}

/// How far the page and the picture of pixels are apart at two pixels a point: the worst pixel, and the mean over
/// those with ink.
std::pair<double, double> distanceFromPixels(const Drawing& draw) {
  const QImage paper = drawnByCairo(pdfPage(kPage, draw), 144);
  const QImage pixels = picture(kPage, 2, draw).convertToFormat(QImage::Format_RGB32);
  EXPECT_EQ(paper.size(), pixels.size());
  if (paper.size() != pixels.size()) return {255, 255};
  int worst = 0, inked = 0;
  double sum = 0;
  for (int y = 0; y < paper.height(); ++y) {
    for (int x = 0; x < paper.width(); ++x) {
      const QRgb a = paper.pixel(x, y), b = pixels.pixel(x, y);
      const int apart =
          std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
      worst = std::max(worst, apart);
      sum += apart;
      inked += a != 0xFFFFFFFF || b != 0xFFFFFFFF ? 1 : 0;
    }
  }
  EXPECT_GT(inked, 1000);
  return {worst, sum / inked};
}

TEST(PaperTraces, thePageLooksLikeThePixels) {
  const std::vector<float> samples = noise(300, 8, 11);
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  trace.xScale = 0.5;
  trace.xOffset = 10;
  trace.yOffset = 45;
  Path path;
  path.appendTrace(trace);
  Trace higher = trace;
  higher.yOffset = 55;
  path.appendTrace(higher);
  // The other program counts the rows of fifteen a pixel, so that an edge is off by up to a row: 255 / 15 = 17. Where
  // the edges of two strokes share a pixel that each covers to a half, they cover 3/4 of it together instead of what
  // they really cover, which is 1/2 to 1: 64 more. A translucent path is a single stroke.
  constexpr int kRow = 17, kTwoStrokes = 64;
  const std::pair<int, Drawing> drawings[] = {
      {kRow + kTwoStrokes,
       [&](GraphicsContext& context) {
         fillPage(context);
         context.setColor(colors::black);
         context.strokePath(path);
       }},
      {kRow,
       [&](GraphicsContext& context) {
         fillPage(context);
         context.setColor(QColor(0, 0, 255, 128));
         context.clipToRect({20, 30, 100, 30});
         context.strokePath(path);
         context.strokePath(smallPath(3));
       }},
      {kRow + kTwoStrokes,
       [&](GraphicsContext& context) {
         fillPage(context);
         context.setColor(colors::red);
         context.concat(QTransform(0.5, 0, 0, 0.5, 40, 20));
         context.strokePath(path);
         context.setColor(colors::black);
         context.fillRect({100, 100, 20, 20});
       }},
      {kRow,
       [&](GraphicsContext& context) {
         fillPage(context);
         context.setColor(QColor(0, 0, 255, 128));
         context.clipToRect({20, 30, 100, 30});
         Path odd = path;
         odd.setWindingRule(Path::Winding::EvenOdd);
         context.fillPath(odd);
       }},
  };
  for (const auto& [bound, draw] : drawings) {
    const auto [worst, mean] = distanceFromPixels(draw);
    EXPECT_LE(worst, bound);
    EXPECT_LE(mean, 4);
  }
}

/// How many operands each operator of stroked lines takes.
int operandsOf(const QByteArray& op) {
  static const QMap<QByteArray, int> counts{{"q", 0}, {"Q", 0}, {"S", 0}, {"m", 2},  {"l", 2}, {"w", 1},
                                            {"J", 1}, {"j", 1}, {"d", 2}, {"cm", 6}, {"RG", 3}};
  return counts.value(op, -1);
}

/// The first word of the operators that does not belong there; empty when all is well.
QByteArray firstOddWord(const QByteArray& operators) {
  int operands = 0, depth = 0;
  bool hasPoint = false;
  for (const QByteArray& word : operators.simplified().split(' ')) {
    bool isNumber = false;
    const double number = word.toDouble(&isNumber);
    if (word == "[]" || (isNumber && std::abs(number) <= 2e7 && !word.contains('e'))) {
      ++operands;
      continue;
    }
    depth += word == "q" ? 1 : word == "Q" ? -1 : 0;
    const bool needsPoint = word == "l" || word == "S";
    if (operandsOf(word) != operands || depth < 0 || (needsPoint && !hasPoint)) return word;
    hasPoint = word == "m" || word == "l";
    operands = 0;
  }
  return operands == 0 && depth == 0 ? QByteArray() : QByteArray("end");
}

TEST(PaperTraces, everyTraceGivesValidOperators) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  const float odd[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                       -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max(),
                       std::numeric_limits<float>::lowest(),    1e10F};
  const auto pick = [&random](auto... choices) {
    const double all[] = {double(choices)...};
    return all[random() % (sizeof all / sizeof *all)];
  };
  int drawn = 0;
  for (int round = 0; round < 300; ++round) {
    std::vector<float> samples = noise(1 + random() % 3000, float(pick(0, 0.1, 10, 1e6)), random());
    for (std::size_t k = 0; k < samples.size() / unsigned(pick(3, 100, 10000)); ++k)
      samples[random() % samples.size()] = odd[random() % (sizeof odd / sizeof *odd)];
    Trace trace;
    trace.samples = samples.data();
    trace.last = std::int64_t(samples.size());
    trace.xScale = pick(0.001, 0.07, 1, 50, -0.1, 1e12);
    trace.xOffset = pick(-10, 0, 100);
    trace.yScale = pick(1, -3, 1e-10, 1e30);
    trace.yOffset = pick(50, 0, -1e5);
    if (random() % 4 == 0) trace.clampLow = float(pick(-5, INFINITY, NAN));
    if (random() % 4 == 0) trace.clampHigh = float(pick(5, -INFINITY, NAN));
    if (random() % 4 == 0) trace.firstValue = float(pick(0, 1e30, NAN));
    PaperTraces traces;
    const QColor color(10, 20, 30, random() % 2 == 0 ? 255 : 100);
    const QTransform toPage(1.5, 0.1, 0.3, -1, 1.0 / 3, 1e-9);
    if (traces.stroke({trace, smallTrace()}, kPage, toPage, pick(1e-9, 0.7, 50), color).isEmpty()) continue;
    ++drawn;
    const auto content = traces.insertInto(marker(0));
    ASSERT_TRUE(content);
    EXPECT_EQ(firstOddWord(*content), "") << content->left(2000).constData();
  }
  EXPECT_EQ(drawn, 300); // the small trace always shows
}

} // namespace
} // namespace xov
