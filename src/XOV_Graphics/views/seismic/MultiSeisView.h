#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/seismic/PickedSeismogramView.h"

#include <array>
#include <memory>

namespace xov {

/// A record section: one horizontal strip a record, the first at the bottom, all on one time axis and one amplitude
/// scale that the gain factor divides. Each strip carries a caption with station, network, component, distance and
/// azimuth, the record's picks, a red tick at its first arrival and, on request, a dotted zero line.
///
/// The time span and amplitude range are computed from the records at every draw.
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

public:
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
  /// Stored; traces of this view are not filled.
  void setFillNegative(bool fill) { change(fillNegative_, fill); }
  bool fillNegative() const { return fillNegative_; }
  void setFillPositive(bool fill) { change(fillPositive_, fill); }
  bool fillPositive() const { return fillPositive_; }

  /// pRect and iRect (20, 60, width − 40, height − 100).
  void computeRects() override;
  /// Sets the four limits from the records, whatever the fixed-range flags say; without records nothing changes.
  virtual void computePlotLimits();
  void drawRect(const QRectF& dirty) override;
  /// Red ticks at the first-arrival times of all records, unset ones included, which lie far to the left.
  virtual void drawPicks();

protected:
  std::weak_ptr<const SeismogramArray> wvfrmsArray_;
  bool fillNegative_ = false;
  bool fillPositive_ = false;
  bool showZeroLine_ = false;
  float plotGainFactor_ = 1.5f;

private:
  // What the writes of properties do: set, and draw anew.
  void writePlotGainFactor(float value) {
    setPlotGainFactor(value);
    setNeedsDisplay();
  }
  void writeShowZeroLine(bool value) {
    setShowZeroLine(value);
    setNeedsDisplay();
  }
  void writeFillNegative(bool value) {
    setFillNegative(value);
    setNeedsDisplay();
  }
  void writeFillPositive(bool value) {
    setFillPositive(value);
    setNeedsDisplay();
  }

  /// Returns the traces that it has drawn.
  std::vector<DrawnTrace> drawStrips(const SeismogramArray& records);
  void drawZeroLine(double center);
  void drawCaption(const SeismogramRecord& record, double center);
  Trace traceOf(const SeismogramRecord& record, double center, double slot) const;
  void drawTimeAxis();
};

} // namespace xov
