#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/navigation/PlotNavigator.h"

#include <QObject>
#include <QPointer>

#include <vector>

namespace xov {

/// Views that show the same time: what one is moved to the others follow, and where the pointer is in one the others
/// have a line.
///
///     auto* linked = new LinkedPlots(window);
///     linked->add(*section);                         // PlotNavigators of their views
///     linked->add(*drum, LinkedPlots::Follows::Cursor);
///
/// Times of views that know their XOVView::momentOfZero() are compared in UTC, those of others as they are. A view
/// shows what its own reach allows of the time of another one. Navigators may go away at any time.
class XOV_EXPORT LinkedPlots : public QObject {
  Q_OBJECT

public:
  /// What a plot follows of the others.
  enum class Follows {
    Times,  ///< the part and the pointer
    Cursor, ///< the pointer alone, such as a drum beside the section of one event
  };
  Q_ENUM(Follows)

  /// Without plots.
  explicit LinkedPlots(QObject* parent = nullptr);
  ~LinkedPlots() override;

  /// A navigator that is there already follows as is said now.
  void add(PlotNavigator& navigator, Follows follows = Follows::Times);
  /// A plot that follows no more; it stays where it is.
  void remove(PlotNavigator& navigator);

private:
  struct Plot {
    QPointer<PlotNavigator> navigator;
    Follows follows = Follows::Times;
  };
  void follow(const PlotNavigator& moved);
  void point(const PlotNavigator& from, std::optional<double> x);
  std::vector<Plot> othersOf(const PlotNavigator& navigator) const;

  std::vector<Plot> plots_;
  bool isMoving_ = false;
};

} // namespace xov
