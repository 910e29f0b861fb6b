#include "bench/DeskWeek.h"

#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "XOV_Graphics/views/base/XOVView.h"
#include "apps/desk/panes/LiveRequests.h"
#include "apps/desk/window/MainWindow.h"
#include "apps/xov/commands/CommandLine.h"
#include "bench/ProcessCost.h"
#include "bench/SoakFiles.h"
#include "bench/Steadiness.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <memory>

namespace xov::bench {

namespace {

constexpr QSize kDeskSize(1600, 900);
constexpr int kMillisecondsPerGrab = 200;
constexpr qint64 kLongestPauseMs = 30000;
constexpr double kDeskWarmHours = 30;

desk::PlotRequest liveRequest(const char* kind, quint16 port, const char* stations) {
  desk::PlotRequest request = desk::requestForSource(
      QLatin1String(kind), {QStringLiteral("localhost:%1").arg(port), QLatin1String(stations), false});
  const QDateTime start = QDateTime::fromMSecsSinceEpoch(std::llround(1e3 * kSoakStart), Qt::UTC);
  request.options += {QStringLiteral("--since"), start.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))};
  return request;
}

/// Hours of the recording up to where a live view stands.
double hoursShown(const desk::Pane& pane) {
  const auto* const view = pane.view();
  const QDateTime zero = view != nullptr ? view->momentOfZero() : QDateTime();
  return zero.isValid() ? (double(zero.toMSecsSinceEpoch()) / 1e3 - kSoakStart) / kSecondsPerHour : 0;
}

} // namespace

QString deskWeekTable(double hours, double speed) {
  const QTemporaryDir folder;
  SeedLinkServerSettings served;
  served.speed = speed;
  SeedLinkServer server(served);
  for (const QString& file : writeSoakFiles(folder, 1, hours)) {
    if (const Status status = server.addFile(file); !status) qFatal("%s", qPrintable(status.error()));
  }
  if (const Status status = server.listen(); !status) qFatal("%s", qPrintable(status.error()));

  auto run = [](const std::vector<std::string>& words) { return int(cli::CommandLine().run(words)); };
  auto made = std::make_unique<desk::MainWindow>(run);
  desk::MainWindow& window = *made;
  window.resize(kDeskSize);
  window.show();
  desk::Pane* const display = window.openPane(liveRequest("monitor", server.port(), "XX_S00"));
  window.openPane(liveRequest("drum", server.port(), "XX_S00:HHZ"));
  window.workspace().split(Qt::Horizontal);

  std::vector<Moment> moments;
  QElapsedTimer clock;
  QElapsedTimer pause;
  clock.start();
  pause.start();
  QEventLoop loop;
  QTimer grab;
  QObject::connect(&grab, &QTimer::timeout, &loop, [&] {
    const double shown = hoursShown(*display);
    if (moments.empty() || shown > moments.back().done) pause.start();
    const double start = ownProcessorMs();
    if (window.grab().isNull()) qFatal("desk: no picture");
    moments.push_back(momentNow(shown, ownProcessorMs() - start));
    if (server.isAtEnd() || pause.elapsed() > kLongestPauseMs) loop.quit();
  });
  grab.start(kMillisecondsPerGrab);
  loop.exec();
  made.reset(); // ends the commands, which receive
  desk::PlotMaker::waitForAll();

  const double reached = moments.empty() ? 0 : moments.back().done;
  return QStringLiteral("| desk left open | hours shown | seconds ") + steadinessHeading("day", "picture") +
         QStringLiteral("\n|---") + QStringLiteral("|---:").repeated(10) + QStringLiteral("|\n") +
         QString::asprintf("| %g h at %g x | %.1f | %.0f ", hours, speed, reached, double(clock.elapsed()) / 1e3) +
         steadinessRow(steadiness(moments, std::min(kDeskWarmHours, hours / 4), kHoursPerDay)) + QLatin1Char('\n');
}

} // namespace xov::bench
