#include "XOV_Graphics/platform/GraphicsContext.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace xov {
namespace {

using testing::differingPixels;
using testing::pixelAt;

TEST(GraphicsContext, drawingOutsideAPassIsIgnored) {
  GraphicsContext& none = GraphicsContext::current();
  none.saveState();
  none.setColor(colors::red);
  none.fillRect({0, 0, 10, 10});
  none.drawText(QStringLiteral("x"), {0, 0}, TextAttributes());
  none.restoreState();
  EXPECT_EQ(&GraphicsContext::current(), &none);
  EXPECT_EQ(none.state().fillColor, colors::black);
}

TEST(GraphicsContext, passesNestAndGiveTheOuterContextBack) {
  RecordingContext outer;
  RecordingContext inner;
  const GraphicsContext::Pass outerPass(outer);
  {
    const GraphicsContext::Pass innerPass(inner);
    EXPECT_EQ(&GraphicsContext::current(), &inner);
  }
  EXPECT_EQ(&GraphicsContext::current(), &outer);
}

TEST(GraphicsContext, aPassLeavesTheStateAsItWas) {
  RecordingContext context;
  context.setColor(colors::red);
  {
    const GraphicsContext::Pass pass(context);
    context.saveState();
    context.saveState();
    context.setColor(colors::blue);
    context.clipToRect({0, 0, 1, 1});
  }
  EXPECT_EQ(context.stateDepth(), 1u);
  EXPECT_EQ(context.state().fillColor, colors::red);
  EXPECT_FALSE(context.state().clipRect.has_value());
}

TEST(GraphicsContext, aSavedStateComesBackWhereItsScopeEnds) {
  RecordingContext context;
  context.setColor(colors::red);
  {
    const SavedState saved(context);
    context.setColor(colors::blue);
    context.clipToRect({0, 0, 1, 1});
    context.concat(QTransform::fromTranslate(100, 0));
    EXPECT_EQ(context.stateDepth(), 2u);
  }
  EXPECT_EQ(context.stateDepth(), 1u);
  EXPECT_EQ(context.state().strokeColor, colors::red);
  EXPECT_FALSE(context.state().clipRect.has_value());
  EXPECT_TRUE(context.state().transform.isIdentity());
}

TEST(GraphicsContext, restoringMoreThanWasSavedDoesNothing) {
  RecordingContext context;
  context.setColor(colors::green);
  context.restoreState();
  context.restoreState();
  EXPECT_EQ(context.state().strokeColor, colors::green);
}

TEST(GraphicsContext, transformsApplyInnermostFirst) {
  RecordingContext context;
  context.concat(QTransform::fromTranslate(100, 0));
  context.concat(QTransform::fromScale(2, 2));
  EXPECT_EQ(context.state().transform.map(QPointF(3, 4)), QPointF(106, 8));
}

TEST(GraphicsContext, transformsThatAreNotFiniteAreIgnored) {
  RecordingContext context;
  context.concat(QTransform(std::nan(""), 0, 0, 1, 0, 0));
  EXPECT_TRUE(context.state().transform.isIdentity());
}

TEST(GraphicsContext, clippingToNothingHidesEverything) {
  const QImage image = picture({0, 0, 4, 4}, 1, [](GraphicsContext& context) {
    context.clipToRect({1, 1, -5, 2});
    context.fillRect({0, 0, 4, 4});
  });
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 4; ++x)
      EXPECT_EQ(qAlpha(pixelAt(image, x, y)), 0);
  }
}

// Patches go through a rasteriser that is told the clip in whole pixels.
TEST(PixelContext, aClipOfAbsurdReachIsTheSameAsOneOfThePicture) {
  const auto drawn = [](const std::optional<QRectF>& clip) {
    return picture({0, 0, 4, 4}, 1, [&clip](GraphicsContext& context) {
      if (clip) context.clipToRect(*clip);
      Patches patches;
      const QPointF corners[] = {{1, 1}, {3, 1}, {3, 3}, {1, 3}};
      patches.begin(colors::red);
      patches.addContour(corners);
      context.fillPatches(patches);
      context.setFillColor(colors::blue);
      context.fillRect({0, 0, 4, 1});
    });
  };
  const QImage whole = drawn({});
  EXPECT_EQ(pixelAt(whole, 1, 1), 0xffff0000);
  EXPECT_EQ(pixelAt(whole, 3, 3), 0xff0000ff);
  for (const double far : {1e9, 1e12, 1e200, 8e307})
    EXPECT_EQ(drawn(QRectF(-far, -far, 2 * far, 2 * far)), whole) << far;
  // The left half: up to x = 2.
  const QImage half = drawn(QRectF(-1e12, -1e12, 1e12 + 2, 2e12));
  EXPECT_EQ(pixelAt(half, 1, 1), 0xffff0000);
  EXPECT_EQ(qAlpha(pixelAt(half, 2, 1)), 0);
  EXPECT_EQ(qAlpha(pixelAt(drawn(QRectF(1e12, 1e12, 5, 5)), 1, 1)), 0);
}

