#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAction>
#include <QRegularExpression>
#include <QRubberBand>
#include <QStatusBar>
#include <QTest>

#include <XOV_Graphics/views/map/geoMapView.h>
#include <cmath>

namespace xov::desk {
namespace {

constexpr int kBoxSamples = 601; // 60 s at 10 Hz

/// Where a record of the tests stands and begins.
struct BoxStation {
  const char* code;
  float latitudeDeg;
  float begin = 0;   // seconds
  float degrees = 0; // from the event
};

class BoxToolTest : public DeskTest {
protected:
  QString writeStation(const BoxStation& station) {
    SacHeader header;
    header.delta = 0.1F;
    header.b = station.begin;
    header.knetwk = "XX";
    header.kstnm = station.code;
    header.kcmpnm = "BHZ";
    header.stla = station.latitudeDeg;
    header.stlo = 11.5F;
    header.gcarc = station.degrees;
    std::vector<float> values(kBoxSamples);
    for (std::size_t i = 0; i < values.size(); ++i)
      values[i] = std::sin(float(i) * 0.7F);
    const QString path = at(QLatin1String(station.code) + ".sac");
    EXPECT_TRUE(writeSac(SacSeismogram(header, std::move(values)), path));
    return path;
  }

  XOVView* shownView(Pane& pane) {
    window_->show();
    if (!hasPlot(pane)) return nullptr;
    pane.view()->grab(); // where things lie is known when they are drawn
    return pane.view();
  }

  /// Draws a box between two places, whose shares of the frame count from its lower left corner.
  static void drawBox(XOVView& view, const QRectF& frame, QPointF from, QPointF to,
                      Qt::KeyboardModifiers modifiers = Qt::AltModifier) {
    const auto place = [&](QPointF share) {
      return QPoint(qRound(frame.left() + frame.width() * share.x()),
                    qRound(view.height() - frame.top() - frame.height() * share.y()));
    };
    QTest::mousePress(&view, Qt::LeftButton, modifiers, place(from));
    QTest::mouseMove(&view, place((from + to) / 2));
    QTest::mouseMove(&view, place(to));
    QTest::mouseRelease(&view, Qt::LeftButton, modifiers, place(to));
  }

