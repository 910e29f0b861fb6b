#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/base/Legend.h"
#include "XOV_Graphics/views/base/XOVView.h"
#include "XOV_Graphics/views/seismic/PickSource.h"
#include "XOV_Graphics/views/seismic/RecordLimits.h"

#include <QDateTime>

#include <span>
#include <vector>

namespace xov {

struct DrawnTrace;
struct RecordTrace;

/// A stretch of the time axis of a view, in seconds.
struct XOV_EXPORT AxisSpan {
  /// Where it begins.
  double begin = 0;
  /// Where it ends.
  double end = 0;
};
struct RecordSpan;

/// What the seismogram views have in common: limits from records, traces in panels, dotted lines and the way that
/// axes are drawn. It draws nothing by itself.
class XOV_EXPORT SeismogramView : public XOVView {
  Q_OBJECT
  Q_PROPERTY(bool labelsGiveWay READ labelsGiveWay WRITE writeLabelsGiveWay NOTIFY settingsChanged)
  Q_PROPERTY(bool showAmplitudeBar READ showAmplitudeBar WRITE writeShowAmplitudeBar NOTIFY settingsChanged)
  Q_PROPERTY(QString amplitudeUnit READ amplitudeUnit WRITE writeAmplitudeUnit NOTIFY settingsChanged)
  Q_PROPERTY(QDateTime timeReference READ timeReference WRITE writeTimeReference NOTIFY settingsChanged)

public:
  ~SeismogramView() override;

  /// The moment that the times of the records count from, where the time axis is to show UTC instead of seconds: its
  /// ticks then lie at round moments (see utcTicks()), and dates stand at its ends. Invalid at first, for seconds.
  QDateTime timeReference() const { return timeReference_; }
  void setTimeReference(const QDateTime& reference) { change(timeReference_, reference); }

  /// The colours of the traces, in the order in which the view has its records; where the list ends it begins again.
  /// Empty at first: the view's own colours. Real-time displays and series without a header do not read it.
  const std::vector<QColor>& traceColors() const { return traceColors_; }
  void setTraceColors(const std::vector<QColor>& colors) { change(traceColors_, colors); }
  /// What colours stand for, in a box inside the data frame of sections, overlays and bands; empty, and not drawn, at
  /// first.
  const std::vector<LegendEntry>& legend() const { return legend_; }
  void setLegend(const std::vector<LegendEntry>& entries) { change(legend_, entries); }
  /// Where the legend stands; LegendPlace::Best at first.
  LegendPlace legendPlace() const { return legendPlace_; }
  void setLegendPlace(LegendPlace place) { change(legendPlace_, place); }
  /// Whether captions and labels of picks that would cover each other move apart a little, and where that is not
  /// enough the lesser ones are left out: of captions some of those that crowd, of picks those that are drawn later.
  /// Off at first, when all are drawn where they belong.
  bool labelsGiveWay() const { return labelsGiveWay_; }
  void setLabelsGiveWay(bool giveWay) { change(labelsGiveWay_, giveWay); }

  /// Whether views whose traces share one scale but have no axis of amplitudes (record sections and bands) show it as
  /// a bar in the upper right corner, with a round number and the unit. Off at first.
  bool showAmplitudeBar() const { return showAmplitudeBar_; }
  void setShowAmplitudeBar(bool show) { change(showAmplitudeBar_, show); }
  /// The unit of the samples, such as "nm/s"; empty at first, for a number alone.
  QString amplitudeUnit() const { return amplitudeUnit_; }
  void setAmplitudeUnit(const QString& unit) { change(amplitudeUnit_, unit); }

  /// Who tells which picks are marked over records; kept without owning it. Null, as at first, for those of their
  /// headers, in views that mark these. With a source overlays, bands and panels of pairs mark picks, too.
  void setPickSource(const std::shared_ptr<const PickSource>& source) { pickSource_ = source; }
  std::shared_ptr<const PickSource> pickSource() const { return pickSource_.lock(); }

  QString usualAxisName(Qt::Axis axis) const override;
  /// timeReference() where it is set, else the reference time of the first record that has one.
  QDateTime momentOfZero() const override;

  /// Of the trace under a point or nearest to it: the "record" in words, "time" in seconds on the view's axis, where
  /// known "utc" and "local" (from timeReference() or else the record's own reference time), the sample's "amplitude"
  /// in amplitudeUnit() or else the record's own, and the record's "distance" and "azimuth" from the event.
  PlotReadout readout(QPointF point) const override;
  std::optional<PointedRecord> recordAt(QPointF point) const override;
  /// The indices of the records that a box (view points) holds: of strips and bands those whose zero line or middle
  /// it holds and that have samples between its sides; of traces over each other those that run through it.
  std::vector<std::size_t> recordsIn(const QRectF& box) const;
  /// The times between the sides of a box, as far as they lie inside the data frame; none outside it.
  std::optional<AxisSpan> timesIn(const QRectF& box) const;

protected:
  /// The picks that the source has for a record; nothing without one.
  std::optional<std::vector<MarkedPick>> sourcePicks(const SeismogramRecord& record) const;
  /// Marks the picks that the source has for the records over the whole height of their places, with their labels at
  /// the top. Nothing without a source.
  void drawSourcePicks();

  /// For subclasses.
  explicit SeismogramView(const QRectF& frame, QWidget* parent);

  /// What becomes of limits that the host keeps fixed.
  enum class FixedRanges {
    Kept,        ///< axes with a fixed range keep the host's limits
    Overwritten, ///< all limits are set
  };
  /// Sets the limits to those found, as far as `fixed` lets them.
  void takeLimits(const RecordLimits& found, FixedRanges fixed);

