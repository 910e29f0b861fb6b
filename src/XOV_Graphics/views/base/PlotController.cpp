#include "XOV_Graphics/views/base/PlotController.h"

namespace xov {

PlotController::PlotController() : self_(std::make_shared<PlotController*>(this)) {}

PlotController::~PlotController() = default;

PlotControllerReference::PlotControllerReference(PlotController* controller) {
  if (controller != nullptr) controller_ = controller->self_;
}

PlotController* PlotControllerReference::get() const {
  const std::shared_ptr<PlotController*> controller = controller_.lock();
  return controller ? *controller : nullptr;
}

} // namespace xov
