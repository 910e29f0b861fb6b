#include "apps/desk/picks/EventOfRecords.h"

#include <XOV_Graphics/seismic/SacHeader.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <cmath>

namespace xov::desk {

namespace {

constexpr double kMillisecondsOfSecond = 1000;
constexpr double kFarthestOrigin = 1e9; // seconds from the reference time
constexpr int kSameMilliseconds = 50;   // what single precision leaves of an origin hours before a record

std::optional<HypocentreValues> eventOf(const SeismogramRecord& record) {
  const SacHeader* const header = record.GetSacHeader();
  const QDateTime reference = referenceTimeOf(record);
  if (header == nullptr || !reference.isValid()) return {};
  const bool isTimed = header->o != kUndefinedValue && std::abs(header->o) < kFarthestOrigin;
  if (!isTimed || header->evla == kUndefinedValue || header->evlo == kUndefinedValue) return {};
  HypocentreValues values;
  values.originTime = reference.addMSecs(std::llround(double(header->o) * kMillisecondsOfSecond));
  values.latitudeDeg = header->evla;
  values.longitudeDeg = header->evlo;
  values.depthKm = record.evdp();
  values.preferredMagnitude = header->mag;
  if (header->mag != kUndefinedValue) values.magnitudes = {{QString(), header->mag}};
  return values;
}

bool isSame(const HypocentreValues& event, const HypocentreValues& other) {
  return event.latitudeDeg == other.latitudeDeg && event.longitudeDeg == other.longitudeDeg &&
         std::abs(event.originTime.msecsTo(other.originTime)) <= kSameMilliseconds;
}

} // namespace

std::optional<HypocentreValues> eventOfRecords(const SeismogramArray& records) {
  std::optional<HypocentreValues> known;
  for (const auto& record : records) {
    const std::optional<HypocentreValues> event = record ? eventOf(*record) : std::nullopt;
    if (!event) continue;
    if (known && !isSame(*known, *event)) return {};
    if (!known) known = event;
  }
  return known;
}

} // namespace xov::desk
