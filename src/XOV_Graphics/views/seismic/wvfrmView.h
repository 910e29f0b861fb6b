#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/views/seismic/PickedSeismogramView.h"

#include <memory>

namespace xov {

/// Pairs of seismograms, such as an observed and a synthetic one of the same station, in small panels that are laid
/// out in columns: the first of a pair black, the second red over it, and captions with the second one's station,
/// azimuth, user label and distance. A header names the event, and a time axis runs under each column.
///
/// Traces start at the left edge of their panel whatever their begin time is; a panel's width stands for xmax − xmin
/// seconds and half its height for maxAmplitude(). Nothing is cut: large samples leave the panel, long records run
/// past its right side, and columns go on beyond the view. A last record without a partner is not drawn.
///
/// A pick's line keeps 42 points from the panel's top and bottom, its label stands centred above it; picks carry
/// their default labels. Times of picks count from xmin, so they agree with traces that begin there.
class XOV_EXPORT wvfrmView : public PickedSeismogramView {
  Q_OBJECT
  Q_CLASSINFO("shows", "pairs of seismograms")
  Q_PROPERTY(double maxAmplitude READ maxAmplitude WRITE writeMaxAmplitude NOTIFY settingsChanged)

public:
  explicit wvfrmView(QWidget* parent = nullptr) : wvfrmView(QRectF(), parent) {}
  explicit wvfrmView(const QRectF& frame, QWidget* parent = nullptr);
  ~wvfrmView() override;

  QSize usualSize() const override { return {720, 540}; }

  /// The records, two by two, kept without owning them: a host that lets the array go gets an empty view. Of a pair
  /// with a null record the other one is drawn.
  void setWvfrmArray(const std::shared_ptr<const SeismogramArray>& records) { wvfrmArray_ = records; }
  /// A temporary one would be gone when the view draws.
  template <typename Array>
  void setWvfrmArray(std::shared_ptr<Array>&&) = delete;
  std::shared_ptr<const SeismogramArray> wvfrmArray() const { return wvfrmArray_.lock(); }
  /// The amplitude that half a panel's height stands for, in the samples' unit; 0.0005 at first.
  float maxAmplitude() const { return maxAmplitude_; }
  void setMaxAmplitude(float amplitude) { change(maxAmplitude_, amplitude); }

  /// Seconds since the traces begin, from xmin on, and a gain.
  PlotReach reach() const override;
  QDateTime momentOfZero() const override { return {}; }
  std::optional<QPointF> partPosition(QPointF viewPoint) const override;
  QRectF partFrame(QPointF viewPoint) const override;
  std::vector<QLineF> linesAt(double x) const override;
  void drawRect(const QRectF& dirty) override;
  /// One trace into a panel in the current colour. Nothing for a null record.
  virtual void drawSeisSeis(const QRectF& rect, const SeismogramRecord* record);
  /// The captions above a panel: station, network and azimuth at the right, user label and distance at the left.
  /// Nothing for a null record.
  virtual void drawLabelForSeisSeis(const QRectF& rect, const SeismogramRecord* record);

protected:
  /// A trace belongs to the panel of its pair.
  std::vector<RecordTrace> recordTraces() const override;
  SeismogramArray recordsToMoveOver() const override;
  /// The records as they are now, which go on in what is drawn of them whatever the host does meanwhile; null without
  /// an array.
  std::shared_ptr<const SeismogramArray> heldRecords() const;

  std::weak_ptr<const SeismogramArray> wvfrmArray_;
  float maxAmplitude_ = 0.0005f;

private:
  // What the writes of properties do: set, and draw anew.
  void writeMaxAmplitude(float value) {
    setNeedsDisplay();
    setMaxAmplitude(value);
  }

  Trace traceOf(const QRectF& rect, const SeismogramRecord& record) const;
  std::vector<QRectF> panels() const;
  void drawHeader(const SeismogramRecord& record);
  /// Records `first` and the next one, the second over the first.
  void drawPair(const QRectF& rect, const SeismogramArray& records, std::size_t first);
};

} // namespace xov
