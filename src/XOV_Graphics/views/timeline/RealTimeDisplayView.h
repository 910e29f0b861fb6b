#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/timeline/ReferenceTexts.h"

#include <QColor>
#include <QDateTime>

#include <memory>
#include <optional>
#include <vector>

namespace xov {

/// What the real-time displays have in common: a stack of channels over a time span that ends, or begins, at a
/// reference instant, the present moment in a scrolling display. Each trace has a band of its own, the first at the
/// bottom, with its label on the side away from the reference edge; minutes count from that edge, over which the
/// instant is written in UTC and in local time, and events are marked at their origin times.
///
/// The time span is the host's xmin … xmax, in the traces' own seconds, and the amplitude range its ymin … ymax:
/// drawing does not change them, computePlotLimits() takes them from the records. The reference instant is the time
/// xmax when it lies on the right, else xmin; the view relates it to events only, keeping the traces' times in step
/// with it is up to the host.
class XOV_EXPORT RealTimeDisplayView : public SeisView01 {
  Q_OBJECT
  Q_CLASSINFO("shows", "real-time seismograms")
  Q_PROPERTY(QDateTime refDate READ refDate WRITE writeRefDate NOTIFY settingsChanged)
  Q_PROPERTY(double waveformGain READ waveformGain WRITE writeWaveformGain NOTIFY settingsChanged)
  Q_PROPERTY(bool originOnRight READ originOnRight WRITE writeOriginOnRight NOTIFY settingsChanged)
  Q_PROPERTY(bool drawOriginTimes READ drawOriginTimes WRITE writeDrawOriginTimes NOTIFY settingsChanged)
  Q_PROPERTY(QColor backGroundColor READ backGroundColor WRITE writeBackGroundColor NOTIFY settingsChanged)
  Q_PROPERTY(QColor drawingColor READ drawingColor WRITE writeDrawingColor NOTIFY settingsChanged)
  Q_PROPERTY(bool showLatency READ showLatency WRITE writeShowLatency NOTIFY settingsChanged)
  Q_PROPERTY(double lateSeconds READ lateSeconds WRITE writeLateSeconds NOTIFY settingsChanged)

public:
  ~RealTimeDisplayView() override;

  QSize usualSize() const override { return {800, 480}; }

  /// The reference instant, in any zone; none, that is invalid, at first: then nothing is written and no event
  /// marked.
  QDateTime refDate() const { return refDate_; }
  void setRefDate(const QDateTime& date) { change(refDate_, date); }
  /// The time span and its reference instant in one, as a host moves them with the clock: what showPart() shows is
  /// then a part of this span, and stays. Parts count seconds from the reference. One that reaches to the newest
  /// samples goes on with them; one that does not keeps its moments until the span leaves them behind, and its
  /// seconds where the reference is set to another time altogether. An invalid reference changes nothing.
  void showSpan(float xmin, float xmax, const QDateTime& reference);
  /// The events that may be marked, kept without owning them. Null events and those without a time are not marked.
  void setEventOrigins(const std::shared_ptr<const EventOriginArray>& events) { eventOrigins_ = events; }
  /// A temporary one would be gone when the view draws.
  template <typename Array>
  void setEventOrigins(std::shared_ptr<Array>&&) = delete;
  std::shared_ptr<const EventOriginArray> eventOrigins() const { return eventOrigins_.lock(); }
  /// Multiplies the traces; 1 at first: then ymax − ymin fills a band.
  float waveformGain() const { return waveformGain_; }
  void setWaveformGain(float gain) { change(waveformGain_, gain); }
  /// Whether the reference instant lies on the right edge of the plot, as it does at first, or on the left one.
  bool originOnRight() const { return originOnRight_; }
  void setOriginOnRight(bool onRight) { change(originOnRight_, onRight); }
  /// Whether events are marked; off at first.
  bool drawOriginTimes() const { return drawOriginTimes_; }
  void setDrawOriginTimes(bool draw) { change(drawOriginTimes_, draw); }
  /// The colour that the view is filled with; white at first.
  QColor backGroundColor() const { return backGroundColor_; }
  void setBackGroundColor(const QColor& color) { change(backGroundColor_, color); }
  /// The colour of the traces; black at first.
  QColor drawingColor() const { return drawingColor_; }
  void setDrawingColor(const QColor& color) { change(drawingColor_, color); }
  /// Whether it stands beside each channel how far its last sample lies before xmax, the present of a live display:
  /// "4.2 s", "95 s", "12 min", "3 h", "2 d"; off at first.
  bool showLatency() const { return showLatency_; }
  void setShowLatency(bool show) { change(showLatency_, show); }
  /// Channels whose last sample lies more than so many seconds before xmax are light grey instead of drawingColor();
  /// 0 at first, and what is not above 0: none are.
  double lateSeconds() const { return lateSeconds_; }
  void setLateSeconds(double seconds) { change(lateSeconds_, seconds); }

