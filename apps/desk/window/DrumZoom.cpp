#include "apps/desk/window/DrumZoom.h"

#include "apps/desk/panes/PaneKinds.h"
#include "apps/desk/window/MainWindow.h"

#include <QMouseEvent>

namespace xov::desk {

namespace {

// Of a drum's row this share is shown, and of short rows not less than that.
constexpr double kShareOfRow = 1.0 / 6;
constexpr double kShortestStretch = 30;

QString timeText(const QDateTime& moment, double seconds) {
  return moment.isValid() ? moment.toUTC().toString(Qt::ISODateWithMs) : QString::number(seconds, 'f', 3);
}

} // namespace

DrumZoom::DrumZoom(MainWindow& window) : QObject(&window), window_(window) {
  connect(&window, &MainWindow::paneOpened, this, [this](Pane* pane) {
    connect(pane, &Pane::viewMade, this, [this, pane](XOVView* view) {
      auto* const drum = qobject_cast<helicorderView*>(view);
      if (drum == nullptr) return;
      drum->installEventFilter(this);
      connect(drum, &XOVView::clicked, this, [this, pane, drum] { show(*pane, *drum, pressed_); });
    });
  });
}

bool DrumZoom::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const QPointF place = static_cast<QMouseEvent*>(event)->position();
    pressed_ = {place.x(), static_cast<QWidget*>(watched)->height() - place.y()};
  }
  return QObject::eventFilter(watched, event);
}

PlotRequest DrumZoom::requestFor(const PlotRequest& drum, const DrumStretch& stretch) {
  PlotRequest request = requestOfKind(*paneKindOf(QStringLiteral("section")), drum);
  request.steps.append(QStringList{QStringLiteral("--start"), timeText(stretch.begin, stretch.beginSeconds)});
  request.steps.append(QStringList{QStringLiteral("--end"), timeText(stretch.end, stretch.endSeconds)});
  return request;
}

void DrumZoom::show(Pane& drum, const helicorderView& view, QPointF point) {
  const double seconds = std::max(kShortestStretch, double(view.rowDuration()) * kShareOfRow);
  const std::optional<DrumStretch> stretch = view.stretchAt(point, seconds);
  if (!stretch) return;
  Workspace& workspace = window_.workspace();
  const PlotRequest request = requestFor(drum.request(), *stretch);
  int& zoom = zooms_[workspace.numberOf(&drum)];
  if (Pane* const shown = workspace.pane(zoom)) {
    window_.changeRequest(shown, request, tr("Zoom in drum"));
    return workspace.goTo(*shown);
  }
  zoom = workspace.numberOf(window_.openPane(request));
  workspace.split(Qt::Vertical);
}

} // namespace xov::desk
