#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/seismic/StackedSeisView.h"

#include <cstdint>
#include <vector>

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
  Q_PROPERTY(xov::SeisView02::PlotStyle plotStyle READ plotStyleValue WRITE writePlotStyle NOTIFY settingsChanged)

public:
  /// How two records are shown together.
  enum PlotStyle : std::int32_t {
    Overlay = 1, ///< the traces over each other, with a Y axis
    Bands = 2,   ///< a band for each, the first on top
  };
  Q_ENUM(PlotStyle)
  /// Values of plotStyle().
  static constexpr std::int32_t kOverlay = std::int32_t(PlotStyle::Overlay);
  /// One below the other.
  static constexpr std::int32_t kBands = std::int32_t(PlotStyle::Bands);

  explicit SeisView02(QWidget* parent = nullptr) : SeisView02(QRectF(), parent) {}
  explicit SeisView02(const QRectF& frame, QWidget* parent = nullptr);
  ~SeisView02() override;

  /// kOverlay at first. Any other value than kBands overlays the traces; only kOverlay has a Y axis.
  std::int32_t plotStyle() const { return plotStyle_; }
  void setplotStyle(std::int32_t style) { change(plotStyle_, style); }
  void setplotStyle(PlotStyle style) { setplotStyle(std::int32_t(style)); }

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
  std::vector<RecordTrace> recordTraces() const override;
  bool hasAmplitudeAxis() const override { return plotStyle_ == kOverlay; }

  std::int32_t plotStyle_ = kOverlay;

private:
  void drawLegendOf(const SeismogramArray& records) const;
  /// The trace of a record whose interval is positive; an empty one where none is drawn.
  Trace traceOf(const SeismogramRecord& record, const QRectF& rect) const;
  QRectF rectOf(std::size_t index, std::size_t count) const;
  std::vector<bool> recordsWithLabel(std::size_t count) const;
  PlotStyle plotStyleValue() const { return PlotStyle(plotStyle()); }
  // What the writes of properties do: set, and draw anew.
  void writePlotStyle(PlotStyle value) {
    setNeedsDisplay();
    setplotStyle(value);
  }
};

} // namespace xov
