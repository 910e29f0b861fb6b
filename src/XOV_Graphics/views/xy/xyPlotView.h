#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// One polyline through paired X and Y samples, inside a frame with a labelled X axis at the bottom and a labelled Y
/// axis at the left. Axes whose range is wider than 100 or narrower than 0.01 are scaled by a power of ten, which the
/// label then names.
///
/// The host sets samples and their number, computes the limits or sets its own, and asks for a redraw. Values that
/// are not finite break the line; a count beyond the samples draws those that are there.
class XOV_EXPORT xyPlotView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "line plot")
  Q_PROPERTY(bool logX READ logX WRITE writeLogX NOTIFY settingsChanged)
  Q_PROPERTY(bool logY READ logY WRITE writeLogY NOTIFY settingsChanged)

public:
  explicit xyPlotView(QWidget* parent = nullptr) : xyPlotView(QRectF(), parent) {}
  explicit xyPlotView(const QRectF& frame, QWidget* parent = nullptr);
  ~xyPlotView() override;

  /// Replaces the samples by copies of these; npts() stays as it is.
  void setDataPointersXY(std::span<const float> x, std::span<const float> y);
  /// Appends copies of these samples; npts() stays as it is.
  void appendDataPointersXY(std::span<const float> x, std::span<const float> y);
  /// The x coordinates.
  const std::vector<float>& xp() const { return xp_; }
  /// The y coordinates.
  const std::vector<float>& yp() const { return yp_; }

  /// How many points are used; kept by the host. Nothing is drawn while it is not positive.
  std::int32_t npts() const { return npts_; }
  void setNpts(std::int32_t npts) { npts_ = npts; }
  /// Adds to npts(), saturating at the largest count.
  void incrementNpts(std::int32_t count);

  /// Whether an axis is logarithmic; off at first. Values that are not above 0 have no place there and break
  /// the line; no power of ten is taken out of its labels.
  bool logX() const { return logAxes_.x; }
  void setLogX(bool logarithmic) { change(logAxes_.x, logarithmic); }
  /// The same of the y axis.
  bool logY() const { return logAxes_.y; }
  void setLogY(bool logarithmic) { change(logAxes_.y, logarithmic); }
  LogAxes logAxes() const override { return logAxes_; }

  /// Sets the four limits to the extremes of the points, whatever the fixed-range flags say, and leaves xyRect()
  /// alone. Without points nothing changes.
  virtual void computePlotLimits();
  /// The same, and returns (xmin, ymin, xmax − xmin, ymax − ymin); the zero rectangle without points.
  virtual QRectF computeDataRanges();

  /// "x" and "y" at a place inside the frame and, within 12 points of it, the nearest point of the line: "point",
  /// its place in the list from 0 on, "pointX" and "pointY".
  PlotReadout readout(QPointF point) const override;

  void drawRect(const QRectF& dirty) override;
  /// Draws both axes and their labels around pRect(). Leaves the label font at 14 points.
  virtual void drawAxes();

protected:
  /// The points that can be read: npts(), or fewer where the samples end before.
  std::span<const float> xPoints() const;
  /// The y coordinates of those points.
  std::span<const float> yPoints() const;
  /// readout() of a view that does not draw the first points.
  PlotReadout readoutSkipping(QPointF point, std::size_t skipped) const;
  /// Sets the limits to the extremes of the points; false, and nothing changed, without points.
  bool scanLimits();

  std::vector<float> xp_;
  std::vector<float> yp_;
  std::int32_t npts_ = 0;

private:
  // What the writes of properties do: set, and draw anew.
  void writeLogX(bool value) {
    setNeedsDisplay();
    setLogX(value);
  }
  void writeLogY(bool value) {
    setNeedsDisplay();
    setLogY(value);
  }

  LogAxes logAxes_;

  friend struct XYAxes;
};

} // namespace xov
