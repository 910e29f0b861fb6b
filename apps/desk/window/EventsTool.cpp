#include "apps/desk/window/EventsTool.h"

#include "apps/desk/events/EventPanel.h"
#include "apps/desk/files/FilesPanel.h"
#include "apps/desk/panes/PaneKinds.h"
#include "apps/desk/window/MainWindow.h"

#include <QDir>
#include <QDockWidget>
#include <QStandardPaths>
#include <QStatusBar>
#include <QThread>

#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/seismic/io/picks/PickFiles.h>

namespace xov::desk {

namespace {

constexpr int kEventMessageMs = 10000;
constexpr qint64 kSecondsShown = 1800; // in which body waves come, wherever it was

struct BoxedEvents {
  HypocentreArray events;
  QStringList problems;
};

BoxedEvents eventsIn(const QStringList& files, const MapBox& box) {
  BoxedEvents found;
  for (const QString& path : files) {
    const Result<EventFile> file = readEvents(path);
    if (!file) {
      found.problems.append(file.error());
      continue;
    }
    for (const auto& event : file->events) {
      const HypocentreValues& values = event->values();
      const bool isPlaced = values.latitudeDeg != kUndefinedValue && values.longitudeDeg != kUndefinedValue;
      if (isPlaced && box.contains({double(values.longitudeDeg), double(values.latitudeDeg)}))
        found.events.push_back(event);
    }
  }
  return found;
}

// A file of the one event, where the next start of the desk finds it.
Result<QString> fileOf(const Hypocentre& event) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/events");
  if (!QDir().mkpath(folder)) return Error{EventsTool::tr("%1 cannot be made").arg(folder)};
  const HypocentreValues& values = event.values();
  const QString name = QStringLiteral("%1_%2_%3.xml")
                           .arg(event.oDate().toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmsszzz")))
                           .arg(double(values.latitudeDeg))
                           .arg(double(values.longitudeDeg));
  const QString path = QDir(folder).filePath(name);
  const Status written = writePicks({}, path, PickFormat::QuakeMl, &event);
  return written ? Result<QString>(path) : Result<QString>(Error{written.error()});
}

} // namespace

EventsTool::EventsTool(MainWindow& window, FilesPanel& files)
    : QObject(&window),
      window_(window),
      files_(files),
      panel_(new EventPanel) {
  setObjectName(QStringLiteral("eventsTool"));
  window.addToolDock(panel_, tr("Events"), QStringLiteral("eventsDock"), Qt::BottomDockWidgetArea)->hide();
  connect(panel_, &EventPanel::opened, this, &EventsTool::open);
}

void EventsTool::show(const PlotRequest& map, const MapBox& box) {
  const auto found = std::make_shared<BoxedEvents>();
  QThread* const thread = QThread::create([found, files = filesOf(map), box] { *found = eventsIn(files, box); });
  connect(thread, &QThread::finished, this, [this, found, number = ++asked_] {
    if (number == asked_) take(std::move(found->events), found->problems);
  });
  connect(thread, &QThread::finished, thread, &QThread::deleteLater);
  thread->start();
}

void EventsTool::take(HypocentreArray events, const QStringList& problems) {
  for (const QString& problem : problems)
    window_.statusBar()->showMessage(problem, kEventMessageMs);
  panel_->setEvents(std::move(events));
  auto* const dock = window_.findChild<QDockWidget*>(QStringLiteral("eventsDock"));
  dock->show();
  dock->raise();
}

void EventsTool::open(const Hypocentre& event) {
  const QDateTime from = event.oDate();
  const QDateTime to = from.addSecs(kSecondsShown);
  const std::vector<PlotRequest> requests = files_.seismogramsBetween(from, to);
  const Result<QString> file = fileOf(event);
  if (requests.empty() || !file) {
    window_.statusBar()->showMessage(file ? tr("Of that time, there is nothing in the list of files") : file.error(),
                                     kEventMessageMs);
    return;
  }
  for (PlotRequest request : requests) {
    if (request.kind != QLatin1String("section"))
      request = requestOfKind(*paneKindOf(QStringLiteral("section")), request);
    request.options += {QStringLiteral("--event"), *file};
    request.steps = {{QStringLiteral("--start"), from.toUTC().toString(Qt::ISODateWithMs)},
                     {QStringLiteral("--end"), to.toUTC().toString(Qt::ISODateWithMs)}};
    window_.openPane(request);
  }
}

} // namespace xov::desk
