#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include <memory>

namespace xov {

/// A seismogram view that shows any number of records on one time and one amplitude scale inside a frame with full
/// axes. It draws nothing by itself.
class XOV_EXPORT StackedSeisView : public SeismogramView {
  Q_OBJECT
  Q_PROPERTY(bool fillNegative READ fillNegative WRITE writeFillNegative NOTIFY settingsChanged)
  Q_PROPERTY(bool fillPositive READ fillPositive WRITE writeFillPositive NOTIFY settingsChanged)

public:
  ~StackedSeisView() override;

  QSize usualSize() const override { return {720, 400}; }

  /// The records, kept without owning them: a host that lets the array go gets an empty view. Null records and
  /// records without samples draw nothing.
  void setWvfrmsArray(const std::shared_ptr<const SeismogramArray>& records) { wvfrmsArray_ = records; }
  /// A temporary one would be gone when the view draws.
  template <typename Array>
  void setWvfrmsArray(std::shared_ptr<Array>&&) = delete;
  std::shared_ptr<const SeismogramArray> wvfrmsArray() const { return wvfrmsArray_.lock(); }
  /// Stored; it has no effect on the drawing.
  bool fillNegative() const { return fillNegative_; }
  void setFillNegative(bool fill) { change(fillNegative_, fill); }
  /// Off at first. What it does is up to the subclass.
  bool fillPositive() const { return fillPositive_; }
  void setFillPositive(bool fill) { change(fillPositive_, fill); }

  /// pRect and iRect (80, 60, width − 120, height − 100).
  void computeRects() override;
  /// Sets the limits from the records as recordLimits() says, but keeps those of time while _fixedXAxisRange() is on
  /// and those of amplitude while _fixedYAxisRange() is. Without records nothing changes.
  virtual void computePlotLimits();

  /// Times, and the axis of amplitudes or, without one, a gain.
  PlotReach reach() const override;

protected:
  SeismogramArray recordsToMoveOver() const override;
  /// The records as they are now, which go on in what is drawn of them whatever the host does meanwhile; null without
  /// an array.
  std::shared_ptr<const SeismogramArray> heldRecords() const;
  RecordLimits limitsOfWhole() const override;
  void holdAmplitudes(const PlotPart& part) override;
  /// Whether there is an axis of amplitudes.
  virtual bool hasAmplitudeAxis() const { return true; }

  /// For subclasses.
  StackedSeisView(const QRectF& frame, QWidget* parent);

  std::weak_ptr<const SeismogramArray> wvfrmsArray_;
  bool fillNegative_ = false;
  bool fillPositive_ = false;

private:
  // What the writes of properties do: set, and draw anew.
  void writeFillNegative(bool value) {
    setNeedsDisplay();
    setFillNegative(value);
  }
  void writeFillPositive(bool value) {
    setNeedsDisplay();
    setFillPositive(value);
  }
};

} // namespace xov
