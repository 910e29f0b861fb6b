#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/ApparentVelocity.h"
#include "XOV_Graphics/views/seismic/PickedSeismogramView.h"

#include <QColor>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace xov {

struct SectionLayout;

/// A record section: one horizontal strip a record, the first at the bottom, all on one time axis and one amplitude
/// scale that the gain factor divides. Each strip carries a caption with station, network, component, distance and
/// azimuth, the record's picks, a red tick at its first arrival and, on request, a dotted zero line.
///
/// The time span and amplitude range are computed from the records at every draw.
///
/// Strips may also stand at their distance or azimuth along an axis at the left side, and overlap there as it falls
/// (setStripPlacement()) with the caption behind its end, each trace may have a scale of its own
/// (setAmplitudeScaling()), and the lobes on either side of the zero lines may be filled (setPositiveLobeColor()).
///
/// A pick's line runs from the zero line up to 0.6 of a slot above it; its label stands to its right. The picks T0 to
/// T9 carry the labels stored with them, the first arrival is always "A".
class XOV_EXPORT MultiSeisView : public PickedSeismogramView {
  Q_OBJECT
  Q_CLASSINFO("shows", "record section")
  Q_PROPERTY(double plotGainFactor READ plotGainFactor WRITE writePlotGainFactor NOTIFY settingsChanged)
  Q_PROPERTY(bool showZeroLine READ showZeroLine WRITE writeShowZeroLine NOTIFY settingsChanged)
  Q_PROPERTY(bool fillNegative READ fillNegative WRITE writeFillNegative NOTIFY settingsChanged)
  Q_PROPERTY(bool fillPositive READ fillPositive WRITE writeFillPositive NOTIFY settingsChanged)
  Q_PROPERTY(xov::MultiSeisView::StripPlacement stripPlacement READ stripPlacement WRITE writeStripPlacement NOTIFY
                 settingsChanged)
  Q_PROPERTY(xov::MultiSeisView::AmplitudeScaling amplitudeScaling READ amplitudeScaling WRITE writeAmplitudeScaling
                 NOTIFY settingsChanged)
  Q_PROPERTY(QColor positiveLobeColor READ positiveLobeColor WRITE writePositiveLobeColor NOTIFY settingsChanged)
  Q_PROPERTY(QColor negativeLobeColor READ negativeLobeColor WRITE writeNegativeLobeColor NOTIFY settingsChanged)

public:
  /// Where the strips stand.
  enum class StripPlacement {
    Evenly,            ///< in slots of equal height, in the order of the records
    ByDistanceDegrees, ///< at their distance from the event, which an axis shows in degrees
    ByDistanceKm,      ///< in kilometres, on a sphere of 6371 km
    ByAzimuth,         ///< at the direction from the event, clockwise from north
  };
  Q_ENUM(StripPlacement)
  /// What the heights of traces are divided by.
  enum class AmplitudeScaling {
    Common,    ///< one number for all, so that they keep their heights to each other
    EachTrace, ///< the largest absolute sample of each
  };
  Q_ENUM(AmplitudeScaling)

  /// The zero line's dashes in points: with round caps, a row of dots 2.51 points apart.
  static constexpr std::array<double, 2> dashes = {0.01, 2.5};

  explicit MultiSeisView(QWidget* parent = nullptr) : MultiSeisView(QRectF(), parent) {}
  explicit MultiSeisView(const QRectF& frame, QWidget* parent = nullptr);
  ~MultiSeisView() override;

  QSize usualSize() const override { return {720, 540}; }

  /// The records, kept without owning them: a host that lets the array go gets an empty view. Null records leave
  /// their strip empty.
  void setWvfrmsArray(const std::shared_ptr<const SeismogramArray>& records) { wvfrmsArray_ = records; }
  /// A temporary one would be gone when the view draws.
  template <typename Array>
  void setWvfrmsArray(std::shared_ptr<Array>&&) = delete;
  std::shared_ptr<const SeismogramArray> wvfrmsArray() const { return wvfrmsArray_.lock(); }
  /// Dotted light grey lines through the strips; off at first.
  bool showZeroLine() const { return showZeroLine_; }
  void setShowZeroLine(bool show) { change(showZeroLine_, show); }
  /// Divides the amplitude scale: larger values draw smaller traces. 1.5 at first, which lets neighbours overlap.
  float plotGainFactor() const { return plotGainFactor_; }
  void setPlotGainFactor(float factor) { change(plotGainFactor_, factor); }
  /// Evenly at first. Along an axis, records that do not know their place are left out; where none knows it, strips
  /// stand evenly. Traces end at the frame then, ymin() and ymax() are those of the axis, and so is what clicks
  /// report.
  StripPlacement stripPlacement() const { return stripPlacement_; }
  void setStripPlacement(StripPlacement placement) { change(stripPlacement_, placement); }
  /// Common at first.
  AmplitudeScaling amplitudeScaling() const { return amplitudeScaling_; }
  void setAmplitudeScaling(AmplitudeScaling scaling) { change(amplitudeScaling_, scaling); }
  /// What lies between a trace and its zero line where samples are above 0, or below 0, is filled with that colour,
  /// under the traces. Invalid, as at first, for no fill.
  QColor positiveLobeColor() const { return positiveLobeColor_; }
  void setPositiveLobeColor(const QColor& color) { change(positiveLobeColor_, color); }
  /// The colour below the zero line; see positiveLobeColor().
  QColor negativeLobeColor() const { return negativeLobeColor_; }
  /// Sets negativeLobeColor().
  void setNegativeLobeColor(const QColor& color) { change(negativeLobeColor_, color); }
  /// Stored; they fill nothing: see setPositiveLobeColor().
  void setFillNegative(bool fill) { change(fillNegative_, fill); }
  bool fillNegative() const { return fillNegative_; }
  /// Stored; it fills nothing: see setPositiveLobeColor().
  void setFillPositive(bool fill) { change(fillPositive_, fill); }
  bool fillPositive() const { return fillPositive_; }