  double toldNumber(const char* before) const {
    const QRegularExpression pattern(QLatin1String(before) + " (-?[0-9.]+)");
    const auto found = pattern.match(window_->statusBar()->currentMessage());
    EXPECT_TRUE(found.hasMatch()) << qPrintable(window_->statusBar()->currentMessage());
    return found.captured(1).toDouble();
  }
};

// A quarter of a minute later where it is 10 degrees further: 1.5 s/°, and a degree has 111.19 km.
TEST_F(BoxToolTest, tellsTheApparentVelocityFromCornerToCorner) {
  Pane* const pane =
      window_->openPane(request("section", {writeStation({"AAA", 61, 0, 30}), writeStation({"BBB", 62, 0, 40})}));
  XOVView* const view = shownView(*pane);
  ASSERT_NE(view, nullptr);
  const auto nearer = view->recordAt(view->pRect().center() + QPointF(0, view->pRect().height() / 4));
  ASSERT_TRUE(nearer);
  const bool nearIsAbove = nearer->index == 0;
  const double near = nearIsAbove ? 0.75 : 0.25;
  drawBox(*view, view->pRect(), {0.25, near}, {0.5, 1 - near});
  const double pixel = 60 / view->pRect().width() / 10; // s/° that a corner is rounded by at most
  EXPECT_NEAR(toldNumber("slowness"), 1.5, pixel);
  EXPECT_NEAR(toldNumber("velocity") * toldNumber("slowness"), 111.19, 0.1);
  EXPECT_FALSE(view->shownPart()) << "the box is not one that zooms";
  EXPECT_EQ(view->findChild<QRubberBand*>(), nullptr);
  EXPECT_FALSE(child<QAction>("beamOfBox").isEnabled()) << "two stations are no array";
}

TEST_F(BoxToolTest, measuresWithoutAltWhileItIsSwitchedOn) {
  XOVView* const view = shownView(
      *window_->openPane(request("section", {writeStation({"AAA", 61, 0, 30}), writeStation({"BBB", 62, 0, 40})})));
  ASSERT_NE(view, nullptr);
  child<QAction>("measureWithBoxes").trigger();
  drawBox(*view, view->pRect(), {0.25, 0.2}, {0.5, 0.8}, Qt::NoModifier);
  EXPECT_NEAR(std::abs(toldNumber("slowness")), 1.5, 60 / view->pRect().width() / 10);
  EXPECT_FALSE(view->shownPart());
  child<QAction>("measureWithBoxes").trigger();
  drawBox(*view, view->pRect(), {0.25, 0.2}, {0.5, 0.8}, Qt::NoModifier);
  EXPECT_TRUE(view->shownPart()) << "boxes zoom again";
}

// The axis lasts from 0 to 65 s, since the last record begins 5 s later: a quarter of it is at 16.25, three quarters
// at 48.75.
TEST_F(BoxToolTest, showsTheBeamPowerOfTheRecordsInABox) {
  PlotRequest wanted = request("section", {writeStation({"AAA", 61}), writeStation({"BBB", 61.02F}),
                                           writeStation({"CCC", 61.04F, 5}), writeStation({"DDD", 61.06F})});
  wanted.steps = {{"--detrend", "mean"}};
  wanted.options = {"--channels", "BH?"};
  XOVView* const view = shownView(*window_->openPane(wanted));
  ASSERT_NE(view, nullptr);
  drawBox(*view, view->pRect(), {0.25, 0.02}, {0.75, 0.98});
  child<QAction>("beamOfBox").trigger();
  ASSERT_EQ(window_->panes().size(), 2U);
  Pane* const beam = window_->currentPane();
  const QStringList words = beam->request().words();
  ASSERT_GE(words.size(), 8) << qPrintable(words.join(' '));
  EXPECT_EQ(words.mid(0, 4),
            QStringList({"fk", "--channels", "XX.AAA.--.BHZ,XX.BBB.--.BHZ,XX.CCC.--.BHZ,XX.DDD.--.BHZ", "--window"}));
  const double pixel = 65 / view->pRect().width();
  EXPECT_NEAR(words[4].toDouble(), 11.25, pixel);
  EXPECT_NEAR(words[5].toDouble(), 43.75, pixel);
  EXPECT_EQ(words.mid(6, 2), QStringList({"--detrend", "mean"}));
  EXPECT_TRUE(hasPlot(*beam)) << qPrintable(beam->messages().join(' '));
  window_->undoStack().undo();
  EXPECT_EQ(window_->panes().size(), 1U);
}

TEST_F(BoxToolTest, showsTheEventsOfABoxOnAMapOfTheirOwn) {
  writeFile("e.csv", "time,latitude,longitude\n2011-03-11T05:46:24,38.3,142.4\n2012-03-11T05:46:24,-30,20\n"
                     "2013-03-11T05:46:24,20,110\n");
  PlotRequest map;
  map.kind = "map";
  map.options = {"--events", at("e.csv"), "--region", "0", "360", "-90", "90"};
  auto* const view = qobject_cast<geoMapView*>(shownView(*window_->openPane(map)));
  ASSERT_NE(view, nullptr);
  drawBox(*view, view->mapRect(), {100 / 360.0, 0.5}, {180 / 360.0, 150 / 180.0}); // 100 … 180° E, 0 … 60° N
  ASSERT_EQ(window_->panes().size(), 2U);
  const QStringList words = window_->currentPane()->request().words();
  ASSERT_EQ(words.size(), 8) << qPrintable(words.join(' '));
  EXPECT_EQ(words.mid(0, 4), QStringList({"map", "--events", at("e.csv"), "--region"}));
  const double edges[] = {100, 180, 0, 60};
  for (int i = 0; i < 4; ++i)
    EXPECT_NEAR(words[4 + i].toDouble(), edges[i], 0.7) << "edge " << i; // a pixel
  EXPECT_EQ(window_->statusBar()->currentMessage().left(2), "2 ");
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
}

} // namespace
} // namespace xov::desk
