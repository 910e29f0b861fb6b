#pragma once

#include "XOV_Graphics/seismic/array/BeamPower.h"
#include "XOV_Graphics/views/image/XOVImageView.h"

namespace xov {

/// The result of a frequency–wavenumber analysis of an array: beam power over horizontal slowness, east along x and
/// north along y, both in seconds per kilometre. Circles of constant apparent velocity, the two lines of zero
/// slowness and the place of the largest power are drawn over the picture. The host sets the slowness limits and
/// hands the grid of powers over with setupImageDataNROWSNCOLS(), its first row the northernmost.
///
/// Powers are coloured by their share of the range, whatever useTopoValues() says. Circles and peak are labelled on
/// request.
class XOV_EXPORT xovFKImageView : public XOVImageView {
  Q_OBJECT
  Q_CLASSINFO("shows", "slowness image")
  Q_PROPERTY(
      xov::xovFKImageView::CircleLabels circleLabels READ circleLabels WRITE writeCircleLabels NOTIFY settingsChanged)
  Q_PROPERTY(bool showPeakValue READ showPeakValue WRITE writeShowPeakValue NOTIFY settingsChanged)
  Q_PROPERTY(QString peakUnit READ peakUnit WRITE writePeakUnit NOTIFY settingsChanged)
  Q_PROPERTY(bool colorsFromMinimum READ colorsFromMinimum WRITE writeColorsFromMinimum NOTIFY settingsChanged)

public:
  /// What is written at the circles of constant velocity.
  enum CircleLabels : std::int32_t {
    NoLabels = 0,            ///< circles alone
    KilometresPerSecond = 1, ///< the apparent velocity: "8 km/s"
    SecondsPerKilometre = 2, ///< the slowness: "0.125 s/km"
    SecondsPerDegree = 3,    ///< the slowness on a sphere of 6371 km: "13.9 s/°"
  };
  Q_ENUM(CircleLabels)

  /// A view without a frame; a layout or a form gives it one.
  explicit xovFKImageView(QWidget* parent = nullptr) : xovFKImageView(QRectF(), parent) {}
  explicit xovFKImageView(const QRectF& frame, QWidget* parent = nullptr);
  ~xovFKImageView() override;

  QString usualAxisName(Qt::Axis axis) const override;

  /// What is written at the circles, on the diagonal away from the peak, where there is room; nothing at first.
  CircleLabels circleLabels() const { return circleLabels_; }
  void setCircleLabels(CircleLabels labels) { change(circleLabels_, labels); }
  /// Whether the largest power is written beside its place; off at first.
  bool showPeakValue() const { return showPeakValue_; }
  void setShowPeakValue(bool show) { change(showPeakValue_, show); }
  /// The unit behind it, such as "dB"; empty at first.
  QString peakUnit() const { return peakUnit_; }
  void setPeakUnit(const QString& unit) { change(peakUnit_, unit); }
  /// Whether the smallest power has the first colour, as powers in decibels need, which are negative; off at first:
  /// then zero has it. Shows after updateImagePlanes().
  bool colorsFromMinimum() const { return colorsFromMinimum_; }
  void setColorsFromMinimum(bool from) { change(colorsFromMinimum_, from); }

  /// Shows the power of beams, whose slownesses become the limits of both axes.
  void setBeamPower(const BeamPower& beam);
  /// At a place inside the data frame "slownessEast", "slownessNorth" and "slowness" in s/km, the latter also in s/°
  /// as "slownessPerDegree", the apparent "velocity" in km/s and the "backAzimuth" (neither for a wave from straight
  /// below), and the "power" of the cell in peakUnit().
  PlotReadout readout(QPointF point) const override;

  /// Both axes together: a slowness is as long to the east as to the north.
  PlotReach reach() const override;
  /// The scale is maxValue − minValue, 1 in place of 0.
  void computeScaleFactor() override;
  /// Makes bitmap and picture anew. The category xov.cells of the log gets a line "share red green blue" for each
  /// cell, which costs far more than the picture itself; silenced, it costs nothing.
  void setupNSImage() override;
  /// pRect (24, 60, width − 48, height − 80); iRect starts 40 points further right, or is pRect without axes.
  void computeRects() override;
  /// The data frame and two axes with one tick interval, by the range of the X axis: 0.025 s/km, above 0.2 s/km 0.05,
  /// above 0.4 s/km 0.1. Above 1 s/km it grows with the range, for at most 11 labels; a Y axis that is wider than
  /// that has its own.
  void drawAxes() override;
  /// The lines of zero east and zero north slowness, in black.
  virtual void drawZeroGrid();
  /// Circles around zero slowness for 32, 16, 8, 6, 4, 3 and 2 km/s, in black and cut at the data frame. They are
  /// round, to the scale of the x axis.
  virtual void drawPhaseVelocityCircles();
  /// The labels of these circles; nothing without circleLabels().
  void drawCircleLabels();
  /// The largest power beside its place; nothing without showPeakValue(), or where the peak lies outside the limits.
  void drawPeakValue();
  /// With Shift, drags a picture of the view out; nothing otherwise.
  void mouseDown(const MouseEvent& event) override;
  /// A picture without transparency.
  QImage snapshotFromRect(const QRectF& rect) override;

protected:
  /// Everything, on white.
  void drawContents() override;
  GridColoring gridColoring() const override;

private:
  void logCells() const;
  void drawTextBox(const QString& text, const QRectF& box) const;
  // What the writes of properties do: set, and draw anew.
  void writeCircleLabels(CircleLabels value) {
    setNeedsDisplay();
    setCircleLabels(value);
  }
  void writeShowPeakValue(bool value) {
    setNeedsDisplay();
    setShowPeakValue(value);
  }
  void writePeakUnit(const QString& value) {
    setNeedsDisplay();
    setPeakUnit(value);
  }
  void writeColorsFromMinimum(bool value) {
    writeColors([&] { setColorsFromMinimum(value); });
  }

  CircleLabels circleLabels_ = NoLabels;
  bool showPeakValue_ = false;
  QString peakUnit_;
  bool colorsFromMinimum_ = false;
};

} // namespace xov
