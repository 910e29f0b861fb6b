#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/signal/NoiseStatistics.h"
#include "XOV_Graphics/views/image/XOVImageView.h"

#include <memory>

namespace xov {

/// How often the noise of a recording has which power: the share of its segments as colours over period, on a
/// logarithmic axis, and power in steps of 1 dB, with a colour bar in per cent. Over it lie the powers that a tenth,
/// half and nine tenths of the segments stay below, and Peterson's noise models.
///
/// Limits are those of the periods and of the powers, in steps of 10 dB, unless the fixed-range flags keep the
/// host's. Where no segment has a power the paper shows. Clicks are reported as period and decibels.
class XOV_EXPORT NoiseStatisticsView : public XOVImageView {
  Q_OBJECT
  Q_CLASSINFO("shows", "noise statistics")
  Q_PROPERTY(bool showNoiseModels READ showNoiseModels WRITE writeShowNoiseModels NOTIFY settingsChanged)
  Q_PROPERTY(bool showPercentiles READ showPercentiles WRITE writeShowPercentiles NOTIFY settingsChanged)

public:
  explicit NoiseStatisticsView(QWidget* parent = nullptr) : NoiseStatisticsView(QRectF(), parent) {}
  explicit NoiseStatisticsView(const QRectF& frame, QWidget* parent = nullptr);
  ~NoiseStatisticsView() override;

  QSize usualSize() const override { return {720, 540}; }
  QString usualAxisName(Qt::Axis axis) const override;
  LogAxes logAxes() const override { return {.x = true, .y = false}; }

  /// Takes the statistics, whose dB the axis and the noise models are in; they must not change afterwards.
  void setStatistics(const std::shared_ptr<const NoiseStatistics>& statistics);
  const std::shared_ptr<const NoiseStatistics>& statistics() const { return statistics_; }
  /// Whether the New Low and High Noise Models (noiseModelDb()) are drawn, for dB relative to 1 (m/s²)²/Hz; off at
  /// first.
  bool showNoiseModels() const { return showNoiseModels_; }
  void setShowNoiseModels(bool show) { change(showNoiseModels_, show); }
  /// Whether the 10th, 50th and 90th percentile are drawn; on at first.
  bool showPercentiles() const { return showPercentiles_; }
  void setShowPercentiles(bool show) { change(showPercentiles_, show); }

  void computeRects() override;
  /// From 0 to the largest share, in steps of 5 %.
  void computeScaleFactor() override;
  void drawAxes() override;
  /// The lines of percentiles over the picture.
  virtual void drawPercentiles();
  /// The curves of the noise models over the picture.
  virtual void drawNoiseModels();

protected:
  void drawContents() override;

private:
  // What the writes of properties do: set, and draw anew.
  void writeShowNoiseModels(bool value) {
    setNeedsDisplay();
    setShowNoiseModels(value);
  }
  void writeShowPercentiles(bool value) {
    setNeedsDisplay();
    setShowPercentiles(value);
  }

  void makePicture();
  void takeLimits();
  void strokeLine(const std::vector<QPointF>& points, const QColor& color, double width);

  std::shared_ptr<const NoiseStatistics> statistics_;
  bool showNoiseModels_ = false;
  bool showPercentiles_ = true;
};

} // namespace xov
