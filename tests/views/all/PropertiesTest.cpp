// Every class of view: what its properties read after they were written, what draws anew, and what is told.
#include "tests/views/all/AllViews.h"

#include <QApplication>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>

#include <limits>
#include <memory>

namespace xov {
namespace {

// Counts the times that a widget is painted.
class Paints : public QObject {
public:
  explicit Paints(QWidget* widget) { widget->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count_;
    return false;
  }
  // Those since the last call, with everything painted that waits for it.
  int take() {
    QApplication::processEvents();
    return std::exchange(count_, 0);
  }

private:
  int count_ = 0;
};

// A value that the property does not have; floats hold it as it is.
QVariant otherValue(const QMetaProperty& property, const QVariant& value) {
  if (property.isEnumType()) {
    const QMetaEnum values = property.enumerator();
    return values.value(value.toInt() == values.value(0) ? 1 : 0);
  }
  switch (property.metaType().id()) {
  case QMetaType::Bool:
    return !value.toBool();
  case QMetaType::Int:
    return value.toInt() + 3;
  case QMetaType::Double:
    return value.toDouble() == 2.5 ? 4.75 : 2.5;
  case QMetaType::QString:
    return QString(value.toString() + QStringLiteral(" and more"));
  case QMetaType::QColor:
    return QColor(Qt::magenta);
  case QMetaType::QDateTime:
    return QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC);
  default:
    ADD_FAILURE() << "no other value for " << property.typeName();
    return {};
  }
}

// Enumerations are written as numbers and read as their own type.
QVariant plain(const QMetaProperty& property, const QVariant& value) {
  return property.isEnumType() ? QVariant(value.toInt()) : value;
}

// What changes nothing that is on the screen.
bool isDrawn(const QMetaProperty& property) {
  const QByteArray name = property.name();
  return name != "exportPixelRatio" && name != "trackMouse" && name != "mouseTrackInterval";
}

std::vector<QMetaProperty> propertiesOf(const QObject& view) {
  std::vector<QMetaProperty> own;
  for (int i = QWidget::staticMetaObject.propertyCount(); i < view.metaObject()->propertyCount(); ++i)
    own.push_back(view.metaObject()->property(i));
  return own;
}

class Properties : public ::testing::TestWithParam<testing::ViewClass> {
protected:
  Properties() {
    if (auto* plot = qobject_cast<XOVView*>(&view)) {
      plot->setXLimitsMinMax(1, 2); // slowness has thousands of ticks in a range of the globe
      plot->setYLimitsMinMax(1, 2);
    }
    view.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    paints.take();
  }
  const std::unique_ptr<View> made{GetParam().makeIn(QRectF(0, 0, 300, 240), nullptr)};
  View& view = *made;
  Paints paints{&view};
};
INSTANTIATE_TEST_SUITE_P(AllViews, Properties, ::testing::ValuesIn(testing::viewClasses(testing::AllViews())),
                         testing::viewClassName);

TEST_P(Properties, readWhatWasWritten) {
  for (const QMetaProperty& property : propertiesOf(view)) {
    const QVariant value = otherValue(property, property.read(&view));
    EXPECT_NE(plain(property, property.read(&view)), value) << property.name();
    EXPECT_TRUE(property.write(&view, value)) << property.name();
    EXPECT_EQ(plain(property, property.read(&view)), value) << property.name();
  }
}

TEST_P(Properties, areDrawnWhenTheyAreWritten) {
  for (const QMetaProperty& property : propertiesOf(view)) {
    property.write(&view, otherValue(property, property.read(&view)));
    EXPECT_EQ(paints.take() > 0, isDrawn(property)) << property.name();
  }
}

TEST_P(Properties, tellOfChangesAndOfNothingElse) {
  for (const QMetaProperty& property : propertiesOf(view)) {
    if (!property.hasNotifySignal()) continue;
    QSignalSpy told(&view, property.notifySignal());
    const QVariant value = otherValue(property, property.read(&view));
    property.write(&view, value);
    EXPECT_EQ(told.count(), 1) << property.name();
    property.write(&view, value);
    EXPECT_EQ(told.count(), 1) << property.name();
  }
}

TEST_P(Properties, takeAnyNumber) {
  constexpr double kOdd[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e30,
                             0};
  for (const double value : kOdd) {
    for (const QMetaProperty& property : propertiesOf(view))
      if (property.metaType().id() == QMetaType::Double) property.write(&view, value);
    EXPECT_EQ(paints.take() > 0, GetParam().isPlot) << value;
  }
}

TEST_P(Properties, doNotTakeTheNamesThatWidgetsHave) {
  for (const QMetaProperty& property : propertiesOf(view))
    EXPECT_LT(QWidget::staticMetaObject.indexOfProperty(property.name()), 0) << property.name();
}

// Calls each setter that stands behind a property with another value.
void setAll(View& view) { view.setExportPixelRatio(2.5); }

void setAll(XOVView& view) {
  setAll(static_cast<View&>(view));
  view.setTitle(QStringLiteral("title"));
  view.setSubtitle(QStringLiteral("subtitle"));
  view.setXLabelString(QStringLiteral("x"));
  view.setYLabelString(QStringLiteral("y"));
  view.setXmin(2.5f);
  view.setXmax(3.5f);
  view.setYmin(2.5f);
  view.setYmax(3.5f);
  view.setMinYRange(2.5f);
  view.setLineWidth(2.5);
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  view.set_showPlotTitle(true);
  view.set_timeStamp(true);
  view.set_showZoomRect(true);
  view.setLabelFontSize(11);
  view.setTitleFontSize(11);
  view.setTitleColor(Qt::magenta);
  view.set_mouseTrackInterval(2.5);
  view.set_trackMouse(true);
}

void setAll(SeismogramView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setTimeReference(QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC));
  view.setLabelsGiveWay(true);
  view.setShowAmplitudeBar(true);
  view.setAmplitudeUnit("nm");
}