  /// The width in points that tells the traces of so many strips apart, which share a height in points: a third of
  /// what is between two of them, from 0.35 to 1.
  static double lineWidthOf(std::size_t strips, double height);

  QString usualAxisName(Qt::Axis axis) const override;
  /// How fast what a line across the section follows moves along it: from the record or the place on the axis at one
  /// end to that at the other. Evenly placed strips count by the distances that their records have. None where the
  /// ends are at one distance, along an axis of azimuths, and where distances are not known. Of records whose times
  /// are reduced by a velocity it is what is left of the slowness.
  std::optional<ApparentVelocity> apparentVelocity(QPointF from, QPointF to) const;

  /// pRect and iRect (20, 60, width − 40, height − 100); with an axis at the left side (72, 60, width − 156,
  /// height − 100).
  void computeRects() override;
  /// Sets the four limits from the records, whatever the fixed-range flags say; without records nothing changes.
  virtual void computePlotLimits();
  void drawRect(const QRectF& dirty) override;
  /// Times, a gain and, where strips stand along one, the axis at the left side.
  PlotReach reach() const override;
  /// Red ticks at the first-arrival times of all records, unset ones included, which lie far to the left. Records of
  /// which the pickSource() tells have theirs at the first pick that is no predicted one.
  virtual void drawPicks();

protected:
  std::vector<RecordTrace> recordTraces() const override;
  /// The distance or azimuth that an axis shows at the point, as "place".
  void addToReadout(PlotReadout& readout, QPointF point) const override;
  SeismogramArray recordsToMoveOver() const override;
  /// The records as they are now, which go on in what is drawn of them whatever the host does meanwhile; null without
  /// an array.
  std::shared_ptr<const SeismogramArray> heldRecords() const;

  std::weak_ptr<const SeismogramArray> wvfrmsArray_;
  bool fillNegative_ = false;
  bool fillPositive_ = false;
  bool showZeroLine_ = false;
  float plotGainFactor_ = 1.5f;
  StripPlacement stripPlacement_ = StripPlacement::Evenly;
  AmplitudeScaling amplitudeScaling_ = AmplitudeScaling::Common;
  QColor positiveLobeColor_;
  QColor negativeLobeColor_;

private:
  // What the writes of properties do: set, and draw anew.
  void writePlotGainFactor(float value) {
    setNeedsDisplay();
    setPlotGainFactor(value);
  }
  void writeShowZeroLine(bool value) {
    setNeedsDisplay();
    setShowZeroLine(value);
  }
  void writeFillNegative(bool value) {
    setNeedsDisplay();
    setFillNegative(value);
  }
  void writeFillPositive(bool value) {
    setNeedsDisplay();
    setFillPositive(value);
  }
  void writeStripPlacement(StripPlacement value) {
    setNeedsDisplay();
    setStripPlacement(value);
  }
  void writeAmplitudeScaling(AmplitudeScaling value) {
    setNeedsDisplay();
    setAmplitudeScaling(value);
  }
  void writePositiveLobeColor(const QColor& value) {
    setNeedsDisplay();
    setPositiveLobeColor(value);
  }
  void writeNegativeLobeColor(const QColor& value) {
    setNeedsDisplay();
    setNegativeLobeColor(value);
  }

  struct Caption {
    QString text;
    double left = 0;
  };

  /// What heights of traces are divided by, the gain of the part shown taken off.
  float shownGainFactor() const { return float(double(plotGainFactor_) / shownGain()); }
  SectionLayout layoutOfWhole(const SeismogramArray& records) const;
  SectionLayout layoutOf(const SeismogramArray& records) const;
  double scaleOf(const SeismogramRecord& record, const SectionLayout& layout) const;
  std::optional<double> distanceAt(double y) const;
  /// Returns the traces that it has drawn.
  std::vector<DrawnTrace> drawStrips(const SeismogramArray& records, const SectionLayout& layout);
  void drawTraces(const std::vector<DrawnTrace>& traces, double lineWidth) const;
  void drawZeroLine(double center);
  std::vector<std::optional<double>> placeCaptions(const SeismogramArray& records, const SectionLayout& layout) const;
  Caption captionOf(const SeismogramRecord& record, const SectionLayout& layout) const;
  void drawCaption(const Caption& caption, double bottom);
  Trace traceOf(const SeismogramRecord& record, double center, double scale) const;
  void drawAxes(const SectionLayout& layout);
  std::optional<double> firstArrivalOf(const SeismogramRecord& record) const;

  float commonPeak_ = 0; // of all records, as of the last drawing
};

} // namespace xov