TEST(PixelContext, yGrowsUpwards) {
  const QImage image = picture({0, 0, 10, 10}, 1, [](GraphicsContext& context) {
    context.setColor(colors::red);
    context.fillRect({0, 0, 2, 3}); // lower left corner
  });
  EXPECT_EQ(pixelAt(image, 0, 9), 0xffff0000);
  EXPECT_EQ(pixelAt(image, 1, 7), 0xffff0000);
  EXPECT_EQ(qAlpha(pixelAt(image, 0, 6)), 0);
  EXPECT_EQ(qAlpha(pixelAt(image, 2, 9)), 0);
}

TEST(PixelContext, aPictureHasRatioTimesThePixelsAndSaysItsResolution) {
  const QImage image = picture({0, 0, 101, 50}, 1.5, [](GraphicsContext&) {});
  EXPECT_EQ(image.size(), QSize(152, 75)); // 151.5 rounds up
  EXPECT_EQ(image.devicePixelRatio(), 1.5);
  EXPECT_EQ(image.dotsPerMeterX(), 4252); // 72 · 1.5 / 0.0254 = 4251.97
}

TEST(PixelContext, aPictureOfPartOfAViewShowsThatPart) {
  const QImage image = picture({10, 20, 4, 4}, 1, [](GraphicsContext& context) {
    context.setColor(colors::blue);
    context.fillRect({10, 20, 1, 1});
  });
  EXPECT_EQ(pixelAt(image, 0, 3), 0xff0000ff);
  EXPECT_EQ(qAlpha(pixelAt(image, 1, 3)), 0);
}

TEST(PixelContext, absurdPictureSizesGiveNoPicture) {
  const auto nothing = [](GraphicsContext&) {};
  EXPECT_TRUE(picture({0, 0, 0, 5}, 1, nothing).isNull());
  EXPECT_TRUE(picture({0, 0, -5, 5}, 1, nothing).isNull());
  EXPECT_TRUE(picture({0, 0, 1e9, 5}, 1, nothing).isNull());
  EXPECT_TRUE(picture({0, 0, std::nan(""), 5}, 1, nothing).isNull());
}

TEST(PixelContext, aTickOnAPixelBorderIsOneSolidPixel) {
  const QImage image = picture({0, 0, 10, 10}, 1, [](GraphicsContext& context) {
    context.setColor(colors::white);
    context.fillRect({0, 0, 10, 10});
    context.setColor(colors::black);
    Path tick;
    tick.moveTo({5, 0});
    tick.lineTo({5, 4});
    tick.setLineWidth(0.75);
    context.strokePath(tick);
  });
  EXPECT_EQ(pixelAt(image, 5, 8), 0xff000000);
  EXPECT_EQ(pixelAt(image, 4, 8), 0xffffffff);
  EXPECT_EQ(pixelAt(image, 6, 8), 0xffffffff);
}

// A dot of width 1 every 2.51 points: ten of them over 25 points, each π/4 of a square point.
TEST(PixelContext, dashLengthsArePointsWhateverTheLineWidth) {
  for (double width : {0.5, 1.0, 2.0}) {
    const QImage image = picture({0, 0, 60, 10}, 4, [width](GraphicsContext& context) {
      Path line;
      line.moveTo({5, 5});
      line.lineTo({55, 5});
      line.setLineWidth(width);
      line.setDashes({5, 5}, 0);
      context.strokePath(line);
    });
    // Five dashes of 5 points: 5..10, 15..20, … The pixel columns in between stay empty.
    const int row = 20;                                       // y = 5 points
    EXPECT_GT(qAlpha(pixelAt(image, 30, row)), 200) << width; // x = 7.5
    EXPECT_EQ(qAlpha(pixelAt(image, 50, row)), 0) << width;   // x = 12.5
    EXPECT_GT(qAlpha(pixelAt(image, 70, row)), 200) << width; // x = 17.5
    EXPECT_EQ(qAlpha(pixelAt(image, 215, row)), 0) << width;  // x = 53.75
  }
}

