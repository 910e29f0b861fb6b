#include "NavigatedSection.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "XOV_Graphics/views/seismic/FocalMechanismView.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"

#include <climits>

#include <QTest>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr float kFar = std::numeric_limits<float>::max();

void moveWildly(XOVView& view) {
  PlotNavigator navigator(&view);
  navigator.setCrossHair(PlotNavigator::CrossHair::Both);
  for (const int delta : {INT_MAX, INT_MIN, 120}) {
    for (const Qt::KeyboardModifiers modifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier),
                                                  Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
      turnWheel(view, {100, 100}, {delta, delta}, modifiers);
      turnWheel(view, {-1e9, 1e9}, {delta, 0}, modifiers, {delta, delta}, Qt::ScrollUpdate);
      view.snapshot();
    }
  }
  for (const double factor : {0.0, -1.0, 1e300, 1e-300, std::nan(""), HUGE_VAL}) {
    navigator.zoom(factor, QPointF(std::nan(""), 1e300));
    navigator.amplify(factor);
    navigator.pan(factor, factor);
    navigator.zoomTo(QRectF(factor, factor, factor, factor));
    navigator.showCursor(factor);
    const PlotPart part = view.currentPart();
    EXPECT_TRUE(view.reach().x == PlotReach::Motion::None || (std::isfinite(part.x.width()) && part.x.width() > 0));
    EXPECT_TRUE(view.reach().y == PlotReach::Motion::None || (std::isfinite(part.y.width()) && part.y.width() > 0));
    EXPECT_GT(part.gain, 0);
    view.snapshot();
  }
  drag(view, {100, 100}, {1e9, -1e9}, Qt::LeftButton);
  drag(view, {100, 100}, {-1e9, 1e9}, Qt::MiddleButton);
  for (const int key : {Qt::Key_PageUp, Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Down, Qt::Key_Backspace, Qt::Key_Home})
    QTest::keyClick(&view, Qt::Key(key));
  view.snapshot();
}

TEST(OddNavigation, noViewIsMovedToWhatIsNoRange) {
  for (const QSize& size : {QSize(300, 200), QSize(0, 0), QSize(3, 200)}) {
    NavigatedSection section;
    section.view->resize(size);
    moveWildly(*section.view);
    geoMapView map(QRectF(QPointF(0, 0), size));
    moveWildly(map);
    FocalMechanismView mechanism(QRectF(QPointF(0, 0), size));
    moveWildly(mechanism);
    helicorderView drum(QRectF(QPointF(0, 0), size));
    drum.setWvfrmArray(section.records);
    moveWildly(drum);
    drum.setNRows(INT_MAX);
    moveWildly(drum);
    drum.setRowDuration(kFar);
    moveWildly(drum);
  }
}

TEST(OddNavigation, limitsThatAreNoRangeDoNotMove) {
  for (const auto& [low, high] : {std::pair{0.0F, 0.0F}, {-kFar, kFar}, {NAN, 1.0F}, {5e29F, 1e30F}}) {
    xyPlotView view(QRectF(0, 0, 600, 400));
    const std::vector<float> values{low, high};
    view.setDataPointersXY(values, values);
    view.setNpts(2);
    view.setXLimitsMinMax(low, high);
    view.setYLimitsMinMax(low, high);
    moveWildly(view);
  }
}

TEST(OddNavigation, recordsOfOddTimesAreNoReach) {
  for (const float interval : {0.0F, -1.0F, NAN, kFar}) {
    const NavigatedSection section({.interval = interval});
    moveWildly(*section.view);
  }
  const auto none = std::make_shared<SeismogramArray>(SeismogramArray{nullptr, makeRecord({.count = 0})});
  MultiSeisView view(QRectF(0, 0, 600, 400));
  view.setWvfrmsArray(none);
  EXPECT_FALSE(view.reach().movesAnything());
  moveWildly(view);
}

TEST(OddNavigation, aViewMayGoAwayWhenItTellsOfAChange) {
  const auto act = {
      +[](XOVView& view) {
        turnWheel(view, {160, 200}, {0, 120});
      },
      +[](XOVView& view) {
        drag(view, {100, 100}, {300, 300}, Qt::LeftButton);
      },
      +[](XOVView& view) { QTest::keyClick(&view, Qt::Key_Plus); },
  };
  int index = 0;
  for (const auto& action : act) {
    NavigatedSection section;
    // Events are sent with what is left of the view; what is tested is that nothing of ours touches it then.
    XOVView* const view = section.view.get();
    QObject::connect(view, &XOVView::shownPartChanged, view, [view] {
      view->disconnect();
      view->hide();
    });
    action(*view);
    EXPECT_TRUE(view->shownPart().has_value()) << index;
    ++index;
  }
  NavigatedSection section;
  QObject::connect(section.view.get(), &XOVView::shownPartChanged, qApp, [&] { section.view.reset(); });
  section.navigator->zoom(0.5);
  EXPECT_EQ(section.view, nullptr);
}

} // namespace
} // namespace xov::testing
