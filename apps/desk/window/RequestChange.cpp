#include "apps/desk/window/RequestChange.h"

#include <QCoreApplication>

namespace xov::desk {

PaneOpening::PaneOpening(Workspace& workspace, Kind kind, const PlotRequest& request, int number)
    : workspace_(workspace),
      kind_(kind),
      request_(request),
      number_(number) {
  setText(kind == Kind::Open ? QCoreApplication::translate("PaneOpening", "Open pane")
                             : QCoreApplication::translate("PaneOpening", "Close pane"));
}

void PaneOpening::open() { number_ = workspace_.numberOf(workspace_.open(request_, number_)); }

void PaneOpening::close() {
  if (const Pane* const pane = workspace_.pane(number_)) request_ = pane->request();
  workspace_.close(number_);
}

void PaneOpening::undo() { kind_ == Kind::Open ? close() : open(); }

void PaneOpening::redo() { kind_ == Kind::Open ? open() : close(); }

RequestChange::RequestChange(Workspace& workspace, int number, const PlotRequest& after, const QString& text,
                             const QString& subject)
    : QUndoCommand(text),
      workspace_(workspace),
      number_(number),
      before_(workspace.pane(number)->request()),
      after_(after),
      subject_(subject) {}

void RequestChange::undo() { set(before_); }

void RequestChange::redo() { set(after_); }

void RequestChange::set(const PlotRequest& request) {
  if (Pane* const pane = workspace_.pane(number_)) pane->setRequest(request);
}

bool RequestChange::mergeWith(const QUndoCommand* other) {
  const auto* const later = static_cast<const RequestChange*>(other);
  if (subject_.isEmpty() || later->subject_ != subject_ || later->number_ != number_) return false;
  after_ = later->after_;
  return true;
}

} // namespace xov::desk
