#pragma once

#include "XOV_Graphics/views/image/XOVImageView.h"

namespace xov {

/// The result of a frequency–wavenumber analysis of an array: beam power over horizontal slowness, east along x and
/// north along y, both in seconds per kilometre. Circles of constant apparent velocity, the two lines of zero
/// slowness and the place of the largest power are drawn over the picture. The host sets the slowness limits and
/// hands the grid of powers over with setupImageDataNROWSNCOLS(), its first row the northernmost.
///
/// Powers are coloured by their share of the range, whatever useTopoValues() says.
class XOV_EXPORT xovFKImageView : public XOVImageView {
  Q_OBJECT
  Q_CLASSINFO("shows", "slowness image")

public:
  explicit xovFKImageView(QWidget* parent = nullptr) : xovFKImageView(QRectF(), parent) {}
  explicit xovFKImageView(const QRectF& frame, QWidget* parent = nullptr);
  ~xovFKImageView() override;

  QString usualAxisName(Qt::Axis axis) const override;

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
};

} // namespace xov
