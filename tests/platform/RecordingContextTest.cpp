#include "XOV_Graphics/platform/RecordingContext.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

using testing::differingPixels;

TEST(RecordingContext, keepsEachStrokeWithItsSettings) {
  RecordingContext recording;
  {
    const GraphicsContext::Pass pass(recording);
    Path path;
    path.moveTo({1, 2});
    path.lineTo({3, 4});
    path.setLineWidth(2.5);
    path.setLineCap(Path::Cap::Round);
    path.setDashes({0.01, 2.5}, 1);
    GraphicsContext::current().setColor(colors::lightGray);
    GraphicsContext::current().strokePath(path);
  }
  ASSERT_EQ(recording.strokes().size(), 1u);
  const RecordedItem stroke = recording.strokes().front();
  EXPECT_EQ(stroke.color, colors::lightGray);
  EXPECT_EQ(stroke.path.lineWidth(), 2.5);
  EXPECT_EQ(stroke.path.lineCap(), Path::Cap::Round);
  EXPECT_EQ(stroke.path.dashes(), (std::vector<double>{0.01, 2.5}));
  EXPECT_EQ(stroke.segments(), std::vector<QLineF>{QLineF(1, 2, 3, 4)});
  EXPECT_FALSE(stroke.clip.has_value());
}

TEST(RecordingContext, geometryIsInViewPointsAfterTheTransform) {
  RecordingContext recording;
  recording.concat(QTransform::fromTranslate(10, 20));
  recording.fillRect({0, 0, 2, 3});
  EXPECT_EQ(recording.fills().front().path.shape().boundingRect(), QRectF(10, 20, 2, 3));
}

TEST(RecordingContext, aTextTellsItsPlaceAndItsAngle) {
  RecordingContext recording;
  recording.concat(QTransform::fromTranslate(30, 40));
  recording.concat(QTransform().rotate(90));
  recording.drawText(QStringLiteral("up"), {0, 0}, TextAttributes::helvetica(12));
  const RecordedItem text = recording.texts().front();
  EXPECT_EQ(text.position, QPointF(30, 40));
  EXPECT_NEAR(text.angleDegrees, 90, 1e-9);
  EXPECT_EQ(text.color, colors::black);
  EXPECT_EQ(recording.strings(), QStringList{QStringLiteral("up")});
}

TEST(RecordingContext, theClipInForceIsKeptWithEachItem) {
  RecordingContext recording;
  recording.saveState();
  recording.clipToRect({0, 0, 50, 50});
  recording.clipToRect({40, 10, 50, 50});
  recording.fillRect({0, 0, 1, 1});
  recording.restoreState();
  recording.fillRect({0, 0, 1, 1});
  EXPECT_EQ(recording.fills()[0].clip, QRectF(40, 10, 10, 40));
  EXPECT_FALSE(recording.fills()[1].clip.has_value());
}

TEST(RecordingContext, aRecordedTraceOutlivesItsSamples) {
  RecordingContext recording;
  {
    std::vector<float> samples = {9, 1, 2, 3};
    Trace trace;
    trace.samples = samples.data();
    trace.first = 1;
    trace.last = 4;
    trace.time = TraceTime::uniform(0, 1);
    Path path;
    path.appendTrace(trace);
    recording.strokePath(path);
    samples.assign(4, -1);
  }
  ASSERT_EQ(recording.strokes().front().path.traces().size(), 1u);
  EXPECT_EQ(recording.strokes().front().path.polylines().at(0), QPolygonF({{1, 1}, {2, 2}, {3, 3}}));
}

// Samples 2 to 4 are 30, 40 and 50, a point apart, in a buffer that has gone when they are read.
TEST(RecordingContext, itemsOutliveTheRecordingAndWhatWasDrawn) {
  RecordedItem stroke, dots;
  std::vector<RecordedItem> strokes;
  {
    RecordingContext recording;
    std::vector<float> samples{10, 20, 30, 40, 50}, times{0, 1, 2, 3, 4};
    std::vector<SymbolLook> looks(5);
    looks[3].radius = 7;
    Trace trace;
    trace.samples = samples.data();
    trace.first = 2;
    trace.last = 5;
    trace.time = TraceTime::explicitValues(times.data());
    Path path;
    path.appendTrace(trace);
    recording.strokePath(path);
    Symbols symbols;
    symbols.x = times.data();
    symbols.y = samples.data();
    symbols.looks = looks.data();
    symbols.first = 2;
    symbols.last = 5;
    recording.drawSymbols(symbols);
    stroke = recording.items()[0];
    dots = recording.items()[1];
    strokes = recording.strokes();
    std::fill(samples.begin(), samples.end(), 0.0F);
    std::fill(times.begin(), times.end(), 0.0F);
  }
  const std::vector<QPointF> expected{{2, 30}, {3, 40}, {4, 50}};
  EXPECT_EQ(stroke.path.traces().at(0).points(), expected);
  EXPECT_EQ(strokes.at(0).path.traces().at(0).points(), expected);
  for (std::int64_t i = 2; i < 5; ++i)
    EXPECT_EQ(dots.symbols.center(i), expected[std::size_t(i - 2)]);
  EXPECT_EQ(dots.symbols.look(3).radius, 7);
}

