#include "XOV_Graphics/platform/surface/SvgPage.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/SvgPath.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QXmlStreamReader>

#include <cmath>
#include <limits>
#include <vector>

namespace xov {
namespace {

const QRectF kPage(0, 0, 200, 100);

/// The elements of a document in their order, each with its attributes and its text; no reader stumbles over it.
struct Element {
  QString name;
  QMap<QString, QString> attributes;
  QString text;
};

std::vector<Element> elementsOf(const QByteArray& svg) {
  std::vector<Element> elements;
  QXmlStreamReader reader(svg);
  while (!reader.atEnd()) {
    reader.readNext();
    if (reader.isStartElement()) {
      Element element{reader.name().toString(), {}, {}};
      for (const QXmlStreamAttribute& attribute : reader.attributes())
        element.attributes[attribute.name().toString()] = attribute.value().toString();
      elements.push_back(element);
    } else if (reader.isCharacters() && !elements.empty()) {
      elements.back().text += reader.text();
    }
  }
  EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
  return elements;
}

std::vector<Element> elementsNamed(const QByteArray& svg, const QString& name) {
  std::vector<Element> found = elementsOf(svg);
  std::erase_if(found, [&](const Element& element) { return element.name != name; });
  return found;
}

std::vector<Element> drawn(const char* name, const Drawing& draw) {
  return elementsNamed(svgPage(kPage, draw), QLatin1String(name));
}

TEST(SvgPage, isAsLargeAsTheRectangleInPoints) {
  const auto root = elementsNamed(svgPage({10, 20, 504, 360.5}, [](GraphicsContext&) {}), QStringLiteral("svg"));
  ASSERT_EQ(root.size(), 1u);
  EXPECT_EQ(root[0].attributes["width"], "504pt");
  EXPECT_EQ(root[0].attributes["height"], "360.5pt");
  EXPECT_EQ(root[0].attributes["viewBox"], "0 0 504 360.5");
}

TEST(SvgPage, anEmptyRectangleGivesNothing) {
  EXPECT_TRUE(svgPage({0, 0, 0, 10}, [](GraphicsContext&) {}).isEmpty());
  EXPECT_TRUE(svgPage({0, 0, 10, -10}, [](GraphicsContext&) {}).isEmpty());
  EXPECT_TRUE(svgPage({0, 0, std::nan(""), 10}, [](GraphicsContext&) {}).isEmpty());
}

// A page of 100 points' height has y = 10 at 90 from its upper edge.
TEST(SvgPage, aStrokeIsAPathWithItsSettings) {
  const auto paths = drawn("path", [](GraphicsContext& context) {
    Path path;
    path.moveTo({10, 10});
    path.lineTo({30, 10});
    path.lineTo({30, 40});
    path.setLineWidth(2.5);
    path.setLineCap(Path::Cap::Round);
    path.setDashes({5, 2.5}, 1);
    context.setStrokeColor(QColor(255, 0, 0, 51));
    context.strokePath(path);
  });
  ASSERT_EQ(paths.size(), 1u);
  const QMap<QString, QString> expected{{"d", "M10 90l20 0l0 -30"},  {"fill", "none"},
                                        {"stroke", "#ff0000"},       {"stroke-opacity", "0.2"},
                                        {"stroke-width", "2.5"},     {"stroke-linecap", "round"},
                                        {"stroke-miterlimit", "10"}, {"stroke-dasharray", "5 2.5"},
                                        {"stroke-dashoffset", "1"}};
  EXPECT_EQ(paths[0].attributes, expected);
}

TEST(SvgPage, aFrameIsClosedAndAFillKeepsItsRule) {
  const auto paths = drawn("path", [](GraphicsContext& context) {
    context.strokeRect({10, 10, 20, 30});
    Path path = Path::rect({0, 0, 5, 5});
    path.setWindingRule(Path::Winding::EvenOdd);
    context.setFillColor(colors::red);
    context.fillPath(path);
  });
  ASSERT_EQ(paths.size(), 2u);
  EXPECT_EQ(paths[0].attributes["d"], "M10 90l20 0l0 -30l-20 0z");
  EXPECT_EQ(paths[1].attributes["fill"], "#ff0000");
  EXPECT_EQ(paths[1].attributes["fill-rule"], "evenodd");
}

TEST(SvgPage, stepsAddNoErrorToEachOther) {
  QPainterPath path(QPointF(0, 0));
  for (int i = 1; i <= 1000; ++i)
    path.lineTo(i / 3.0, 0);
  const QByteArray data = svgPathData(path, {});
  double sum = 0;
  for (const QByteArray& step : data.mid(1).split('l'))
    sum += step.left(step.indexOf(' ')).toDouble();
  EXPECT_NEAR(sum, 1000 / 3.0, 0.0005001);
}

TEST(SvgPage, numbersAreShortAndFinite) {
  EXPECT_EQ(svgNumber(0), "0");
  EXPECT_EQ(svgNumber(-0.0004), "0");
  EXPECT_EQ(svgNumber(-1.25), "-1.25");
  EXPECT_EQ(svgNumber(-0.05), "-0.05");
  EXPECT_EQ(svgNumber(1234.5678), "1234.568");
  EXPECT_EQ(svgNumber(1e300), "1000000000");
}

TEST(SvgPage, aDenseTraceIsPathsAndNoPicture) {
  std::vector<float> samples(100000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i % 7) * 10;
  const auto draw = [&](GraphicsContext& context) {
    Trace trace;
    trace.samples = samples.data();
    trace.last = std::int64_t(samples.size());
    trace.xScale = 200.0 / double(samples.size());
    Path path;
    path.appendTrace(trace);
    context.strokePath(path);
  };
  EXPECT_TRUE(drawn("image", draw).empty());
  const auto paths = drawn("path", draw);
  ASSERT_FALSE(paths.empty());
  EXPECT_TRUE(paths[0].attributes["d"].startsWith(QLatin1String("M0 100l"))) << qPrintable(paths[0].attributes["d"]);
  EXPECT_LT(svgPage(kPage, draw).size(), 200000); // 800 columns of at most some ten points
}

// The ink of a translucent trace would double where two paths overlap.
TEST(SvgPage, aTranslucentTraceIsOnePath) {
  std::vector<float> samples(1000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i % 2 == 0 ? 10.0F : 90.0F;
  const auto pathsIn = [&](const QColor& color) {
    return drawn("path", [&](GraphicsContext& context) {
      Trace trace;
      trace.samples = samples.data();
      trace.last = std::int64_t(samples.size());
      trace.xScale = 0.2;
      Path path;
      path.appendTrace(trace);
      context.setColor(color);
      context.strokePath(path);
    });
  };
  EXPECT_EQ(pathsIn(QColor(0, 0, 0, 128)).size(), 1u);
  EXPECT_GT(pathsIn(colors::black).size(), 1u);
}

TEST(SvgPage, textStaysTextAtItsBaseline) {
  const auto texts = drawn("text", [](GraphicsContext& context) {
    context.drawText(QStringLiteral("A & <B>\nsecond"), {20, 30}, TextAttributes::helvetica(10));
  });
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0].text.trimmed(), "A & <B>");
  EXPECT_EQ(texts[1].text.trimmed(), "second");
  // A line is 11.5 points high, and its baseline lies 2.3 points above its lower edge: 100 - (30 + 2.3) for the
  // lower.
  EXPECT_EQ(texts[1].attributes["x"], "20");
  EXPECT_EQ(texts[1].attributes["y"], "67.7");
  EXPECT_EQ(texts[0].attributes["y"], "56.2");
  EXPECT_EQ(texts[0].attributes["font-size"], "10");
}

TEST(SvgPage, charactersThatXmlHasNotAreReplaced) {
  const auto texts = drawn("text", [](GraphicsContext& context) {
    context.drawText(QStringLiteral("a") + QChar(1) + QChar(0xFFFE) + QChar(0xD800) + QStringLiteral("b"), {0, 0},
                     TextAttributes::helvetica(10));
  });
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_TRUE(texts[0].text.startsWith(QLatin1Char('a')));
}

TEST(SvgPage, turnedTextHasAMatrix) {
  const auto texts = drawn("text", [](GraphicsContext& context) {
    context.concat(QTransform::fromTranslate(50, 40));
    context.concat(QTransform().rotate(90));
    context.drawText(QStringLiteral("up"), {0, 0}, TextAttributes::helvetica(10));
  });
  ASSERT_EQ(texts.size(), 1u);
  // Turned to the left about (50, 60) from above; the baseline lies 2.3 points to the left of where the box starts.
  EXPECT_EQ(texts[0].attributes["transform"], "matrix(0 -1 1 0 47.7 60)");
}

TEST(SvgPage, whatIsClippedStandsInAGroupWithTheClip) {
  const QByteArray svg = svgPage(kPage, [](GraphicsContext& context) {
    context.strokeRect({0, 0, 5, 5});
    const SavedState saved(context);
    context.clipToRect({10, 20, 30, 40});
    context.strokeRect({0, 0, 15, 25});
    context.strokeRect({0, 0, 16, 26});
  });
  const auto clips = elementsNamed(svg, QStringLiteral("clipPath"));
  ASSERT_EQ(clips.size(), 1u);
  const auto elements = elementsOf(svg);
  ASSERT_EQ(elements.size(), 7u); // svg, path, clipPath, its path, g and two paths
  EXPECT_EQ(elements[3].attributes["d"], "M10 80l30 0l0 -40l-30 0z");
  EXPECT_EQ(elements[4].attributes["clip-path"], "url(#" + clips[0].attributes["id"] + ")");
}

TEST(SvgPage, underAnEmptyClipThereIsNothing) {
  const QByteArray svg = svgPage(kPage, [](GraphicsContext& context) {
    context.clipToRect({300, 300, 10, 10});
    context.fillRect({0, 0, 100, 100});
    context.drawText(QStringLiteral("x"), {0, 0}, TextAttributes::helvetica(10));
  });
  EXPECT_EQ(elementsOf(svg).size(), 1u);
}

TEST(SvgPage, symbolsAreCircles) {
  const float x[] = {10, 20}, y[] = {30, 40};
  const auto circles = drawn("circle", [&](GraphicsContext& context) {
    Symbols symbols;
    symbols.x = x;
    symbols.y = y;
    symbols.last = 2;
    symbols.radius = 3;
    symbols.fill = colors::red;
    symbols.stroke = colors::black;
    symbols.strokes = 2;
    context.drawSymbols(symbols);
  });
  ASSERT_EQ(circles.size(), 4u); // each with a second outline
  EXPECT_EQ(circles[0].attributes["cx"], "10");
  EXPECT_EQ(circles[0].attributes["cy"], "70");
  EXPECT_EQ(circles[0].attributes["r"], "3");
  EXPECT_EQ(circles[1].attributes["fill"], "none");
  EXPECT_EQ(circles[2].attributes["cx"], "20");
}

TEST(SvgPage, anImageStandsUprightInItsPlace) {
  QImage image(2, 2, QImage::Format_RGB32);
  image.fill(Qt::blue);
  const auto images = drawn("image", [&](GraphicsContext& context) {
    context.drawImage(image, {10, 20, 40, 30}, {0, 0, 2, 2}, 0.5);
  });
  ASSERT_EQ(images.size(), 1u);
  EXPECT_EQ(images[0].attributes["transform"], "matrix(1 0 0 1 10 50)"); // its upper edge is at 100 - (20 + 30)
  EXPECT_EQ(images[0].attributes["width"], "40");
  EXPECT_EQ(images[0].attributes["height"], "30");
  EXPECT_EQ(images[0].attributes["opacity"], "0.5");
  const QByteArray png = QByteArray::fromBase64(images[0].attributes["href"].section(QLatin1Char(','), 1).toLatin1());
  EXPECT_EQ(QImage::fromData(png).pixel(0, 0), qRgb(0, 0, 255));
}

TEST(SvgPage, theSameDrawingGivesTheSameBytes) {
  const auto draw = [](GraphicsContext& context) {
    context.clipToRect({10, 20, 30, 40});
    context.strokeRect({0, 0, 15, 25});
    context.drawText(QStringLiteral("a"), {10, 20}, TextAttributes::helvetica(10));
  };
  EXPECT_EQ(svgPage(kPage, draw), svgPage(kPage, draw));
}

TEST(SvgPath, curvesAreStepsFromTheirBeginning) {
  QPainterPath path({10, 20});
  path.cubicTo({11, 22}, {13, 24}, {15, 26});
  path.cubicTo({11, 22}, {13, 24}, {10, 20});
  path.moveTo(0, 0);
  path.lineTo(1, 1);
  EXPECT_EQ(svgPathData(path, QTransform(), 2), "M10 20c1 2 3 4 5 6c-4 -4 -2 -2 -5 -6zM0 0l1 1");
}

} // namespace
} // namespace xov
