#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/seismic/StackedSeisView.h"

#include <cstdint>

namespace xov {

/// Any number of seismograms in one framed rectangle, over each other or in a band each from top to bottom, on one
/// time and one amplitude scale. Each trace is cut at the time window, held inside the amplitude range and captioned
/// with the name of its file.
///
/// The time span and the amplitude range come from the records at every draw, except where the fixed-range flags keep
/// the host's. The fill flags have no effect here.
class XOV_EXPORT SeisView02 : public StackedSeisView {
  Q_OBJECT
  Q_CLASSINFO("shows", "stacked seismograms")

public:
  /// Values of plotStyle().
  static constexpr std::int32_t kOverlay = 1;
  static constexpr std::int32_t kBands = 2;

  explicit SeisView02(QWidget* parent = nullptr) : SeisView02(QRectF(), parent) {}
  explicit SeisView02(const QRectF& frame, QWidget* parent = nullptr);
  ~SeisView02() override;

  /// kOverlay at first. Any other value than kBands overlays the traces; only kOverlay has a Y axis.
  std::int32_t plotStyle() const { return plotStyle_; }
  void setplotStyle(std::int32_t style) { plotStyle_ = style; }

  void drawRect(const QRectF& dirty) override;
  /// One trace in the current colour: the samples of windowStartingAtLimit(), all but the first held inside ymin …
  /// ymax. Nothing for a null record. A record whose interval is not positive draws nothing and leaves a saved
  /// graphics state behind.
  virtual void drawSeismogramInRect(const SeismogramRecord* record, const QRectF& rect);
  /// The name of the record's file in the upper left corner, as fileCaption() has it. Nothing for a null record.
  virtual void drawLabelForSignalInRect(const SeismogramRecord* record, const QRectF& rect);
  /// The X axis with xLabelString(), the Y axis in style kOverlay, and yLabelString() turned at the left.
  virtual void drawAxesOnRect(const QRectF& rect);

  /// The rectangle of record `index` of `count` in style kBands: equal bands, the first on top.
  static QRectF bandRect(const QRectF& frame, std::size_t index, std::size_t count);

protected:
  std::int32_t plotStyle_ = kOverlay;
};

} // namespace xov
