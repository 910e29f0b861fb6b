#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/seismic/UniformSignal.h"
#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include <memory>

namespace xov {

/// Evenly sampled series without a seismological header, over each other in one panel with a time axis.
///
/// Series start at the left edge of the panel, whose width stands for the host's xmax − xmin seconds. The amplitude
/// range is taken from the first series drawn while ymin() equals ymax(), as they do at first, and stays until the
/// host changes it; its size gives the scale, and amplitudes are measured from the bottom of the panel: 0 lies on the
/// bottom edge, and negative values below it. Nothing is cut.
class XOV_EXPORT uniformTimeSeriesView : public SeismogramView {
  Q_OBJECT
  Q_CLASSINFO("shows", "time series")
  Q_PROPERTY(double maxAmplitude READ maxAmplitude WRITE writeMaxAmplitude NOTIFY settingsChanged)

public:
  explicit uniformTimeSeriesView(QWidget* parent = nullptr) : uniformTimeSeriesView(QRectF(), parent) {}
  explicit uniformTimeSeriesView(const QRectF& frame, QWidget* parent = nullptr);
  ~uniformTimeSeriesView() override;

  QSize usualSize() const override { return {600, 300}; }

  /// The series, owned together with the host. Null series draw nothing.
  void setWvfrmArray(std::shared_ptr<const UniformSignalArray> series) { wvfrmArray_ = std::move(series); }
  const std::shared_ptr<const UniformSignalArray>& wvfrmArray() const { return wvfrmArray_; }
  /// Stored for hosts; the drawing does not use it. 0 at first.
  float maxAmplitude() const { return maxAmplitude_; }
  void setMaxAmplitude(float amplitude) { change(maxAmplitude_, amplitude); }

  /// Of the series under a point or nearest to it: its description as "record", "time" and "amplitude".
  PlotReadout readout(QPointF point) const override;

  /// Seconds since the series begin, from xmin on, and a gain.
  PlotReach reach() const override;
  /// While it draws it sets iRect and pRect to the panel: (24, 48, width − 36, height − 60).
  void drawRect(const QRectF& dirty) override;
  /// One series into a panel in the current colour; takes its extremes for ymin() and ymax() while those are equal. A
  /// constant series leaves them equal and is not drawn unless it is 0 throughout. Nothing for a null series.
  virtual void drawsignalSignal(const QRectF& rect, const UniformSignal* series);
  /// The series' description above the panel at the right. Nothing for a null series.
  virtual void drawLabelForSignalSignal(const QRectF& rect, const UniformSignal* series);

protected:
  void holdAmplitudes(const PlotPart& part) override;

  std::shared_ptr<const UniformSignalArray> wvfrmArray_;
  float maxAmplitude_ = 0;

private:
  Trace traceOf(const QRectF& rect, const UniformSignal& series) const;
  // What the writes of properties do: set, and draw anew.
  void writeMaxAmplitude(float value) {
    setNeedsDisplay();
    setMaxAmplitude(value);
  }
};

} // namespace xov
