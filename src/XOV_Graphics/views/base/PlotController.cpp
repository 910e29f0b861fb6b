#include "XOV_Graphics/views/base/PlotController.h"

namespace xov {

PlotController::PlotController() : self_(std::make_shared<PlotController*>(this)) {}

PlotController::~PlotController() = default;

void PlotController::handleClickedMousePositionInView(QPointF position, XOVView&) {
  handleClickedMousePosition(position);
}

void PlotController::handleTrackedMousePositionInView(QPointF position, XOVView&) {
  handleTrackedMousePosition(position);
}

PlotControllerReference::PlotControllerReference(PlotController* controller) {
  if (controller != nullptr) controller_ = controller->self_;
}

PlotController* PlotControllerReference::get() const {
  const std::shared_ptr<PlotController*> controller = controller_.lock();
  return controller ? *controller : nullptr;
}

} // namespace xov
