#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace xov {

/// A scatter plot of the host's own buffers: a grey circle with a black outline at each pair of values but the first,
/// inside a frame with the view's axis labels. Ranges are labelled as they are, whatever their size.
///
/// The view keeps the buffers alive; the host may change what they hold and ask for a redraw. Pairs with a value that
/// is not finite are left out; a count beyond the buffers draws the pairs that are there.
class XOV_EXPORT XOV2DScatterPlotView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "scatter plot")
  Q_PROPERTY(bool logX READ logX WRITE writeLogX NOTIFY settingsChanged)
  Q_PROPERTY(bool logY READ logY WRITE writeLogY NOTIFY settingsChanged)
  Q_PROPERTY(double symbolDiameter READ symbolDiameter WRITE writeSymbolDiameter NOTIFY settingsChanged)

public:
  using Buffer = std::shared_ptr<std::vector<float>>; ///< coordinates that the view shares with the host

  explicit XOV2DScatterPlotView(QWidget* parent = nullptr) : XOV2DScatterPlotView(QRectF(), parent) {}
  explicit XOV2DScatterPlotView(const QRectF& frame, QWidget* parent = nullptr);
  ~XOV2DScatterPlotView() override;

  /// Sets both buffers and how many points there are; fewer are read where a buffer ends before.
  void setXpYpNpts(const Buffer& x, const Buffer& y, std::int32_t npts);
  /// The x coordinates; null for none.
  const Buffer& xp() const { return xp_; }
  void setXp(const Buffer& x) { xp_ = x; }
  /// The y coordinates; null for none.
  const Buffer& yp() const { return yp_; }
  void setYp(const Buffer& y) { yp_ = y; }
  /// How many points are used; nothing is drawn while it is not positive.
  std::int32_t npts() const { return npts_; }
  void setNpts(std::int32_t npts) { npts_ = npts; }
  /// The diameter of the circles, in view points; the sign does not matter. 0 and values that are not finite draw no
  /// circles.
  float symbolDiameter() const { return symbolDiameter_; }
  void setSymbolDiameter(float diameter) { change(symbolDiameter_, diameter); }

  /// Whether an axis is logarithmic; off at first. Pairs with a value that is not above 0 have no place there
  /// and are left out.
  bool logX() const { return logAxes_.x; }
  void setLogX(bool logarithmic) { change(logAxes_.x, logarithmic); }
  /// The same of the y axis.
  bool logY() const { return logAxes_.y; }
  void setLogY(bool logarithmic) { change(logAxes_.y, logarithmic); }
  LogAxes logAxes() const override { return logAxes_; }

  /// Sets the limits to the extremes of the points, whatever the fixed-range flags say, and leaves xyRect() alone.
  /// Without points nothing changes.
  virtual void computePlotLimits();
  /// The same.
  virtual void computeDataRanges();

  /// "x" and "y" at a place inside the frame and, within its circle or 12 points, the nearest point: "point", its
  /// place in the buffers from 0 on, "pointX" and "pointY".
  PlotReadout readout(QPointF point) const override;
  /// Both axes, also by the wheel.
  PlotReach reach() const override;

  void drawRect(const QRectF& dirty) override;
  /// Draws both axes and their labels around pRect(). Leaves the label font at 14 points.
  virtual void drawAxes();

protected:
  /// The points that can be read: npts(), or fewer where the buffers end before.
  std::span<const float> xPoints() const { return readable(xp_); }
  /// The y coordinates of those points.
  std::span<const float> yPoints() const { return readable(yp_); }

  Buffer xp_;
  Buffer yp_;
  float symbolDiameter_;
  std::int32_t npts_ = 0;

private:
  // What the writes of properties do: set, and draw anew.
  void writeSymbolDiameter(float value) {
    setNeedsDisplay();
    setSymbolDiameter(value);
  }

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
  std::span<const float> readable(const Buffer& buffer) const;
};

} // namespace xov
