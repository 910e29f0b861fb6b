#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/prepare/ParticleMotion.h"
#include "XOV_Graphics/seismic/signal/Polarization.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QColor>

#include <optional>

namespace xov {

/// The path of the ground at a station in three square panels: seen from above, with the first horizontal component
/// upwards and the second one to the right (north and east, or radial and transverse), and two views from the side,
/// with the vertical component upwards over either of them. All axes have one scale. A dot marks where the path
/// begins.
///
/// On request the direction of the largest motion lies over it as a dashed line, and is told in numbers below: the
/// azimuth and the incidence of a wave that moves the ground along its ray, as P does, and how much its path is a
/// line and a plane.
class XOV_EXPORT ParticleMotionView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "particle motion")
  Q_PROPERTY(bool showPolarization READ showPolarization WRITE writeShowPolarization NOTIFY settingsChanged)
  Q_PROPERTY(QColor pathColor READ pathColor WRITE writePathColor NOTIFY settingsChanged)

public:
  explicit ParticleMotionView(QWidget* parent = nullptr) : ParticleMotionView(QRectF(), parent) {}
  explicit ParticleMotionView(const QRectF& frame, QWidget* parent = nullptr);
  ~ParticleMotionView() override;

  QSize usualSize() const override { return {900, 400}; }
  QString usualAxisName(Qt::Axis axis) const override;

  /// The motion, empty at first, and its polarisation. A component that is null counts as one without samples; of
  /// components of different lengths the samples that all have are drawn. Sets the limits of both axes, which are the
  /// same in every panel, to the largest amplitude on both sides of 0, unless the fixed-range flag of X keeps them.
  void setMotion(const ParticleMotion& motion);
  const ParticleMotion& motion() const { return motion_; }
  /// That of the motion; none for ground that did not move.
  const std::optional<Polarization>& polarization() const { return polarization_; }
  /// Azimuth and incidence, the back azimuth, rectilinearity and planarity in one line; empty without a polarisation.
  QString polarizationText() const;

  /// Whether the polarisation is shown; off at first.
  bool showPolarization() const { return showPolarization_; }
  void setShowPolarization(bool show) { change(showPolarization_, show); }
  /// The colour of the path; black at first.
  QColor pathColor() const { return pathColor_; }
  void setPathColor(const QColor& color) { change(pathColor_, color); }

  /// In a panel, its horizontal and upright axis as "x" and "y", under the names of the components.
  PlotReadout readout(QPointF point) const override;

  /// A gain, for all panels.
  PlotReach reach() const override;
  /// Lays out the panels; iRect() is the first one, pRect() the frame around all.
  void computeRects() override;
  void drawRect(const QRectF& dirty) override;
  /// One panel: 0 from above, 1 the vertical over the first horizontal component, 2 over the second one.
  void drawPanel(int panel);
  /// What polarizationText() says, below the panels.
  void drawPolarizationText();

protected:
  void applyPart() override;

private:
  struct Axes {
    std::size_t x;
    std::size_t y;
  };
  static Axes axesOf(int panel);
  void drawPath(const QRectF& panel, const Axes& axes);
  void drawDirection(const QRectF& panel, const Axes& axes);
  // What the writes of properties do: set, and draw anew.
  void writeShowPolarization(bool value) {
    setNeedsDisplay();
    setShowPolarization(value);
  }
  void writePathColor(const QColor& value) {
    setNeedsDisplay();
    setPathColor(value);
  }

  ParticleMotion motion_;
  std::optional<Polarization> polarization_;
  bool showPolarization_ = false;
  QColor pathColor_;
};

} // namespace xov
