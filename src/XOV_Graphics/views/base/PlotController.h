#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QPointF>

#include <memory>

namespace xov {

class XOVView;

/// What a host program gives a plot view to be told of mouse positions. A view keeps only a guarded reference: a
/// controller may be destroyed at any time, and its views then tell no one.
class XOV_EXPORT PlotController {
public:
  PlotController();
  virtual ~PlotController();
  PlotController(const PlotController&) = delete;
  PlotController& operator=(const PlotController&) = delete;

  /// A single click inside the data frame, in data coordinates.
  virtual void handleClickedMousePosition(QPointF position) = 0;
  /// The pointer's position inside the data frame, in data coordinates, at every tick while tracking is on.
  virtual void handleTrackedMousePosition(QPointF position) = 0;
  /// The same with the view that they come from, for a controller of several: what views call. Unless it is
  /// overridden it calls the one without a view.
  virtual void handleClickedMousePositionInView(QPointF position, XOVView& view);
  /// The same for positions that are tracked.
  virtual void handleTrackedMousePositionInView(QPointF position, XOVView& view);

private:
  friend class PlotControllerReference;
  std::shared_ptr<PlotController*> self_;
};

/// A reference to a controller that turns to nullptr when the controller is destroyed.
class XOV_EXPORT PlotControllerReference {
public:
  PlotControllerReference() = default;
  /// Refers to a controller; null for none.
  explicit PlotControllerReference(PlotController* controller);
  /// The controller, or null once it is gone.
  PlotController* get() const;

private:
  std::weak_ptr<PlotController*> controller_;
};

} // namespace xov