TEST(PixelContext, aMitreReachesItsTipWithinTheLimitAndIsCutBeyond) {
  // Two lines of width 4 that meet at 30 degrees: the mitre is 4 / sin 15° = 15.5 long, 3.9 widths.
  const auto tip = [](double limit) {
    const QImage image = picture({0, 0, 60, 40}, 4, [limit](GraphicsContext& context) {
      Path path;
      path.moveTo({10, 20 - 30 * std::tan(M_PI / 12)});
      path.lineTo({40, 20});
      path.lineTo({10, 20 + 30 * std::tan(M_PI / 12)});
      path.setLineWidth(4);
      path.setMiterLimit(limit);
      context.strokePath(path);
    });
    int x = image.width() - 1;
    while (x > 0 && qAlpha(pixelAt(image, x, 80)) == 0)
      --x;
    return (x + 1) / 4.0;
  };
  EXPECT_NEAR(tip(10), 40 + 2 / std::sin(M_PI / 12), 0.5); // half a mitre beyond the join: 47.7
  EXPECT_NEAR(tip(3), 40 + 2 * std::sin(M_PI / 12), 0.5);  // bevel: 0.5 beyond it
}

TEST(PixelContext, farCoordinatesDrawWhatShows) {
  const QImage image = picture({0, 0, 20, 20}, 1, [](GraphicsContext& context) {
    Path path;
    path.moveTo({-1e9, -1e9 + 0.5});
    path.lineTo({1e9, 1e9 + 0.5});
    context.strokePath(path);
  });
  EXPECT_GT(qAlpha(pixelAt(image, 10, 9)), 100); // on the diagonal
  EXPECT_EQ(qAlpha(pixelAt(image, 2, 2)), 0);
}

// Twice as high as wide, lines are no rasteriser's of ours.
TEST(PixelContext, aTraceOfAStretchedViewIsTheLineThroughItsSamples) {
  // A sawtooth of 3000 samples on 150 points, more than are stroked at once, with a gap.
  std::vector<float> samples(3000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i % 200) / 5;
  for (std::size_t i = 1000; i < 1100; ++i)
    samples[i] = std::numeric_limits<float>::quiet_NaN();
  const auto drawn = [](const Path& path) {
    return picture({0, 0, 150, 100}, 1, [&](GraphicsContext& context) {
      context.concat(QTransform::fromScale(1, 2));
      context.strokePath(path);
    });
  };
  Trace trace;
  trace.samples = samples.data();
  trace.last = 3000;
  trace.time = TraceTime::even(0, 1);
  trace.xScale = 0.05;
  Path traced, lines;
  traced.setLineWidth(2);
  traced.appendTrace(trace);
  lines.setLineWidth(2);
  lines.setLineJoin(Path::Join::Round);
  for (int i = 0; i < 3000; ++i) {
    if (i >= 1000 && i < 1100) continue;
    const QPointF point(i * 0.05, double(samples[std::size_t(i)]));
    if (i == 0 || i == 1100) {
      lines.moveTo(point);
    } else {
      lines.lineTo(point);
    }
  }
  const QImage image = drawn(traced);
  EXPECT_LE(differingPixels(image, drawn(lines), 2), 4) << "where one piece ends and the next begins";
  EXPECT_GT(differingPixels(image, drawn(Path())), 1000);
  EXPECT_EQ(differingPixels(image.copy(51, 0, 3, 100), drawn(Path()).copy(51, 0, 3, 100)), 0) << "the gap";
}

TEST(PixelContext, imagesKeepSharpCellsWhenEnlarged) {
  QImage cells(2, 2, QImage::Format_RGB32);
  cells.setPixel(0, 0, 0xffff0000); // upper left
  cells.setPixel(1, 0, 0xff00ff00);
  cells.setPixel(0, 1, 0xff0000ff);
  cells.setPixel(1, 1, 0xffffffff);
  const QImage image = picture({0, 0, 20, 20}, 1, [&](GraphicsContext& context) {
    context.drawImage(cells, {0, 0, 20, 20}, {0, 0, 2, 2});
  });
  EXPECT_EQ(pixelAt(image, 9, 9), 0xffff0000);
  EXPECT_EQ(pixelAt(image, 10, 9), 0xff00ff00);
  EXPECT_EQ(pixelAt(image, 9, 10), 0xff0000ff);
  EXPECT_EQ(pixelAt(image, 10, 10), 0xffffffff);
}

TEST(PixelContext, textStandsOnItsBoxAndLinesFollowDownwards) {
  const TextAttributes font = TextAttributes::helvetica(20);
  const QImage image = picture({0, 0, 60, 60}, 1, [&](GraphicsContext& context) {
    context.drawText(QStringLiteral("H\nH"), {10, 5}, font);
  });
  // The lower baseline lies 0.23 · 20 = 4.6 above y = 5, the upper one 23 higher; an H has no ink below either.
  const auto inkRow = [&](double y) {
    const int row = 60 - 1 - int(y);
    for (int x = 10; x < 30; ++x) {
      if (qAlpha(pixelAt(image, x, row)) > 64) return true;
    }
    return false;
  };
  EXPECT_TRUE(inkRow(11));
  EXPECT_FALSE(inkRow(7));
  EXPECT_TRUE(inkRow(34));
  EXPECT_FALSE(inkRow(29));
}

} // namespace
} // namespace xov