  /// A gain, and the times of showSpan() where the host shows them so.
  PlotReach reach() const override;
  std::optional<QPointF> partPosition(QPointF viewPoint) const override;
  std::vector<QLineF> linesAt(double x) const override;
  /// The reference of showSpan().
  QDateTime momentOfZero() const override;
  /// pRect and iRect (60, 84, width − 140, height − 144).
  void computeRects() override;
  /// Lays out and draws everything; without records only the background.
  void drawRect(const QRectF& dirty) override;
  /// Lays out, then draws each trace and its label, cut at the plotting rectangle. Leaves a label font of 14 points
  /// and grey labels behind.
  virtual void drawTheSeismograms();
  /// The latency of each channel beside the right end of its band, at most 12 points high; nothing where bands are
  /// too narrow to be read.
  virtual void drawLatencies();
  /// The texts of the reference instant, the dotted line down its edge and the title, which is grey. Label and title
  /// colours are black after it.
  virtual void drawLabels();
  /// The minutes from the reference edge on, along the lower edge.
  virtual void drawMinuteMarks();
  /// A vertical line at the origin time of every event in the time span.
  virtual void drawOriginTimeMarkers();
  /// Yellow below magnitude 5, orange below 6, else (also for a magnitude that is not a number) red; half
  /// transparent.
  virtual QColor colorForMagnitude(float magnitude) const;
  /// How refDate() is written.
  virtual ReferenceTexts referenceTexts() const = 0;

protected:
  void applyPart() override;
  void holdAmplitudes(const PlotPart&) override {}
  /// For subclasses.
  RealTimeDisplayView(const QRectF& frame, QWidget* parent);
  /// The events as they are now, whatever the host does meanwhile; null without an array.
  std::shared_ptr<const EventOriginArray> heldEvents() const;

  std::vector<RecordTrace> recordTraces() const override;
  /// By refDate() on its edge.
  QDateTime momentOf(double axisSeconds) const override;

  QDateTime refDate_;
  std::weak_ptr<const EventOriginArray> eventOrigins_;
  float waveformGain_ = 1;
  bool originOnRight_ = true;
  bool drawOriginTimes_ = false;
  QColor backGroundColor_;
  QColor drawingColor_;
  bool showLatency_ = false;
  double lateSeconds_ = 0;

private:
  // What the writes of properties do: set, and draw anew.
  void writeRefDate(const QDateTime& value) {
    setNeedsDisplay();
    setRefDate(value);
  }
  void writeWaveformGain(float value) {
    setNeedsDisplay();
    setWaveformGain(value);
  }
  void writeOriginOnRight(bool value) {
    setNeedsDisplay();
    setOriginOnRight(value);
  }
  void writeDrawOriginTimes(bool value) {
    setNeedsDisplay();
    setDrawOriginTimes(value);
  }
  void writeBackGroundColor(const QColor& value) {
    setNeedsDisplay();
    setBackGroundColor(value);
  }
  void writeDrawingColor(const QColor& value) {
    setNeedsDisplay();
    setDrawingColor(value);
  }

  void writeShowLatency(bool value) {
    setNeedsDisplay();
    setShowLatency(value);
  }
  void writeLateSeconds(double value) {
    setNeedsDisplay();
    setLateSeconds(value);
  }

  /// What a host shows, whatever part of it is seen.
  struct WholeSpan {
    float xmin = 0;
    float xmax = 0;
    QDateTime reference;
  };
  double referenceX() const;
  float presentX() const { return span_ ? span_->xmax : xmax_; }
  bool isLate(const SeismogramRecord& record) const;
  void strokeChannels(Path& channels, const QColor& color) const;
  void drawBandLabel(const SeismogramRecord& record, double upperEdge);

  std::optional<WholeSpan> span_; // of showSpan()
};

} // namespace xov
