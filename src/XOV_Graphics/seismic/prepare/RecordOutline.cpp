#include "XOV_Graphics/seismic/prepare/RecordOutline.h"

#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kLatestSeconds = 2.5e11; // some years before 9999

QDateTime momentOf(double seconds) {
  if (!(std::abs(seconds) < kLatestSeconds)) return {};
  return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * kMillisecondsPerSecond), Qt::UTC);
}

} // namespace

ChannelOutline outlineOf(const SeismogramRecord& record, std::int64_t sampleCount) {
  ChannelOutline outline;
  outline.codes = channelCodesOf(record);
  outline.sampleCount = sampleCount;
  outline.pieceCount = 1;
  const double interval = intervalSeconds(record);
  if (interval > 0 && std::isfinite(1 / interval)) outline.rateHz = 1 / interval;
  if (const std::optional<double> start = startSeconds(record)) {
    outline.start = momentOf(*start);
    outline.end = momentOf(*start + interval * double(sampleCount > 0 ? sampleCount - 1 : 0));
  }
  const float distance = record.gcarc();
  if (isDefined(distance)) outline.distanceDeg = distance;
  return outline;
}

} // namespace xov