  /// The traces of all records, in drawing order, as the view was last drawn; none unless overridden.
  virtual std::vector<RecordTrace> recordTraces() const;
  /// The moment of a time on the view's axis; invalid where it is not known.
  virtual QDateTime momentOf(double axisSeconds) const;
  /// Adds what else is told about a place: nothing here.
  virtual void addToReadout(PlotReadout& readout, QPointF point) const;
  // Parts of records. Views that show the records of an array through xmin … xmax move over their time and have a
  // gain; while a part is shown limits that are computed give way to it.

  PlotReach reach() const override;
  void applyPart() override;
  /// The records whose times the view moves over; none unless overridden.
  virtual SeismogramArray recordsToMoveOver() const { return {}; }
  /// The limits that the view has while it shows the whole.
  virtual RecordLimits limitsOfWhole() const;
  /// Sets what the part shown has of the limits: its times, and what holdAmplitudes() does.
  void holdPart();
  /// Sets the limits of amplitude of the part shown; nothing unless overridden.
  virtual void holdAmplitudes(const PlotPart& part);
  /// Gives a trace those samples of a record that lie in the part shown, with one more on either side, at their own
  /// times in double precision. False, and nothing done, while the whole is shown. Reads and sets no samples.
  bool cutToPart(Trace& trace, const SeismogramRecord& record) const;
  /// A record's trace along the times of a frame, whole or the part shown. The caller says where its amplitudes lie.
  Trace traceAlong(const QRectF& frame, const SeismogramRecord& record) const;

  // Views whose series begin at the left edge of their panels, at xmin of the whole, whatever their times are.

  /// Widens times by those of a series; one without samples or a positive interval does not count.
  void includeFromLeft(RecordSpan& times, int npts, float interval) const;
  /// Where such a view can be moved.
  PlotReach reachFromLeft(const RecordSpan& times) const;
  /// The samples that are shown, and where in a panel: all, or those of the part.
  void placeFromLeft(Trace& trace, int npts, float interval, const QRectF& panel) const;

  /// While a part is shown, its traces end at the sides of a panel.
  void clipToPart(const QRectF& panel) const;
  /// Limits of amplitude that a gain brings nearer to their middle.
  PlotSpan withGain(const PlotSpan& amplitudes, double gain) const;

  /// Points a second of a panel whose width stands for xmin … xmax.
  double timeScale(const QRectF& panel) const { return panel.width() / double(xmax_ - xmin_); }

  /// Whether a trace with samples from `lowest` to `highest` can be drawn into a panel. A panel without room and a
  /// scale that is not finite leave it out. Equal limits make an infinite scale of amplitudes: samples at the origin
  /// of the scale then still lie on their line, so a trace that has no others is drawn flat.
  static bool settleTrace(Trace& trace, const QRectF& panel, float lowest, float highest);
  /// Strokes one trace in the current colour, or leaves it out as settleTrace() says.
  void strokeTrace(Trace trace, const QRectF& panel, float lowest, float highest) const;
  /// The colour of the trace of record `index`; `usual` where the host has set none.
  QColor traceColor(std::size_t index, const QColor& usual) const;
  /// Draws the legend, if there is one, inside a frame that holds these traces and texts.
  void drawLegendIn(const QRectF& frame, std::span<const DrawnTrace> traces,
                    std::span<const QRectF> texts = {}) const;

  /// Strokes a straight line in the current colour.
  static void strokeLine(QPointF from, QPointF to);
  /// A line of dots, round at the ends, in the current colour: lengths of dashes and gaps in turn, in points.
  static void strokeDottedLine(QPointF from, QPointF to, double width, const std::vector<double>& dashes);

  /// Adds the X axis along the bottom edge, xmin … xmax, with its label to the axes begun with beginAxes(); the label
  /// of an axis that shows UTC is "UTC".
  void addTimeAxis(const QString& label);
  /// Adds the Y axis along the left edge, ymin … ymax, with its label.
  void addAmplitudeAxis(const QString& label);
  /// Draws the axis "Time (s)" along the line from `left` to `right` at the height `bottom`, which is the lower edge
  /// of a panel. Beyond 32767 points, which axes do not reach, nothing is drawn.
  void drawTimeAxisUnder(double left, double right, double bottom);

  /// The bar of showAmplitudeBar(), for that many points a unit of the samples: above the frame at its right end, or
  /// within where the title stands there. In dark grey, in small letters.
  void drawAmplitudeBar(double pointsPerUnit);

private:
  void writeLabelsGiveWay(bool value) {
    setNeedsDisplay();
    setLabelsGiveWay(value);
  }
  void writeShowAmplitudeBar(bool value) {
    setNeedsDisplay();
    setShowAmplitudeBar(value);
  }
  void writeAmplitudeUnit(const QString& value) {
    setNeedsDisplay();
    setAmplitudeUnit(value);
  }
  void writeTimeReference(const QDateTime& reference) {
    setNeedsDisplay();
    setTimeReference(reference);
  }

  QDateTime timeReference_;
  std::weak_ptr<const PickSource> pickSource_;
  std::vector<QColor> traceColors_;
  std::vector<LegendEntry> legend_;
  LegendPlace legendPlace_ = LegendPlace::Best;
  bool labelsGiveWay_ = false;
  bool showAmplitudeBar_ = false;
  QString amplitudeUnit_;
};

} // namespace xov
