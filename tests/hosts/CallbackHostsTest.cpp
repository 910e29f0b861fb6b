// Hosts that take away a view, a controller or what it shows in the middle of being told something. What reads memory
// that is gone is seen by AddressSanitizer.
#include "XOV_Graphics/platform/Drag.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/base/PlotController.h"
#include "XOV_Graphics/views/navigation/PlotNavigator.h"
#include "tests/hosts/HostedPlots.h"
#include "tests/views/all/AllViews.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMetaProperty>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

namespace xov {
namespace {

// A view that goes when it tells of anything of a kind.
struct Going {
  QPointer<XOVView> view;
  ~Going() { delete view; }
};

void goAtAnySetting(XOVView* view) {
  for (const auto signal : {&XOVView::settingsChanged, &XOVView::limitsChanged, &XOVView::shownPartChanged})
    QObject::connect(view, signal, view, [view] { delete view; });
}

QVariant anotherValue(const QMetaProperty& property, const QVariant& value) {
  if (property.isEnumType()) {
    const QMetaEnum all = property.enumerator();
    return all.value(value.toInt() == all.value(0) ? 1 : 0);
  }
  if (property.metaType().id() == QMetaType::Bool) return !value.toBool();
  if (property.metaType().id() == QMetaType::QString) return value.toString() + QLatin1Char('x');
  if (property.metaType().id() == QMetaType::QColor) return QColor(Qt::magenta);
  if (property.metaType().id() == QMetaType::QDateTime) return QDateTime(QDate(2011, 3, 11), QTime(5, 46), Qt::UTC);
  return value.toDouble() + 3;
}

TEST(CallbackHosts, mayDestroyAViewThatTellsOfAnyOfItsProperties) {
  int gone = 0;
  for (const testing::ViewClass& kind : testing::viewClasses(testing::PlotViews())) {
    for (int i = QWidget::staticMetaObject.propertyCount(); i < kind.type->propertyCount(); ++i) {
      const QMetaProperty property = kind.type->property(i);
      SCOPED_TRACE(::testing::Message() << kind.type->className() << "::" << property.name());
      Going going{qobject_cast<XOVView*>(kind.makeIn(QRectF(0, 0, 100, 80), nullptr))};
      const QVariant other = anotherValue(property, property.read(going.view));
      goAtAnySetting(going.view);
      property.write(going.view, other);
      if (!going.view) ++gone;
    }
  }
  EXPECT_GT(gone, 200);
}

TEST(CallbackHosts, mayDestroyAViewThatMovesOverItsData) {
  for (const testing::RecordPlot& plot : testing::recordPlots()) {
    SCOPED_TRACE(plot.name);
    testing::HostedPlot host = testing::hostedPlot(plot);
    host.view->pictureOfRect(host.view->bounds());
    Going going{host.view.release()};
    goAtAnySetting(going.view);
    PlotPart part = going.view->currentPart();
    part.gain = 3;
    part.x = {part.x.lower + part.x.width() / 3, part.x.upper};
    going.view->showPart(part);
    EXPECT_TRUE(!going.view || !going.view->reach().movesAnything());
  }
}

TEST(CallbackHosts, mayDestroyAViewThatIsMovedByTheWheel) {
  testing::HostedPlot host = testing::hostedPlot(testing::recordPlots().front());
  host.view->pictureOfRect(host.view->bounds());
  Going going{host.view.release()};
  new PlotNavigator(going.view); // the view owns it
  goAtAnySetting(going.view);
  const QPointF middle = going.view->rect().center();
  QWheelEvent turn(middle, middle, {}, {0, 120}, Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(going.view, &turn);
  EXPECT_FALSE(going.view);
}

// Limits that are found in a drawing are told when it is over.
TEST(CallbackHosts, mayDestroyAViewWhoseDrawingHasChangedItsLimits) {
  const QTemporaryDir folder;
  using Draw = std::function<void(XOVView&)>;
  const QString path = folder.filePath(QStringLiteral("plot"));
  const std::vector<Draw> draws = {
      [](XOVView& view) {
        RecordingContext recording;
        view.drawInto(recording);
      },
      [](XOVView& view) { EXPECT_FALSE(view.pictureOfRect(view.bounds()).isNull()); },
      [](XOVView& view) { EXPECT_FALSE(view.dataWithPDFInsideRect(view.bounds()).isEmpty()); },
      [](XOVView& view) { EXPECT_FALSE(view.dataWithSVGInsideRect(view.bounds()).isEmpty()); },
      [](XOVView& view) {
        QImage image(100, 80, QImage::Format_RGB32);
        QPainter painter(&image);
        view.paint(painter, QRectF(0, 0, 100, 80));
        EXPECT_TRUE(painter.isActive());
      },
      [&](XOVView& view) { EXPECT_TRUE(view.writePDFToFile(path)); },
      [&](XOVView& view) { EXPECT_TRUE(view.writeSVGToFile(path)); },
      [&](XOVView& view) { EXPECT_TRUE(view.writeTIFToFile(path)); },
      [&](XOVView& view) { EXPECT_TRUE(view.writeJPGToFile(path)); },
      [&](XOVView& view) { EXPECT_TRUE(view.writePNGToFile(path)); },
      [](XOVView& view) { view.copy(); },
      [](XOVView& view) {
        view.mouseDown({{50, 50}, Qt::ShiftModifier, 1});
      },
      [](XOVView& view) {
        view.grab();
        QApplication::processEvents();
      },
  };
  setDragHandler([](const PictureDrag&) {});
  for (std::size_t i = 0; i < draws.size(); ++i) {
    SCOPED_TRACE(i);
    testing::HostedPlot host = testing::hostedPlot(testing::recordPlots().front());
    Going going{host.view.release()};
    goAtAnySetting(going.view);
    draws[i](*going.view);
    EXPECT_FALSE(going.view);
  }
  setDragHandler({});
}

TEST(CallbackHosts, mayDestroyAViewThatIsPainted) {
  testing::HostedPlot host = testing::hostedPlot(testing::recordPlots().front());
  Going going{host.view.release()};
  goAtAnySetting(going.view);
  going.view->show();
  QTRY_VERIFY_WITH_TIMEOUT(!going.view, 5000);
}

TEST(CallbackHosts, mayDestroyAViewThatWasExported) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("plot"));
  for (const auto write :
       {&XOVView::writePDFToFile, &XOVView::writeTIFToFile, &XOVView::writeJPGToFile, &XOVView::writePNGToFile}) {
    Going going{new XOVView(QRectF(0, 0, 100, 80))};
    QObject::connect(going.view, &XOVView::exported, going.view, [&] { delete going.view; });
    EXPECT_TRUE((going.view->*write)(path, nullptr));
    EXPECT_FALSE(going.view);
  }
}

// Takes itself, the view and what it shows away at the first word.
class LeavingController : public PlotController {
public:
  explicit LeavingController(std::function<void()> leave) : leave_(std::move(leave)) {}
  void handleClickedMousePosition(QPointF) override { std::exchange(leave_, nullptr)(); }
  void handleTrackedMousePosition(QPointF) override { std::exchange(leave_, nullptr)(); }

private:
  std::function<void()> leave_;
};

TEST(CallbackHosts, mayDestroyControllerViewAndRecordsWhenTheyAreTold) {
  for (const testing::RecordPlot& plot : testing::recordPlots()) {
    for (const bool isClick : {true, false}) {
      SCOPED_TRACE(plot.name);
      testing::HostedPlot host = testing::hostedPlot(plot);
      host.view->pictureOfRect(host.view->bounds());
      LeavingController* controller = nullptr;
      int told = 0;
      controller = new LeavingController([&] {
        ++told;
        const auto records = std::exchange(host.records, nullptr);
        records->clear();
        host.view.reset();
        std::function<void()> last; // outlives the controller that calls it
        delete controller;
      });
      host.view->setController(controller);
      const QPointF middle = host.view->iRect().center();
      if (isClick) {
        host.view->mouseDown({host.view->convertPointToWindow(middle), {}, 1});
      } else {
        host.view->show();
        QCursor::setPos(host.view->mapToGlobal(host.view->rect().center()));
        host.view->handleTrackedMousePosition();
        if (told == 0) delete controller; // the cursor of some platforms does not follow
        continue;
      }
      EXPECT_EQ(told, 1);
      EXPECT_FALSE(host.view);
    }
  }
}

TEST(CallbackHosts, mayDestroyAViewAndReplaceTheHandlerInADrag) {
  Going going{new XOVView(QRectF(0, 0, 100, 80))};
  int drags = 0;
  setDragHandler([&](const PictureDrag&) {
    ++drags;
    setDragHandler({}); // the function that is at work
    delete going.view;
    EXPECT_EQ(drags, 1);
  });
  going.view->mouseDown({{50, 50}, Qt::ShiftModifier, 1});
  EXPECT_EQ(drags, 1);
  EXPECT_FALSE(going.view);
}

// Intervals as a host may read them from a file of settings.
TEST(CallbackHosts, mayTrackAtAnyInterval) {
  for (const double seconds : {0.0, -1.0, 1e-300, 1e300, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
    XOVView view(QRectF(0, 0, 100, 80));
    view.set_mouseTrackInterval(seconds);
    view.set_trackMouse(true);
    ASSERT_NE(view._mouseTrackTimer(), nullptr);
    EXPECT_GE(view._mouseTrackTimer()->interval(), 1);
    EXPECT_TRUE(view._mouseTrackTimer()->isActive());
    delete view._mouseTrackTimer(); // a host that thinks it is its own
    view.set_trackMouse(false);
    EXPECT_EQ(view._mouseTrackTimer(), nullptr);
  }
}

} // namespace
} // namespace xov
