#pragma once

#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/base/PlotPart.h"

#include <QString>

#include <cstdint>

namespace xov {

/// From the first to the last sample of records, on their axis, in double precision.
struct RecordSpan {
  PlotSpan span;
  double interval = 0; ///< the smallest between samples

  bool isKnown() const { return interval > 0; }
};
/// Null records, and those without samples, times or a positive interval, do not count.
RecordSpan timesOf(const SeismogramArray& records);

/// What the times of a part count from: 0 where single precision does to a fraction of a pixel, and else, as always
/// where the axis tells moments, the second in which the part begins.
double originOfPart(const PlotSpan& part, bool showsMoments);

/// The samples of a record in a part of time.
struct RecordPart {
  std::int64_t first = 0;
  std::int64_t last = 0; ///< one past the last one
  float firstTime = 0;   ///< of the first one, counted from the origin

  bool operator==(const RecordPart&) const = default;
};
/// Of evenly spaced samples those inside, with one more on either side, where a line enters and leaves. None without
/// samples, a finite start or a positive interval.
RecordPart partOf(int npts, double start, double interval, const PlotSpan& part, double origin);
RecordPart partOf(const SeismogramRecord& record, const PlotSpan& part, double origin);

/// The label of an axis of seconds that count from an origin: "Time (s) after 80000 s", the label itself for 0.
QString timeAxisLabel(const QString& label, double origin);

} // namespace xov