TEST(RecordingContext, whatIsDrawnTwiceIsKeptOnceAndWhatHasChangedAnew) {
  RecordingContext recording;
  std::vector<float> samples{10, std::numeric_limits<float>::quiet_NaN(), 30, 40};
  const auto stroke = [&](std::int64_t first, std::int64_t last) {
    Trace trace;
    trace.samples = samples.data();
    trace.first = first;
    trace.last = last;
    Path path;
    path.appendTrace(trace);
    recording.strokePath(path);
    return recording.items().back().path.traces().front().samples + first;
  };
  const float* const once = stroke(0, 4);
  EXPECT_EQ(stroke(0, 4), once);
  EXPECT_NE(stroke(0, 3), once);
  samples[3] = 50;
  const float* const changed = stroke(0, 4);
  EXPECT_NE(changed, once);
  EXPECT_EQ(once[3], 40);
  EXPECT_EQ(changed[3], 50);
}

TEST(RecordingContext, anImageKeepsSourceTargetOpacityAndKind) {
  RecordingContext recording;
  QImage image(4, 4, QImage::Format_RGB32);
  image.fill(Qt::red);
  recording.drawImage(image, {0, 0, 8, 8}, {1, 1, 2, 2}, 0.5, ImageKind::ExactPicture);
  RecordingContext again;
  recording.replay(again);
  const RecordedItem item = again.images().front();
  EXPECT_EQ(item.target, QRectF(0, 0, 8, 8));
  EXPECT_EQ(item.source, QRectF(1, 1, 2, 2));
  EXPECT_EQ(item.fraction, 0.5);
  EXPECT_EQ(item.imageKind, ImageKind::ExactPicture);
}

TEST(RecordingContext, readsAsText) {
  RecordingContext recording;
  recording.setColor(colors::red);
  Path path;
  path.moveTo({60, 60});
  path.lineTo({440, 60.5});
  recording.strokePath(path);
  recording.drawText(QStringLiteral("a\nb"), {1, 2}, TextAttributes::helvetica(14));
  EXPECT_EQ(recording.toText(), QStringLiteral("stroke #ff0000 w=1 (60,60)-(440,60.5)\n"
                                               "text #000000 Helvetica 14 at (1,2) \"a\\nb\"\n"));
}

TEST(RecordingContext, emptyPathsAndTextsAreNotRecorded) {
  RecordingContext recording;
  recording.strokePath(Path());
  recording.fillPath(Path());
  recording.drawText(QString(), {0, 0}, TextAttributes());
  recording.drawText(QStringLiteral("x"), {std::nan(""), 0}, TextAttributes());
  recording.drawImage(QImage(), {0, 0, 1, 1}, {0, 0, 1, 1});
  EXPECT_TRUE(recording.items().empty());
}

TEST(RecordingContext, drawnAgainItGivesTheSamePicture) {
  std::vector<float> samples(500);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float((i * 7919) % 41) - 20;
  const auto draw = [&](GraphicsContext& context) {
    context.setColor(colors::white);
    context.fillRect({0, 0, 120, 90});
    context.saveState();
    context.clipToRect({10, 10, 100, 60});
    Trace trace;
    trace.samples = samples.data();
    trace.last = 500;
    trace.time = TraceTime::uniform(5, 0.2f);
    trace.yOffset = 45;
    Path path;
    path.appendTrace(trace);
    context.setColor(colors::blue);
    context.strokePath(path);
    Path oval;
    oval.appendOval({20, 20, 30, 30});
    context.clipToPath(oval);
    context.setColor(colors::orange);
    context.fillRect({0, 0, 40, 90});
    context.restoreState();
    context.concat(QTransform().translate(30, 5).rotate(20));
    context.drawText(QStringLiteral("Helvetica"), {0, 0}, TextAttributes::helvetica(11));
  };
  RecordingContext recording;
  draw(recording);
  const QImage direct = picture({0, 0, 120, 90}, 1.5, draw);
  const QImage again = picture({0, 0, 120, 90}, 1.5, [&](GraphicsContext& context) { recording.replay(context); });
  EXPECT_EQ(differingPixels(direct, again), 0);
}

TEST(RecordingContext, spellsOutCapsAndPictures) {
  RecordingContext recording;
  Path line;
  line.moveTo({0, 0});
  line.lineTo({2, 0});
  line.setLineCap(Path::Cap::Square);
  recording.strokePath(line);
  QImage picture(4, 3, QImage::Format_RGB32);
  picture.fill(Qt::red);
  recording.drawImage(picture, {10, 20, 40, 30}, {1, 0, 2, 3}, 0.5);
  EXPECT_EQ(recording.toText(), QStringLiteral("stroke #000000 w=1 cap=square (0,0)-(2,0)\n"
                                               "image 4x3 part [1,0 2x3] at [10,20 40x30] fraction=0.5\n"));
}

TEST(RecordingContext, turnedLobesAreTheirOutlinesAndEnclosedTracesStay) {
  // 0, 2, 0, -2, 0 at x 0 … 4: one lobe above the level, from 0 to 2.
  const std::vector<float> samples{0, 2, 0, -2, 0};
  Trace lobes;
  lobes.samples = samples.data();
  lobes.last = 5;
  lobes.time = TraceTime::even(0, 1);
  lobes.area = TraceArea::AboveLevel;
  Trace enclosed = lobes;
  enclosed.area = TraceArea::Enclosed;
  Path path;
  path.appendTrace(lobes);
  path.appendTrace(enclosed);
  RecordingContext recording;
  recording.concat(QTransform().rotate(90)); // (x, y) goes to (-y, x)
  recording.fillPath(path);
  const std::vector<QPolygonF> lines = recording.fills().front().path.polylines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].boundingRect(), QRectF(-2, 0, 2, 2)) << "the lobe, without what is below its level";
  EXPECT_EQ(lines[1].boundingRect(), QRectF(-2, 0, 4, 4)) << "the whole line";
}

} // namespace
} // namespace xov
