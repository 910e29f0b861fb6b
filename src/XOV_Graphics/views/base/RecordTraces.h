#pragma once

#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/base/PlotReadout.h"

#include <QRectF>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace xov {

/// The trace that a view draws of one of its records.
struct RecordTrace {
  std::size_t index = 0; ///< of the record in the view
  std::shared_ptr<SeismogramRecord> record;
  Trace trace;
  QRectF rect;                      ///< where it belongs: the data frame, a band, a panel
  std::optional<double> level = {}; ///< the height of its strip or band, which has no other's; none of overlays
  double secondsPerUnit = 1;        ///< of the trace's times
  double zeroSeconds = 0;           ///< the record's time at the trace's time 0

  /// The record's own time at an x.
  double secondsAt(double x) const;
};

/// The trace that lies under a point or nearest to it, of those whose place holds the point. Of two through the point
/// the one whose strip is nearer is meant, or of overlays the one whose sample is, and then the later one, which lies
/// on top. Strips and bands have a height where their trace has a gap or has ended; overlays do not count there.
const RecordTrace* traceAt(std::span<const RecordTrace> traces, QPointF point);

/// The records that a box holds, in their order: those whose strip or band has its height within it and samples
/// between its sides, and of overlays those whose line runs through it.
std::vector<std::size_t> recordsInBox(std::span<const RecordTrace> traces, const QRectF& box);

/// What a trace's record is called in a read-out: network, station and component, or the name of its file.
QString nameOfRecord(const SeismogramRecord& record);

/// Adds the "amplitude" of the sample that stands for a point, where there is one; in the record's own unit unless
/// another one is given.
void addAmplitude(PlotReadout& readout, const RecordTrace& trace, QPointF point, const QString& unit);

} // namespace xov
