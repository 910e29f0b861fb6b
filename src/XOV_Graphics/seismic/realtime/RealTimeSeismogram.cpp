#include "XOV_Graphics/seismic/realtime/RealTimeSeismogram.h"

#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/UtcTime.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kIntervalTolerance = 1e-4;
constexpr double kMillisecondsPerSecond = 1000;

// Bounds the memory of a channel to 128 MiB, whatever its interval: a day at 388 samples a second.
constexpr double kMostSamples = double(1 << 25);

std::int64_t capacityFor(double seconds, double deltaSeconds) {
  const double count = seconds / deltaSeconds;
  return count >= 1 ? std::int64_t(std::ceil(std::min(count, kMostSamples))) : 1;
}

SacHeader withoutTimes(SacHeader header) {
  for (float SacHeader::*time : {&SacHeader::e, &SacHeader::o, &SacHeader::a, &SacHeader::f, &SacHeader::t0,
                                 &SacHeader::t1, &SacHeader::t2, &SacHeader::t3, &SacHeader::t4, &SacHeader::t5,
                                 &SacHeader::t6, &SacHeader::t7, &SacHeader::t8, &SacHeader::t9, &SacHeader::delta})
    header.*time = kUndefinedValue;
  header.b = 0;
  header.npts = 0;
  return header;
}

} // namespace

RealTimeSeismogram::RealTimeSeismogram(const SacHeader& header, double seconds)
    : seconds_(seconds),
      buffer_(1, 1),
      header_(withoutTimes(header)),
      described_(header_, {}) {
  setBaseTime(QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
}

RealTimeSeismogram::~RealTimeSeismogram() = default;

void RealTimeSeismogram::append(double startSeconds, double deltaSeconds, std::span<const float> samples) {
  if (!(deltaSeconds > 0) || !std::isfinite(deltaSeconds)) return;
  const bool isSameInterval = std::abs(deltaSeconds / buffer_.deltaSeconds() - 1) <= kIntervalTolerance;
  if (!isDefined(header_.delta) || !isSameInterval) {
    buffer_ = SampleBuffer(deltaSeconds, capacityFor(seconds_, deltaSeconds));
    extrema_ = {};
    hasExtrema_ = false;
  }
  buffer_.append(startSeconds, samples);
  widenExtrema(samples);
  describeSamples();
}

void RealTimeSeismogram::append(double startSeconds, double deltaSeconds, std::span<const float> samples,
                                double arrivalSeconds) {
  append(startSeconds, deltaSeconds, samples);
  const double last = startSeconds + double(std::ssize(samples) - 1) * deltaSeconds;
  if (samples.empty() || !(deltaSeconds > 0) || !std::isfinite(last) || !std::isfinite(arrivalSeconds)) return;
  const ChannelArrival packet{last, arrivalSeconds};
  arrival_ = arrival_ ? arrival_->joined(packet) : packet;
}

void RealTimeSeismogram::widenExtrema(std::span<const float> samples) {
  if (std::ranges::none_of(samples, [](float sample) { return std::isfinite(sample); })) return;
  const Extrema added = finiteExtrema(samples, &buffer_.index());
  extrema_ = hasExtrema_ ? Extrema{std::min(extrema_.min, added.min), std::max(extrema_.max, added.max)} : added;
  hasExtrema_ = true;
}

void RealTimeSeismogram::setBaseTime(const QDateTime& base) {
  if (!base.isValid()) return;
  base_ = std::make_shared<UtcTime>(base);
  setReferenceTime(header_, base);
  describeSamples();
}

QDateTime RealTimeSeismogram::baseTime() const { return base_->nsDate(); }

/// Keeps the header in step with the buffer and the base time.
void RealTimeSeismogram::describeSamples() {
  const std::int64_t count = std::ssize(buffer_.samples());
  header_.npts = int(count);
  header_.depmin = extrema_.min;
  header_.depmax = extrema_.max;
  if (count == 0) return;
  const double baseSeconds = double(baseTime().toMSecsSinceEpoch()) / kMillisecondsPerSecond;
  const double first = buffer_.startSeconds() - baseSeconds;
  header_.delta = float(buffer_.deltaSeconds());
  header_.b = float(first);
  header_.e = float(first + double(count - 1) * buffer_.deltaSeconds());
}

const float* RealTimeSeismogram::GetSacSeis() const { return buffer_.samples().data(); }
int RealTimeSeismogram::npts() const { return header_.npts; }
const SampleIndex* RealTimeSeismogram::sampleIndex() const { return &buffer_.index(); }
float RealTimeSeismogram::delta() const { return header_.delta; }
float RealTimeSeismogram::b() const { return header_.b; }
float RealTimeSeismogram::e() const { return header_.e; }
float RealTimeSeismogram::a() const { return kUndefinedValue; }

float RealTimeSeismogram::smin() const { return extrema_.min; }
float RealTimeSeismogram::smax() const { return extrema_.max; }
float RealTimeSeismogram::absMax() const { return std::max(std::abs(extrema_.min), std::abs(extrema_.max)); }

void RealTimeSeismogram::ComputeExtrema() {
  extrema_ = {};
  hasExtrema_ = false;
  widenExtrema(buffer_.samples());
  describeSamples();
}

QString RealTimeSeismogram::kstnm() const { return described_.kstnm(); }
QString RealTimeSeismogram::knetwk() const { return described_.knetwk(); }
QString RealTimeSeismogram::kcmpnm() const { return described_.kcmpnm(); }
QString RealTimeSeismogram::khole() const { return described_.khole(); }
QString RealTimeSeismogram::kuser0() const { return described_.kuser0(); }

float RealTimeSeismogram::gcarc() const { return described_.gcarc(); }
float RealTimeSeismogram::azimuth() const { return described_.azimuth(); }
float RealTimeSeismogram::backazimuth() const { return described_.backazimuth(); }
float RealTimeSeismogram::evdp() const { return described_.evdp(); }
QString RealTimeSeismogram::flinnEngdahlString() const { return described_.flinnEngdahlString(); }
QString RealTimeSeismogram::flinnEngdahlGeographicRegion() const { return described_.flinnEngdahlGeographicRegion(); }
QString RealTimeSeismogram::oTimeString() const { return {}; }

float RealTimeSeismogram::originTimeOffset() const { return kUndefinedValue; }
float RealTimeSeismogram::pTime() const { return kUndefinedValue; }
float RealTimeSeismogram::timePickKey(int) const { return kUndefinedValue; }
QString RealTimeSeismogram::pickLabelWithKey(int) const { return QString::fromLatin1(kUndefinedLabel); }
UnsetNumbers RealTimeSeismogram::unsetNumbers() const { return described_.unsetNumbers(); }

std::shared_ptr<SeisTime> RealTimeSeismogram::mySeisReferenceTime() const { return base_; }
const SacHeader* RealTimeSeismogram::GetSacHeader() const { return &header_; }
QString RealTimeSeismogram::labelString() const { return described_.labelString(); }
QString RealTimeSeismogram::path() const { return {}; }

} // namespace xov