void setAll(xyPlotView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setLogX(true);
  view.setLogY(true);
}

void setAll(XOV2DScatterPlotView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setLogX(true);
  view.setLogY(true);
  view.setSymbolDiameter(2.5f);
}

void setAll(spectrumView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setLogX(true);
  view.setLogY(true);
}

void setAll(XOVHistogramView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setLogX(true);
  view.setLogY(true);
  view.setNBins(7);
  view.setMinBinValue(2.5f);
  view.setMaxBinValue(3.5f);
  view.setBarFillColor(Qt::magenta);
}

void setAll(MultiSeisView& view) {
  setAll(static_cast<SeismogramView&>(view));
  view.setPlotGainFactor(2.5f);
  view.setShowZeroLine(true);
  view.setFillNegative(true);
  view.setFillPositive(true);
  view.setStripPlacement(MultiSeisView::StripPlacement::ByDistanceKm);
  view.setAmplitudeScaling(MultiSeisView::AmplitudeScaling::EachTrace);
  view.setPositiveLobeColor(Qt::magenta);
  view.setNegativeLobeColor(Qt::cyan);
}

void setAll(StackedSeisView& view) {
  setAll(static_cast<SeismogramView&>(view));
  view.setFillNegative(true);
  view.setFillPositive(true);
}

void setAll(SeisView02& view) {
  setAll(static_cast<StackedSeisView&>(view));
  view.setplotStyle(SeisView02::PlotStyle::Bands);
}

void setAll(wvfrmView& view) {
  setAll(static_cast<SeismogramView&>(view));
  view.setMaxAmplitude(2.5f);
}

void setAll(uniformTimeSeriesView& view) {
  setAll(static_cast<SeismogramView&>(view));
  view.setMaxAmplitude(2.5f);
}

void setAll(ThreeCompView& view) {
  setAll(static_cast<SeismogramView&>(view));
  view.setMaxAmplitude(2.5f);
  view.setSelfScaled(true);
  view.setOpComparison(true);
  view.setShowMaxAmplitude(true);
}

void setAll(RealTimeDisplayView& view) {
  setAll(static_cast<StackedSeisView&>(view));
  view.setRefDate(QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC));
  view.setWaveformGain(2.5f);
  view.setOriginOnRight(false);
  view.setDrawOriginTimes(true);
  view.setShowLatency(true);
  view.setLateSeconds(7);
  view.setBackGroundColor(Qt::magenta);
  view.setDrawingColor(Qt::magenta);
  view.setShowLatency(true);
  view.setLateSeconds(5);
}

void setAll(helicorderView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setGainFactor(2.5f);
  view.setRowDuration(2.5f);
  view.setNRows(7);
  view.setShowZeroLines(true);
  view.setLabelHours(true);
  view.setMagThreshold(2.5f);
  view.setPageStart(QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC));
  view.setColorsByDay(true);
  view.setClipReach(2.5);
  view.setShowEventLabels(true);
  view.setSpreadsHourLabels(true);
  view.setShowAmplitudeBar(true);
  view.setAmplitudeUnit(QStringLiteral("and more"));
}

