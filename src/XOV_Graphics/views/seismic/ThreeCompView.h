#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/seismic/ThreeComponentObservation.h"
#include "XOV_Graphics/views/seismic/PickedSeismogramView.h"

#include <memory>

namespace xov {

/// One station's record of one event in three panels: vertical, radial and transverse from top to bottom. A header
/// names the event at the left and the station's geometry at the right; each panel carries a zero line, the trace,
/// its picks, the name of its component and, on request, its peak amplitude. A missing component leaves its panel
/// empty.
///
/// The time span and the amplitude range are computed from the components at every draw, whatever the fixed-range
/// flags say. Amplitudes are drawn about the middle of the panel and share one scale, unless selfScaled().
///
/// A pick's line takes the middle 60 percent of the panel's height; its label stands centred above it. All picks but
/// the origin and the end of the signal carry the labels stored with them.
class XOV_EXPORT ThreeCompView : public PickedSeismogramView {
  Q_OBJECT
  Q_CLASSINFO("shows", "three-component seismogram")
  Q_PROPERTY(double maxAmplitude READ maxAmplitude WRITE writeMaxAmplitude NOTIFY settingsChanged)
  Q_PROPERTY(bool selfScaled READ selfScaled WRITE writeSelfScaled NOTIFY settingsChanged)
  Q_PROPERTY(bool opComparison READ opComparison WRITE writeOpComparison NOTIFY settingsChanged)
  Q_PROPERTY(bool showMaxAmplitude READ showMaxAmplitude WRITE writeShowMaxAmplitude NOTIFY settingsChanged)

public:
  explicit ThreeCompView(QWidget* parent = nullptr) : ThreeCompView(QRectF(), parent) {}
  explicit ThreeCompView(const QRectF& frame, QWidget* parent = nullptr);
  ~ThreeCompView() override;

  QSize usualSize() const override { return {720, 540}; }

  /// The observation, kept without owning it: a host that lets it go gets an empty view.
  void setObservation(const std::shared_ptr<ThreeComponentObservation>& observation) { anObs_ = observation; }
  /// A temporary one would be gone when the view draws.
  template <typename Kept>
  void setObservation(std::shared_ptr<Kept>&&) = delete;
  /// The observation; null once the host has let it go.
  std::shared_ptr<ThreeComponentObservation> anObs() const { return anObs_.lock(); }
  /// For hosts, in the samples' unit; the drawing does not use it. 0.0005 at first.
  float maxAmplitude() const { return maxAmplitude_; }
  void setMaxAmplitude(float amplitude) { change(maxAmplitude_, amplitude); }
  /// Without effect.
  float altMaxAmplitude() const { return altMaxAmplitude_; }
  /// Scales each trace by its own peak, which then reaches the edge of its panel. Off at first.
  bool selfScaled() const { return selfScaled_; }
  void setSelfScaled(bool scaled) { change(selfScaled_, scaled); }
  /// Draws a red comparison trace 36 points below each trace: the records that getSeisWithIndex() has for 3, 4 and 5.
  /// Needs a subclass that has them, and captions the panel with the comparison. Off at first.
  bool opComparison() const { return opComparison_; }
  void setOpComparison(bool compare) { change(opComparison_, compare); }
  /// On only while a comparison trace is drawn.
  bool useAltScale() const { return useAltScale_; }
  /// Prints each trace's largest absolute amplitude under the name of its component. Off at first.
  bool showMaxAmplitude() const { return showMaxAmplitude_; }
  void setShowMaxAmplitude(bool show) { change(showMaxAmplitude_, show); }
  /// The amplitude range of comparison traces: copies of ymin() and ymax() that computePlotLimits() makes.
  float pymin() const { return pymin_; }
  /// The upper end of that range.
  float pymax() const { return pymax_; }

  /// The vertical (0), radial (1) or transverse component (2); null when it is missing, and for any other index.
  virtual std::shared_ptr<SeismogramRecord> getSeisWithIndex(int index) const;
  /// Sets maxAmplitude() to 1.025 times the largest peak of the three components; missing ones count as 0.
  virtual void computeMaxAmplitude();
  /// Sets the four limits, and pymin() and pymax(), from the components that are there, as recordLimits() says.
  /// Without an observation, or with one of no components, the limits stay.
  virtual void computePlotLimits();
  void drawRect(const QRectF& dirty) override;
  /// The part of a trace inside the time span, as windowBetweenLimits() has it, about the middle of a panel in the
  /// current colour. Nothing for a null record.
  virtual void drawSeisSeis(const QRectF& rect, const SeismogramRecord* record);
  /// The component's name above the panel at the right and, with showMaxAmplitude(), its peak below it. Nothing for a
  /// null record.
  virtual void drawLabelForSeisSeis(const QRectF& rect, const SeismogramRecord* record);

protected:
  std::vector<RecordTrace> recordTraces() const override;
  SeismogramArray recordsToMoveOver() const override { return components(); }

  std::weak_ptr<ThreeComponentObservation> anObs_;
  float maxAmplitude_ = 0.0005f;
  float altMaxAmplitude_ = 0;
  bool selfScaled_ = false;
  bool opComparison_ = false;
  bool useAltScale_ = false;
  bool showMaxAmplitude_ = false;
  float pymin_ = 0;
  float pymax_ = 0;

private:
  // What the writes of properties do: set, and draw anew.
  void writeMaxAmplitude(float value) {
    setNeedsDisplay();
    setMaxAmplitude(value);
  }
  void writeSelfScaled(bool value) {
    setNeedsDisplay();
    setSelfScaled(value);
  }
  void writeOpComparison(bool value) {
    setNeedsDisplay();
    setOpComparison(value);
  }
  void writeShowMaxAmplitude(bool value) {
    setNeedsDisplay();
    setShowMaxAmplitude(value);
  }

  SeismogramArray components() const;
  void drawHeader(const SeismogramRecord& record);
  void drawPanel(const QRectF& rect, int index);
  Trace traceOf(const QRectF& rect, const SeismogramRecord& record, float amplitudeSpan) const;
  float amplitudeSpan(const SeismogramRecord& record, bool isComparison) const;
};

} // namespace xov
