#include "apps/desk/live/ConnectDialog.h"
#include "tests/apps/desk/DeskFixture.h"
#include "tests/seismic/MiniSeedBytes.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h>
#include <XOV_Graphics/views/timeline/RealTimeDisplayView.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>

namespace xov::desk {
namespace {

using test::MiniSeedBytes;

constexpr int kLivePatienceMs = 10000;

/// A server on this machine that has a minute of BHZ and BHN of the station XX_TEST at 1 Hz, all of it at once.
class LivePanesTest : public DeskTest {
protected:
  LivePanesTest() {
    QByteArray bytes;
    for (const char* const channel : {"BHZ", "BHN"}) {
      std::vector<std::int32_t> values;
      for (int k = 0; k < 60; ++k)
        values.push_back(k % 2 == 0 ? 100 : -100);
      bytes += MiniSeedBytes()
                   .codes("XX", "TEST", "00", channel)
                   .rate(1, 1)
                   .time(2012, 133, 0, 0, 0, 0)
                   .integers(values)
                   .bytes();
    }
    writeFile("minute.mseed", bytes);
    serve(0);
  }
  void serve(quint16 port) {
    SeedLinkServerSettings settings;
    settings.port = port;
    settings.speed = 0;
    server_ = std::make_unique<SeedLinkServer>(settings);
    EXPECT_TRUE(server_->addFile(at("minute.mseed")));
    const Status listens = server_->listen();
    EXPECT_TRUE(listens) << qPrintable(listens.error());
    port_ = server_->port();
  }
  QString address() const { return QStringLiteral("localhost:%1").arg(port_); }
  /// Only what the server sends from its begin on is all of it.
  PlotRequest live(const QString& kind) const {
    PlotRequest request = requestForSource(kind, {address(), QStringLiteral("XX_TEST"), false});
    request.options += {QStringLiteral("--since"), QStringLiteral("2012-05-12T00:00:00")};
    return request;
  }
  static bool waitFor(const std::function<bool()>& is) { return QTest::qWaitFor(is, kLivePatienceMs); }
  static int samplesOf(const SeismogramArray* records) {
    int samples = 0;
    for (std::size_t k = 0; records != nullptr && k < records->size(); ++k)
      samples += (*records)[k]->npts();
    return samples;
  }
  RealTimeDisplayView* display(Pane& pane) {
    return hasPlot(pane) ? qobject_cast<RealTimeDisplayView*>(pane.view()) : nullptr;
  }

