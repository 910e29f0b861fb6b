#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/views/seismic/StackedSeisView.h"

namespace xov {

/// Any number of seismograms over each other in one framed rectangle, on one time and one amplitude scale with full
/// axes. All traces are one path, cut at the frame.
///
/// The time span and the amplitude range come from the records at every draw, except where the fixed-range flags keep
/// the host's. With fillPositive() every area that the joined traces enclose, each closed from its last to its first
/// sample, is filled light grey under the stroke: not positive lobes alone.
class XOV_EXPORT SeisView01 : public StackedSeisView {
  Q_OBJECT
  Q_CLASSINFO("shows", "overlaid seismograms")

public:
  explicit SeisView01(QWidget* parent = nullptr) : SeisView01(QRectF(), parent) {}
  explicit SeisView01(const QRectF& frame, QWidget* parent = nullptr);
  ~SeisView01() override;

  void drawRect(const QRectF& dirty) override;

protected:
  std::vector<RecordTrace> recordTraces() const override;

private:
  Trace traceOf(const SeismogramRecord& record) const;
};

} // namespace xov
