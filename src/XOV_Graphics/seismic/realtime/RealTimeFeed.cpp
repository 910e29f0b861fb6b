#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kMillisecondsPerMinute = 60 * kMillisecondsPerSecond;

// A span beyond what dates can hold is shown as one without a length.
constexpr double kLongestSpanSeconds = 1e10;
// Dates hold less than 2^63 milliseconds.
constexpr double kFarthestMilliseconds = 9e18;

bool isSameText(const SacText<8>& left, const SacText<8>& right) {
  return std::equal(std::begin(left.bytes), std::end(left.bytes), std::begin(right.bytes));
}

bool isSameChannel(const SacHeader& left, const SacHeader& right) {
  return isSameText(left.knetwk, right.knetwk) && isSameText(left.kstnm, right.kstnm) &&
         isSameText(left.khole, right.khole) && isSameText(left.kcmpnm, right.kcmpnm);
}

} // namespace

RealTimeSpan realTimeSpan(const QDateTime& reference, double seconds, Edge edge) {
  if (!reference.isValid()) return {};
  const double span = std::abs(seconds) <= kLongestSpanSeconds ? seconds : 0;
  const double instant = double(reference.toMSecsSinceEpoch());
  if (std::abs(instant) > kFarthestMilliseconds) return {};
  const double start = edge == Edge::Right ? instant - span * kMillisecondsPerSecond : instant;
  const double middle = start + span * kMillisecondsPerSecond / 2;
  const double base = std::floor(middle / kMillisecondsPerMinute) * kMillisecondsPerMinute;
  const double xmin = (start - base) / kMillisecondsPerSecond;
  return {QDateTime::fromMSecsSinceEpoch(qint64(base), Qt::UTC), float(xmin), float(xmin + span)};
}

RealTimeFeed::RealTimeFeed(double seconds) : seconds_(seconds) {}

RealTimeSeismogram& RealTimeFeed::channel(const SacHeader& header) {
  const auto found = std::ranges::find_if(
      channels_, [&](const auto& known) { return isSameChannel(*known->GetSacHeader(), header); });
  if (found != channels_.end()) return **found;
  channels_.push_back(std::make_shared<RealTimeSeismogram>(header, seconds_));
  records_->push_back(channels_.back());
  channels_.back()->setBaseTime(base_);
  return *channels_.back();
}

void RealTimeFeed::append(const SacHeader& header, double startSeconds, double deltaSeconds,
                          std::span<const float> samples) {
  channel(header).append(startSeconds, deltaSeconds, samples);
}

void RealTimeFeed::append(const SacHeader& header, double startSeconds, double deltaSeconds,
                          std::span<const float> samples, double arrivalSeconds) {
  channel(header).append(startSeconds, deltaSeconds, samples, arrivalSeconds);
}

void RealTimeFeed::setBaseTime(const QDateTime& base) {
  if (!base.isValid() || base == base_) return;
  base_ = base;
  for (const auto& channel : channels_)
    channel->setBaseTime(base_);
}

RealTimeSpan RealTimeFeed::show(const QDateTime& reference, double seconds, Edge edge) {
  const RealTimeSpan span = realTimeSpan(reference, seconds, edge);
  setBaseTime(span.base);
  return span;
}

} // namespace xov
