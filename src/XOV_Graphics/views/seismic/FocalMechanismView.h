#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/FocalMechanism.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QColor>

#include <vector>

namespace xov {

struct BallGrid;

/// A focal mechanism and what is written below its beach ball.
struct XOV_EXPORT CaptionedMechanism {
  FocalMechanism mechanism; ///< what the ball is drawn from
  QString caption;          ///< lines below it; empty for none
};

/// Focal mechanisms as beach balls, as large as the view has room for: the lower half of the focal sphere in
/// equal-area projection, compressional first motions in colour, dilatational ones white. A mechanism that does not
/// tell how its source radiates leaves its place empty but for the caption.
///
/// On request the T and P axes are marked, the nodal planes of the best double couple are drawn over a tensor that is
/// none, and what a single mechanism is in numbers stands beside it.
class XOV_EXPORT FocalMechanismView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "focal mechanism")
  Q_PROPERTY(bool showPrincipalAxes READ showPrincipalAxes WRITE writeShowPrincipalAxes NOTIFY settingsChanged)
  Q_PROPERTY(bool showNodalPlanes READ showNodalPlanes WRITE writeShowNodalPlanes NOTIFY settingsChanged)
  Q_PROPERTY(bool showDetails READ showDetails WRITE writeShowDetails NOTIFY settingsChanged)
  Q_PROPERTY(QColor compressionalColor READ compressionalColor WRITE writeCompressionalColor NOTIFY settingsChanged)

public:
  explicit FocalMechanismView(QWidget* parent = nullptr) : FocalMechanismView(QRectF(), parent) {}
  explicit FocalMechanismView(const QRectF& frame, QWidget* parent = nullptr);
  ~FocalMechanismView() override;

  QSize usualSize() const override { return {480, 360}; }

  /// None at first.
  const std::vector<CaptionedMechanism>& mechanisms() const { return mechanisms_; }
  void setMechanisms(std::vector<CaptionedMechanism> mechanisms) { mechanisms_ = std::move(mechanisms); }

  /// Whether T and P stand where these axes leave the lower half sphere; off at first.
  bool showPrincipalAxes() const { return showPrincipalAxes_; }
  void setShowPrincipalAxes(bool show) { change(showPrincipalAxes_, show); }
  /// Whether the nodal planes of the best double couple are drawn as lines; off at first.
  bool showNodalPlanes() const { return showNodalPlanes_; }
  void setShowNodalPlanes(bool show) { change(showNodalPlanes_, show); }
  /// Whether planes, axes, shares and moment of a single mechanism stand beside it; off at first.
  bool showDetails() const { return showDetails_; }
  void setShowDetails(bool show) { change(showDetails_, show); }
  /// Black at first.
  QColor compressionalColor() const { return compressionalColor_; }
  void setCompressionalColor(const QColor& color) { change(compressionalColor_, color); }

  /// pRect() and iRect() are where the balls stand, with room for the title above and the details of a single one at
  /// the right.
  void computeRects() override;
  /// On a ball, its caption as "mechanism" and the direction of the ray that leaves the source there: its "azimuth"
  /// and its "plunge" below the horizontal, in degrees.
  PlotReadout readout(QPointF point) const override;

  void drawRect(const QRectF& dirty) override;
  /// Balls, marks and captions.
  void drawMechanisms();
  /// The lines beside a single ball.
  void drawDetails();

private:
  BallGrid ballGrid() const;
  bool hasDetails() const { return showDetails_ && mechanisms_.size() == 1; }
  void drawBall(const FocalMechanism& mechanism, QPointF center, double radius);
  // What the writes of properties do: set, and draw anew.
  void writeShowPrincipalAxes(bool value) {
    setNeedsDisplay();
    setShowPrincipalAxes(value);
  }
  void writeShowNodalPlanes(bool value) {
    setNeedsDisplay();
    setShowNodalPlanes(value);
  }
  void writeShowDetails(bool value) {
    setNeedsDisplay();
    setShowDetails(value);
  }
  void writeCompressionalColor(const QColor& value) {
    setNeedsDisplay();
    setCompressionalColor(value);
  }

  std::vector<CaptionedMechanism> mechanisms_;
  bool showPrincipalAxes_ = false;
  bool showNodalPlanes_ = false;
  bool showDetails_ = false;
  QColor compressionalColor_;
};

} // namespace xov
