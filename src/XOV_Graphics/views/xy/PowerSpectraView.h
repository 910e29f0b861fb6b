#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QColor>
#include <QString>

#include <memory>
#include <vector>

namespace xov {

/// A line of a PowerSpectraView.
struct XOV_EXPORT SpectrumCurve {
  QString name;              ///< for the legend
  std::vector<float> hz;     ///< frequencies
  std::vector<float> values; ///< as many, in the unit of the Y axis
  QColor color;              ///< invalid for one of those that can be told apart, by the curve's place in the list
};

using SpectrumCurves = std::vector<SpectrumCurve>; ///< the curves of a plot

/// Power spectra of one or more recordings as lines over frequency, with a legend, and Peterson's noise models where
/// the values are dB of acceleration. Both axes are logarithmic at first; for values in dB, switch logY() off.
///
/// Limits are computed from the curves when the view is drawn unless the fixed-range flags keep the host's. On a
/// logarithmic axis, what is not above 0 breaks the line.
class XOV_EXPORT PowerSpectraView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "power spectra")
  Q_PROPERTY(bool logX READ logX WRITE writeLogX NOTIFY settingsChanged)
  Q_PROPERTY(bool logY READ logY WRITE writeLogY NOTIFY settingsChanged)
  Q_PROPERTY(bool showNoiseModels READ showNoiseModels WRITE writeShowNoiseModels NOTIFY settingsChanged)
  Q_PROPERTY(bool showLegend READ showLegend WRITE writeShowLegend NOTIFY settingsChanged)

public:
  explicit PowerSpectraView(QWidget* parent = nullptr) : PowerSpectraView(QRectF(), parent) {}
  explicit PowerSpectraView(const QRectF& frame, QWidget* parent = nullptr);
  ~PowerSpectraView() override;

  QSize usualSize() const override { return {720, 540}; }
  QString usualAxisName(Qt::Axis axis) const override;
  LogAxes logAxes() const override { return logAxes_; }

  /// The curves, which are kept and must not change while the view has them.
  void setCurves(const std::shared_ptr<const SpectrumCurves>& curves) { curves_ = curves; }
  const std::shared_ptr<const SpectrumCurves>& curves() const { return curves_; }

  /// Whether the axis of frequencies or periods is logarithmic.
  bool logX() const { return logAxes_.x; }
  void setLogX(bool logarithmic) { change(logAxes_.x, logarithmic); }
  /// Whether the axis of densities is logarithmic.
  bool logY() const { return logAxes_.y; }
  void setLogY(bool logarithmic) { change(logAxes_.y, logarithmic); }
  /// Whether the New Low and High Noise Models (noiseModelDb()) are drawn, which are in dB relative to 1 (m/s²)²/Hz;
  /// off at first.
  bool showNoiseModels() const { return showNoiseModels_; }
  void setShowNoiseModels(bool show) { change(showNoiseModels_, show); }
  /// Whether a legend names the curves, where there are several, and the noise models; on at first.
  bool showLegend() const { return showLegend_; }
  void setShowLegend(bool show) { change(showLegend_, show); }

  /// Sets the limits to what holds all curves and, between their frequencies, the noise models. Values far below the
  /// others, as spectra have between their peaks, do not count: the Y axis begins where a hundredth of them lie
  /// below. Without a value nothing changes.
  virtual void computePlotLimits();

  /// "x" and "y" at a place inside the frame, and of the nearest point within 12 points its "curve", the name in
  /// words, "frequency" and "power".
  PlotReadout readout(QPointF point) const override;

  void computeRects() override;
  void drawRect(const QRectF& dirty) override;
  /// Each curve in its colour.
  virtual void drawCurves();
  /// The curves of the noise models, where they are to be shown.
  virtual void drawNoiseModels();
  /// The legend, where there is one.
  virtual void drawLegend();
  /// Both axes with their labels.
  virtual void drawAxes();

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
  void writeShowNoiseModels(bool value) {
    setNeedsDisplay();
    setShowNoiseModels(value);
  }
  void writeShowLegend(bool value) {
    setNeedsDisplay();
    setShowLegend(value);
  }

  QColor colorOf(std::size_t curve) const;
  void strokeCurve(const std::vector<float>& hz, const std::vector<float>& values, const QColor& color, double width);

  std::shared_ptr<const SpectrumCurves> curves_;
  LogAxes logAxes_{.x = true, .y = true};
  bool showNoiseModels_ = false;
  bool showLegend_ = true;
};

} // namespace xov
