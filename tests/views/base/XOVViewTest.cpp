#include "XOV_Graphics/views/base/XOVView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"

#include <gtest/gtest.h>

#include <QDateTime>

#include <cstring>
#include <memory>

namespace xov {
namespace {

// Draws one step of a view and keeps what it drew.
template <typename Step>
std::unique_ptr<RecordingContext> recorded(Step step) {
  auto recording = std::make_unique<RecordingContext>();
  const GraphicsContext::Pass pass(*recording);
  step();
  return recording;
}

TEST(XOVView, startsWithTheDefaultsOfEveryField) {
  const XOVView view({0, 0, 200, 100});
  EXPECT_EQ(view.pRect(), QRectF());
  EXPECT_EQ(view.iRect(), QRectF());
  EXPECT_EQ(view.xyRect(), QRectF());
  EXPECT_EQ(*view.labelAttributes(), TextAttributes::helvetica(18));
  EXPECT_EQ(*view.sizeLabelAttributes(), TextAttributes::helvetica(12));
  EXPECT_EQ(*view.titleAttributes(), TextAttributes::helvetica(18));
  TextAttributes stamp = TextAttributes::helvetica(9);
  stamp.setColor(colors::gray);
  EXPECT_EQ(*view.timeStampAttributes(), stamp);
  EXPECT_TRUE(view.plotTitle().isEmpty());
  EXPECT_TRUE(view.xLabelString().isEmpty());
  EXPECT_TRUE(view.yLabelString().isEmpty());
  EXPECT_FALSE(view._fixedXAxisRange());
  EXPECT_FALSE(view._fixedYAxisRange());
  EXPECT_EQ(view.xmin(), 0);
  EXPECT_EQ(view.xmax(), 0);
  EXPECT_EQ(view.ymin(), 0);
  EXPECT_EQ(view.ymax(), 0);
  EXPECT_EQ(view.zmin(), 0);
  EXPECT_EQ(view.zmax(), 0);
  EXPECT_EQ(view.minYRange(), -12345);
  EXPECT_EQ(view.margins(), (std::array<float, 4>{}));
  EXPECT_EQ(view.pltCount(), 0);
  EXPECT_TRUE(view.xAxisPath()->isEmpty());
  EXPECT_FALSE(view._timeStamp());
  EXPECT_FALSE(view._showZoomRect());
  EXPECT_FALSE(view._showPlotTitle());
  EXPECT_FALSE(view._trackMouse());
  EXPECT_EQ(view._mouseTrackInterval(), 0.25);
  EXPECT_EQ(view._mouseTrackTimer(), nullptr);
  EXPECT_STREQ(view.xLabel(), "");
  EXPECT_EQ(view.controller(), nullptr);
}

/// Shows what subclasses may call.
class LabelledView : public XOVView {
public:
  using XOVView::addAxis;
  using XOVView::beginAxes;
  using XOVView::LabelRoom;
  using XOVView::setXLabel;
};

TEST(XOVView, anAxisLabelFillsItsBuffer) {
  LabelledView view;
  const QString text(100, QLatin1Char('x'));
  view.setXLabel(text);
  EXPECT_EQ(std::strlen(view.xLabel()), 63u);
  view.setXLabel(text, LabelledView::LabelRoom::ExceptPowerOfTen);
  EXPECT_EQ(std::strlen(view.xLabel()), 47u);
  // Two bytes a letter: 31 of them, and none by half.
  view.setXLabel(QString(100, QChar(0x00E4)));
  EXPECT_EQ(QString::fromUtf8(view.xLabel()), QString(31, QChar(0x00E4)));
}

TEST(XOVView, onlyAnAxisThatAPowerOfTenMayFollowKeepsRoomForIt) {
  LabelledView view;
  const QString text(100, QLatin1Char('x'));
  RecordingContext recording;
  const GraphicsContext::Pass pass(recording);
  view.beginAxes({50, 50, 400, 300});
  ASetYAxisPowerFlag(1);
  view.addAxis(AxisSide::Bottom, text, 0, 10);
  view.addAxis(AxisSide::Left, text, 0, 10);
  const QStringList drawn = recording.strings();
  EXPECT_TRUE(drawn.contains(QString(63, QLatin1Char('x'))));
  EXPECT_TRUE(drawn.contains(QString(47, QLatin1Char('x'))));
}

TEST(XOVView, aViewOf200By100PointsIsLaidOut) {
  XOVView view({0, 0, 200, 100});
  view.computeRects();
  EXPECT_EQ(view.pRect(), QRectF(20, 20, 160, 60));
  EXPECT_EQ(view.iRect(), QRectF(50, 50, 120, 20));
}

TEST(XOVView, aViewBelow80PointsKeepsItsNegativeFrame) {
  XOVView view({0, 0, 70, 60});
  view.computeRects();
  EXPECT_EQ(view.iRect(), QRectF(50, 50, -10, -20));
}

TEST(XOVView, limitsOutOfOrderGiveADataRectangleOfNegativeWidth) {
  XOVView view({0, 0, 100, 100});
  view.setXmax(1);
  view.setXmin(5);
  EXPECT_EQ(view.xmin(), 5);
  EXPECT_EQ(view.xmax(), 1);
  EXPECT_EQ(view.xyRect(), QRectF(5, 0, -4, 0));
}

TEST(XOVView, everyLimitSetterRewritesTheDataRectangle) {
  XOVView view({0, 0, 100, 100});
  view.set_fixedXAxisRange(true); // setters take no notice
  view.setXLimitsMinMax(1, 4);
  EXPECT_EQ(view.xyRect(), QRectF(1, 0, 3, 0));
  view.setYLimitsMinMax(-2, 5);
  EXPECT_EQ(view.xyRect(), QRectF(1, -2, 3, 7));
  view.setXmin(2);
  EXPECT_EQ(view.xyRect(), QRectF(2, -2, 2, 7));
  view.setXmax(10);
  EXPECT_EQ(view.xyRect(), QRectF(2, -2, 8, 7));
  view.setYmin(0);
  EXPECT_EQ(view.xyRect(), QRectF(2, 0, 8, 5));
  view.setYmax(1);
  EXPECT_EQ(view.xyRect(), QRectF(2, 0, 8, 1));
}

TEST(XOVView, storesWhatTheHostSets) {
  XOVView view({0, 0, 100, 100});
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  view.set_timeStamp(true);
  view.set_showPlotTitle(true);
  view.set_showZoomRect(true);
  view.setMinYRange(3);
  view.setTitle(QStringLiteral("title"));
  view.setXLabelString(QStringLiteral("x"));
  view.setYLabelString(QStringLiteral("y"));
  EXPECT_TRUE(view._fixedXAxisRange());
  EXPECT_TRUE(view._fixedYAxisRange());
  EXPECT_TRUE(view._timeStamp());
  EXPECT_TRUE(view._showPlotTitle());
  EXPECT_TRUE(view._showZoomRect());
  EXPECT_EQ(view.minYRange(), 3);
  EXPECT_EQ(view.plotTitle(), QStringLiteral("title"));
  EXPECT_EQ(view.xLabelString(), QStringLiteral("x"));
  EXPECT_EQ(view.yLabelString(), QStringLiteral("y"));
  view.setTitle(QString());
  EXPECT_TRUE(view.plotTitle().isEmpty());
}

TEST(XOVView, fontSettersReplaceTheFontAndKeepTheColour) {
  XOVView view({0, 0, 100, 100});
  view.labelAttributes()->setColor(colors::gray);
  view.setLabelFontSize(14);
  EXPECT_EQ(view.labelAttributes()->pointSize(), 14);
  EXPECT_EQ(view.labelAttributes()->color(), colors::gray);
  view.setTitleColor(colors::red);
  view.setTitleFontSize(24);
  EXPECT_EQ(view.titleAttributes()->pointSize(), 24);
  EXPECT_EQ(view.titleAttributes()->color(), colors::red);
}

TEST(XOVView, textCodes3And3PutTheUpperRightCornerAtThePoint) {
  XOVView view({0, 0, 300, 200});
  const QString text = QStringLiteral("Amplitude");
  const QSizeF size = view.labelAttributes()->size(text);
  const auto recording = recorded([&] { view.drawStringXYHJustVJust(text, 200, 100, 3, 3); });
  const RecordedItem item = recording->texts().at(0);
  EXPECT_NEAR(item.position.x() + size.width(), 200, 1e-9);
  EXPECT_NEAR(item.position.y() + size.height(), 100, 1e-9);
}

TEST(XOVView, aVerticalLabelIsCentredOnY) {
  XOVView view({0, 0, 300, 200});
  const QString text = QStringLiteral("Counts");
  const double width = view.labelAttributes()->size(text).width();
  const auto recording = recorded([&] { view.drawRotatedStringXYHJustVJustAngle(text, 28, 100, 1, 2, 90); });
  const RecordedItem item = recording->texts().at(0);
  // Turned by 90 degrees the text runs upwards from its corner by its width.
  EXPECT_NEAR(item.angleDegrees, 90, 1e-5);
  EXPECT_NEAR(item.position.x(), 28, 1e-9);
  EXPECT_NEAR(item.position.y() + width / 2, 100, 1e-9);
}

TEST(XOVView, rotatedTextLeavesTheStateAsItWas) {
  XOVView view({0, 0, 300, 200});
  RecordingContext recording;
  const GraphicsContext::Pass pass(recording);
  const std::size_t depth = recording.stateDepth();
  view.drawRotatedStringXYHJustVJustAngle(QStringLiteral("x"), 1, 2, 3, 3, 30);
  EXPECT_EQ(recording.stateDepth(), depth);
  EXPECT_TRUE(recording.state().transform.isIdentity());
}

TEST(XOVView, anEmptyTitleDrawsNothing) {
  XOVView view({0, 0, 300, 200});
  view.computeRects();
  const auto recording = recorded([&] {
    view.drawTitle();
    view.drawTitleTopCentered();
    view.setTitle(QString());
    view.drawTitle();
  });
  EXPECT_TRUE(recording->items().empty());
}

TEST(XOVView, theTitleStandsInsideTheFrame) {
  XOVView view({0, 0, 300, 200}); // iRect (50, 50, 220, 120), right edge 270, top 170
  view.computeRects();
  view.setTitle(QStringLiteral("Event"));
  const QSizeF size = view.titleAttributes()->size(QStringLiteral("Event"));
  const auto recording = recorded([&] { view.drawTitle(); });
  EXPECT_NEAR(recording->texts().at(0).position.x(), 270 - size.width() - 24, 1e-9);
  EXPECT_NEAR(recording->texts().at(0).position.y(), 170 - 2 * 1.15 * 18, 1e-9);
}

TEST(XOVView, theCentredTitleStands4PointsAboveTheFrame) {
  XOVView view({0, 0, 300, 200});
  view.computeRects();
  view.setTitle(QStringLiteral("Event"));
  const double width = view.titleAttributes()->size(QStringLiteral("Event")).width();
  const auto recording = recorded([&] { view.drawTitleTopCentered(); });
  EXPECT_NEAR(recording->texts().at(0).position.x(), 50 + (220 - width) / 2, 1e-9);
  EXPECT_NEAR(recording->texts().at(0).position.y(), 174, 1e-9);
}

// The subtitle's box is 1.15 x 9 = 10.35 points high.
TEST(XOVView, theSubtitleStandsBetweenFrameAndTitle) {
  XOVView view({0, 0, 300, 200});
  view.computeRects();
  view.setTitle(QStringLiteral("Event"));
  view.setSubtitle(QStringLiteral("filtered"));
  view.setTitleColor(colors::red);
  const auto recording = recorded([&] { view.drawTitleTopCentered(); });
  const auto texts = recording->texts();
  ASSERT_EQ(texts.size(), 2U);
  const double width = TextAttributes::helvetica(9).size(QStringLiteral("filtered")).width();
  EXPECT_EQ(texts[0].text, QStringLiteral("filtered"));
  EXPECT_EQ(texts[0].color, colors::red);
  EXPECT_NEAR(texts[0].position.x(), 50 + (220 - width) / 2, 1e-9);
  EXPECT_NEAR(texts[0].position.y(), 174, 1e-9);
  EXPECT_NEAR(texts[1].position.y(), 174 + 10.35, 1e-9);
}

TEST(XOVView, aSubtitleWiderThanTheViewIsSmaller) {
  XOVView view({0, 0, 300, 200});
  view.computeRects();
  const QString text = QString(200, u'm');
  view.setSubtitle(text);
  const auto recording = recorded([&] { view.drawTitleTopCentered(); });
  const double size = 9 * (300 - 2 * 12) / TextAttributes::helvetica(9).size(text).width();
  ASSERT_LT(size, 9);
  EXPECT_NEAR(recording->texts().at(0).position.x(), 50 + (220 - (300 - 2 * 12)) / 2.0, 0.01);
}

TEST(XOVView, theTimeStampStandsInTheLowerRightCornerInGray) {
  XOVView view({0, 0, 300, 200});
  const auto recording = recorded([&] { view.drawTimeStamp(); });
  const RecordedItem item = recording->texts().at(0);
  EXPECT_EQ(item.color, colors::gray);
  EXPECT_EQ(item.attributes.pointSize(), 9);
  EXPECT_NEAR(item.position.x() + item.attributes.size(item.text).width(), 294, 1e-9);
  EXPECT_NEAR(item.position.y(), 6, 1e-9);
  const QDateTime stamp = QDateTime::fromString(item.text.left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  EXPECT_LE(std::abs(stamp.secsTo(QDateTime::currentDateTime())), 5) << qPrintable(item.text);
}

TEST(XOVView, aFrameOf504By360PointsReads7By5Inches) {
  XOVView view({0, 0, 584, 440});
  view.computeRects();
  const auto recording = recorded([&] { view.drawViewSize(); });
  EXPECT_EQ(recording->strings(), QStringList{QStringLiteral("7.00 by 5.00 (inches)")});
  EXPECT_EQ(recording->strokes().at(0).path.shape().boundingRect(), QRectF(50, 50, 504, 360));
  EXPECT_EQ(recording->strokes().at(0).color, colors::black);
  const RecordedItem text = recording->texts().at(0);
  const QSizeF size = text.attributes.size(text.text);
  EXPECT_EQ(text.attributes.pointSize(), 12);
  EXPECT_NEAR(text.position.x() + size.width() / 2, 50 + 252, 1e-9);
  EXPECT_NEAR(text.position.y() + size.height() / 2, 50 + 180, 1e-9);
}

TEST(XOVView, halvesOfTheSizeInInchesRoundToEven) {
  XOVView view({0, 0, 89, 107}); // iRect 9 × 27 points: 0.125 and 0.375 inches
  view.computeRects();
  const auto recording = recorded([&] { view.drawViewSize(); });
  EXPECT_EQ(recording->strings(), QStringList{QStringLiteral("0.12 by 0.38 (inches)")});
}

TEST(XOVView, framesAndFillsItsBounds) {
  XOVView view({0, 0, 30, 20});
  const auto recording = recorded([&] {
    view.fillWithColorStrokeColor(colors::yellow, colors::blue);
    view.strokeBounds();
    GraphicsContext::current().setColor(colors::green);
    view.fillBounds();
  });
  ASSERT_EQ(recording->items().size(), 4u);
  EXPECT_EQ(recording->items()[0].color, colors::yellow);
  EXPECT_EQ(recording->items()[0].kind, RecordedItem::Kind::Fill);
  EXPECT_EQ(recording->items()[1].color, colors::blue);
  EXPECT_EQ(recording->items()[1].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(recording->items()[2].color, colors::black);
  EXPECT_EQ(recording->items()[3].color, colors::green);
  for (const RecordedItem& item : recording->items()) {
    EXPECT_EQ(item.path.shape().boundingRect(), QRectF(0, 0, 30, 20));
  }
}

TEST(XOVView, drawsNothingByItself) {
  XOVView view({0, 0, 300, 200});
  view.setTitle(QStringLiteral("Event"));
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_TRUE(recording.items().empty());
}

TEST(XOVView, theAxisPathCanBeTakenOut) {
  XOVView view({0, 0, 300, 200});
  view.setXAxisPath(nullptr);
  EXPECT_EQ(view.xAxisPath(), nullptr);
  RecordingContext recording;
  view.drawInto(recording);
}

TEST(XOVView, layoutFollowsAResize) {
  XOVView view({0, 0, 200, 100});
  view.computeRects();
  view.resize(400, 300);
  view.viewDidEndLiveResize();
  EXPECT_EQ(view.pRect(), QRectF(20, 20, 360, 260));
}

} // namespace
} // namespace xov