void setAll(XOVImageView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setPalette(XOVImageView::Palette::BlueToRed);
  view.setNShades(7);
  view.setScaleFactor(2.5f);
  view.setInverted(true);
  view.setUseTopoValues(false);
  view.setHideImage(true);
  view.setShowAxes(false);
  view.setShowColorBar(true);
  view.setColorBarTitle(QStringLiteral("and more"));
}

void setAll(SpectrogramView& view) {
  setAll(static_cast<XOVImageView&>(view));
  view.setUseTopoValues(true);
  view.setShowColorBar(false);
  view.setWindowSeconds(2.5);
  view.setOverlap(0.25);
  view.setLogFrequency(true);
  view.setLowestHz(2.5);
  view.setHighestHz(3.5);
  view.setLowestDecibel(2.5);
  view.setHighestDecibel(3.5);
  view.setShowSeismogram(false);
  view.setTimeReference(QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC));
}

void setAll(NoiseStatisticsView& view) {
  setAll(static_cast<XOVImageView&>(view));
  view.setUseTopoValues(true);
  view.setShowColorBar(false);
  view.setShowNoiseModels(true);
  view.setShowPercentiles(false);
}

void setAll(PowerSpectraView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setLogX(false);
  view.setLogY(false);
  view.setShowNoiseModels(true);
  view.setShowLegend(false);
}

void setAll(xovFKImageView& view) {
  setAll(static_cast<XOVImageView&>(view));
  view.setCircleLabels(xovFKImageView::SecondsPerDegree);
  view.setShowPeakValue(true);
  view.setPeakUnit(QStringLiteral("dB"));
  view.setColorsFromMinimum(true);
}

void setAll(FocalMechanismView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setShowPrincipalAxes(true);
  view.setShowNodalPlanes(true);
  view.setShowDetails(true);
  view.setCompressionalColor(Qt::magenta);
}

void setAll(ParticleMotionView& view) {
  setAll(static_cast<XOVView&>(view));
  view.setShowPolarization(true);
  view.setPathColor(Qt::magenta);
}

void setAll(geoMapView& view) {
  setAll(static_cast<XOVImageView&>(view));
  view.setShowPlates(true);
  view.setPlateBoundaryColor(Qt::magenta);
  view.setOutlinePointsWithNoData(false);
  view.setVAlignPlot(geoMapView::VAlign::Top);
  view.setShowDegreeSigns(true);
  view.setShowScaleBar(true);
  view.setMovesMechanismsApart(true);
}

// Those of the class that a view is of.
template <typename... Views>
void setAllOf(View& view, ::testing::Types<Views...>) {
  const auto isA = [&](const QMetaObject& type) { return view.metaObject() == &type; };
  ((isA(Views::staticMetaObject) ? setAll(static_cast<Views&>(view)) : void()), ...);
}
void setAllOf(View& view) { setAllOf(view, testing::AllViews()); }

TEST_P(Properties, areNotDrawnAnewByTheSetters) {
  std::vector<QVariant> before;
  for (const QMetaProperty& property : propertiesOf(view))
    before.push_back(property.read(&view));
  setAllOf(view);
  EXPECT_EQ(paints.take(), 0);
  std::size_t i = 0;
  for (const QMetaProperty& property : propertiesOf(view))
    EXPECT_NE(property.read(&view), before[i++]) << property.name() << " was not set";
  view.setNeedsDisplay();
  EXPECT_GT(paints.take(), 0) << "and it can be seen when something is";
}

TEST_P(Properties, ofTheSettersAreToldToo) {
  for (const QMetaProperty& property : propertiesOf(view)) {
    if (!property.hasNotifySignal()) continue;
    const std::unique_ptr<View> other(GetParam().make(nullptr));
    QSignalSpy told(other.get(), property.notifySignal());
    setAllOf(*other);
    EXPECT_GT(told.count(), 0) << property.name();
  }
}

TEST(PropertiesOfViews, trackingSwitchedOnTwiceByItsPropertyCanBeSwitchedOff) {
  XOVView view;
  view.setProperty("trackMouse", true);
  const QPointer<QTimer> timer = view._mouseTrackTimer();
  view.setProperty("trackMouse", true);
  EXPECT_EQ(view._mouseTrackTimer(), timer.data());
  view.setProperty("trackMouse", false);
  EXPECT_FALSE(timer && timer->isActive());
}