  std::unique_ptr<SeedLinkServer> server_;
  quint16 port_ = 0;
};

TEST_F(LivePanesTest, showTracesAsTheyArrive) {
  Pane* const pane = window_->openPane(live("monitor"));
  RealTimeDisplayView* const view = display(*pane);
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(waitFor([&] { return samplesOf(view->wvfrmsArray().get()) == 120; })) << "two channels of 60";
  EXPECT_EQ(pane->name(), "Live: " + address());
  ASSERT_FALSE(pane->messages().isEmpty());
  EXPECT_TRUE(pane->messages().front().contains("connected")) << "said in the pane, not on a terminal";
  EXPECT_EQ(child<QLabel>("barState").text(), pane->messages().back());
}

TEST_F(LivePanesTest, showADrumThatFills) {
  Pane* const pane = window_->openPane(live("drum"));
  ASSERT_TRUE(hasPlot(*pane));
  auto* const view = qobject_cast<helicorderView*>(pane->view());
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(waitFor([&] { return samplesOf(view->wvfrmArray().get()) == 60; })) << "a channel of the two";
}

TEST_F(LivePanesTest, letGoOfTheServerWhenTheyAreClosed) {
  window_->openPane(live("monitor"));
  Pane* const pane = window_->openPane(live("drum"));
  ASSERT_TRUE(hasPlot(*pane) && hasPlot(*window_->panes().front()));
  ASSERT_TRUE(waitFor([this] { return server_->clientCount() == 2; }));
  window_->closePane(pane);
  EXPECT_TRUE(waitFor([this] { return server_->clientCount() == 1; }));
  window_->closePane(window_->currentPane());
  EXPECT_TRUE(waitFor([this] { return server_->clientCount() == 0; }));
}

TEST_F(LivePanesTest, tellInALineOfAServerThatGoesAndConnectAgainWhenItIsBack) {
  Pane* const pane = window_->openPane(live("monitor"));
  RealTimeDisplayView* const view = display(*pane);
  ASSERT_NE(view, nullptr);
  ASSERT_TRUE(waitFor([&] { return samplesOf(view->wvfrmsArray().get()) == 120; }));
  const qsizetype before = pane->messages().size();
  server_.reset();
  EXPECT_TRUE(waitFor([&] { return pane->messages().size() > before; }));
  EXPECT_FALSE(pane->messages().back().contains('\n'));
  EXPECT_EQ(pane->view(), view) << "with what has arrived";
  serve(port_);
  EXPECT_TRUE(waitFor([&] { return server_->clientCount() == 1; }));
  EXPECT_TRUE(waitFor([&] { return pane->messages().back().contains("connected"); }));
}

TEST_F(LivePanesTest, tellOfAServerThatIsNotThere) {
  server_.reset();
  Pane* const pane = window_->openPane(live("monitor"));
  ASSERT_NE(display(*pane), nullptr);
  EXPECT_TRUE(waitFor([&] { return !pane->messages().isEmpty(); }));
  EXPECT_TRUE(pane->messages().front().startsWith(address())) << qPrintable(pane->messages().front());
}

TEST_F(LivePanesTest, keepTheConnectionWhenAPropertyIsTakenBack) {
  Pane* const pane = window_->openPane(live("monitor"));
  RealTimeDisplayView* view = display(*pane);
  ASSERT_NE(view, nullptr);
  ASSERT_TRUE(waitFor([&] { return samplesOf(view->wvfrmsArray().get()) == 120; }));
  const qsizetype said = pane->messages().size();
  PlotRequest other = pane->request();
  other.properties["title"] = "Mine";
  window_->changeRequest(pane, other, "Title");
  EXPECT_EQ(pane->view()->plotTitle(), "Mine");
  window_->undoStack().undo();
  view = display(*pane);
  EXPECT_EQ(view->plotTitle(), address());
  EXPECT_EQ(samplesOf(view->wvfrmsArray().get()), 120) << "what has arrived is there yet";
  QTest::qWait(50);
  EXPECT_EQ(server_->clientCount(), 1);
  EXPECT_EQ(pane->messages().size(), said);
}

// Parts count from the newest sample at the right edge: the wheel zooms about the pointer, here 60 s to 48.
TEST_F(LivePanesTest, zoomWhileTimeGoesOn) {
  PlotRequest minute = live("monitor");
  minute.options += {"--span", "60"};
  Pane* const pane = window_->openPane(minute);
  window_->show();
  RealTimeDisplayView* const view = display(*pane);
  ASSERT_NE(view, nullptr);
  ASSERT_TRUE(waitFor([&] { return samplesOf(view->wvfrmsArray().get()) == 120; }));
  ASSERT_TRUE(waitFor([&] { return view->reach().x == PlotReach::Motion::Linear; }));
  view->showPart(PlotPart{{-30, -10}, {}, 1});
  QTest::qWait(100); // pictures of a display that a server of a recording does not move on
  ASSERT_TRUE(view->shownPart());
  EXPECT_NEAR(double(view->xmax()) - double(view->xmin()), 20, 1e-3);
  EXPECT_EQ(view->refDate(), view->momentOfZero().addSecs(-10)) << "times count from the edge that is shown";
}

TEST_F(LivePanesTest, areOfferedAsTheirOtherKindAlone) {
  window_->openPane(live("monitor"));
  EXPECT_TRUE(child<QAction>("show_drum").isEnabled());
  EXPECT_FALSE(child<QAction>("show_section").isEnabled());
  child<QAction>("show_drum").trigger();
  EXPECT_EQ(window_->currentPane()->request().kind, "drum");
  EXPECT_EQ(liveSourceOf(window_->currentPane()->request()).server, address());
}

TEST_F(LivePanesTest, askForServerAndStreamsWithoutHoldingUpTheWindow) {
  child<QAction>("connectToServer").trigger();
  auto& dialog = child<ConnectDialog>("connectDialog");
  child<QLineEdit>("connectServer").setText("localhost:x");
  child<QLineEdit>("connectStations").setText("XX_TEST");
  EXPECT_FALSE(child<QLabel>("connectProblem").text().isEmpty());
  dialog.accept();
  EXPECT_TRUE(dialog.isVisible()) << "nobody connects to what is no server";
  child<QLineEdit>("connectServer").setText(address());
  child<QLineEdit>("connectStations").clear();
  child<QPushButton>("connectAsk").click();
  auto& streams = child<QListWidget>("connectStreams");
  ASSERT_TRUE(waitFor([&] { return streams.count() == 2; }));
  streams.selectAll();
  EXPECT_TRUE(child<QLineEdit>("connectStations").text() == "XX_TEST:00BHZ 00BHN" ||
              child<QLineEdit>("connectStations").text() == "XX_TEST:00BHN 00BHZ");
  child<QComboBox>("connectKind").setCurrentIndex(1);
  dialog.accept();
  ASSERT_EQ(window_->panes().size(), 1U);
  EXPECT_EQ(window_->currentPane()->request().kind, "drum");
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
  EXPECT_TRUE(waitFor([this] { return server_->clientCount() == 1; }));
}

} // namespace
} // namespace xov::desk