// Enumerations stand for the numbers.
TEST(Enumerations, areTheNumbersThatTheSettersTake) {
  SeisView02 stack;
  stack.setplotStyle(SeisView02::PlotStyle::Bands);
  EXPECT_EQ(stack.plotStyle(), 2);
  stack.setplotStyle(SeisView02::PlotStyle::Overlay);
  EXPECT_EQ(stack.plotStyle(), 1);
  XOVImageView image;
  image.setPalette(XOVImageView::Palette::BlueToRed);
  EXPECT_EQ(image.palette(), 3);
  geoMapView map;
  map.setVAlignPlot(geoMapView::VAlign::Bottom);
  EXPECT_EQ(map.vAlignPlot(), 2);
  QString error;
  EXPECT_EQ(map.loadImageWithIndex(geoMapView::BaseImage::WesternUnitedStates, &error), map.loadImageWithIndex(10));
}

TEST(Enumerations, placeTextAsTheNumbersDo) {
  for (int h = 1; h <= 3; ++h) {
    for (int v = 1; v <= 3; ++v) {
      EXPECT_EQ(alignedTextOrigin({50, 60}, {8, 4}, HJust(h), VJust(v)), alignedTextOrigin({50, 60}, {8, 4}, h, v));
      EXPECT_EQ(rotatedTextOrigin({50, 60}, {8, 4}, HJust(h), VJust(v)), rotatedTextOrigin({50, 60}, {8, 4}, h, v));
    }
  }
  // The upper right corner of a box of 8 by 4 at (50, 60).
  EXPECT_EQ(alignedTextOrigin({50, 60}, {8, 4}, HJust::Right, VJust::Top), QPointF(42, 56));
}

// What a view keeps without owning it has to be kept by the host: a temporary would be gone at once.
template <typename ViewType, typename Array>
constexpr bool kTakesRecords = requires(ViewType& view, Array&& records) {
  view.setWvfrmsArray(static_cast<Array&&>(records));
};
template <typename ViewType, typename Array>
constexpr bool kTakesPieces = requires(ViewType& view, Array&& records) {
  view.setWvfrmArray(static_cast<Array&&>(records));
};
template <typename ViewType, typename Array>
constexpr bool kTakesEvents = requires(ViewType& view, Array&& events) {
  view.setEventOrigins(static_cast<Array&&>(events));
};
template <typename Array>
constexpr bool kDrumTakesEvents = requires(helicorderView& view, Array&& events) {
  view.setTheHypoArray(static_cast<Array&&>(events));
};
template <typename Array>
constexpr bool kTakesObservation = requires(ThreeCompView& view, Array&& one) {
  view.setObservation(static_cast<Array&&>(one));
};

using Records = std::shared_ptr<SeismogramArray>;
using ConstRecords = std::shared_ptr<const SeismogramArray>;
using Events = std::shared_ptr<EventOriginArray>;
using Observation = std::shared_ptr<ThreeComponentObservation>;

template <typename ViewType>
constexpr bool kKeepsRecordsThatStay = kTakesRecords<ViewType, Records&>&& kTakesRecords<ViewType, const Records&>&&
    kTakesRecords<ViewType, ConstRecords&>&& kTakesRecords<ViewType, std::nullptr_t>;
template <typename ViewType>
constexpr bool kRefusesTemporaryRecords = !kTakesRecords<ViewType, Records> && !kTakesRecords<ViewType, ConstRecords>;

static_assert(kKeepsRecordsThatStay<MultiSeisView> && kRefusesTemporaryRecords<MultiSeisView>);
static_assert(kKeepsRecordsThatStay<SeisView01> && kRefusesTemporaryRecords<SeisView01>);
static_assert(kKeepsRecordsThatStay<SeisView02> && kRefusesTemporaryRecords<SeisView02>);
static_assert(kKeepsRecordsThatStay<realTimeDisplayView01> && kRefusesTemporaryRecords<realTimeDisplayView01>);
static_assert(kTakesPieces<wvfrmView, Records&> && !kTakesPieces<wvfrmView, Records>);
static_assert(kTakesPieces<helicorderView, Records&> && !kTakesPieces<helicorderView, Records>);
static_assert(kTakesEvents<realTimeDisplayView01, Events&> && !kTakesEvents<realTimeDisplayView01, Events>);
static_assert(kDrumTakesEvents<Events&> && !kDrumTakesEvents<Events>);
static_assert(kTakesObservation<Observation&> && !kTakesObservation<Observation>);
// This view owns its series together with the host, so a temporary is well kept.
static_assert(kTakesPieces<uniformTimeSeriesView, std::shared_ptr<const UniformSignalArray>>);

} // namespace
} // namespace xov
