#include "XOV_Graphics/seismic/prepare/CommonAxis.h"

#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <set>
#include <utility>

namespace xov {

namespace {

constexpr double kSameEventSeconds = 60;
constexpr double kTravelTimeSeconds = 1200; // of a P wave to the antipode
constexpr double kMostPadding = 1e7;        // samples

/// When a record was taken, in seconds since 1970 (UTC).
struct Span {
  std::size_t record = 0;
  double start = 0;
  double end = 0;
  std::optional<double> origin; ///< of its event
};

std::optional<Span> spanOf(const SeismogramRecord& record, std::size_t index) {
  const std::optional<double> start = startSeconds(record);
  const double duration = double(std::max(record.npts(), 0)) * intervalSeconds(record);
  if (!start || !std::isfinite(*start) || !std::isfinite(duration)) return {};
  Span span{index, *start, *start + std::max(duration, 0.0), {}};
  const SacFooter precise = preciseValuesOf(record);
  if (isDefined(precise.o)) span.origin = *start - precise.b + precise.o;
  return span;
}

/// Groups of records: each points to one of its group, the first to itself.
class Groups {
public:
  explicit Groups(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), std::size_t(0));
  }

  std::size_t firstOf(std::size_t record) {
    while (parents_[record] != record) {
      parents_[record] = parents_[parents_[record]];
      record = parents_[record];
    }
    return record;
  }

  void join(std::size_t left, std::size_t right) {
    const auto [first, other] = std::minmax({firstOf(left), firstOf(right)});
    parents_[other] = first;
  }

private:
  std::vector<std::size_t> parents_;
};

void joinEvents(std::vector<Span> spans, Groups& groups) {
  std::erase_if(spans, [](const Span& span) { return !span.origin; });
  std::ranges::sort(spans, {}, [](const Span& span) { return *span.origin; });
  for (std::size_t i = 1; i < spans.size(); ++i) {
    if (*spans[i].origin - *spans[i - 1].origin <= kSameEventSeconds)
      groups.join(spans[i].record, spans[i - 1].record);
  }
}

bool isOfOtherEvent(const Span& left, const Span& right) {
  return left.origin && right.origin && std::abs(*left.origin - *right.origin) > kSameEventSeconds;
}

void joinNeighbours(std::vector<Span> spans, Groups& groups) {
  if (spans.empty()) return;
  double longestGap = kTravelTimeSeconds;
  for (const Span& span : spans)
    longestGap = std::max(longestGap, span.end - span.start);
  std::ranges::sort(spans, {}, &Span::start);
  Span last = spans.front(); // of those so far, the one that ends last
  for (const Span& span : spans) {
    const double gap = span.start - last.end;
    if (gap <= 0 || (gap <= longestGap && !isOfOtherEvent(span, last))) groups.join(span.record, last.record);
    if (span.end > last.end) last = span;
  }
}

// The record with NaN for the time before its first sample; null where there would be too many.
std::shared_ptr<SeismogramRecord> beginningEarlier(const SeismogramRecord& record, double seconds) {
  const double interval = intervalSeconds(record);
  const double count = std::round(seconds / interval);
  if (!(count <= kMostPadding)) return nullptr;
  const std::span<const float> own = samplesOf(record);
  std::vector<float> samples(std::size_t(count), std::numeric_limits<float>::quiet_NaN());
  samples.insert(samples.end(), own.begin(), own.end());
  SacFooter precise = preciseValuesOf(record);
  precise.b -= count * interval;
  return copyOfRecord(record, {.samples = std::move(samples), .precise = precise});
}

void beginTogether(std::shared_ptr<SeismogramRecord>& left, std::shared_ptr<SeismogramRecord>& right) {
  std::optional<Span> one = spanOf(*left, 0);
  std::optional<Span> other = spanOf(*right, 0);
  if (!one || !other || one->start > other->end || other->start > one->end) return;
  auto& later = one->start > other->start ? left : right;
  const double gap = std::abs(one->start - other->start);
  if (!(gap > intervalSeconds(*later) / 2)) return;
  if (auto padded = beginningEarlier(*later, gap)) later = std::move(padded);
}

} // namespace

SeismogramArray onCommonAxis(SeismogramArray records) {
  std::vector<Span> spans;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (const auto span = spanOf(*records[i], i)) spans.push_back(*span);
  }
  Groups groups(records.size());
  joinEvents(spans, groups);
  joinNeighbours(spans, groups);
  // The first of a group comes before its others and keeps its reference time.
  for (const Span& span : spans) {
    auto& record = records[span.record];
    const QDateTime reference = referenceTimeOf(*records[groups.firstOf(span.record)]);
    record = onTimeAxis(std::move(record), reference);
  }
  return records;
}

std::size_t countTimeAxes(const SeismogramArray& records) {
  std::set<std::optional<qint64>> references;
  for (const auto& record : records) {
    const QDateTime reference = referenceTimeOf(*record);
    references.insert(reference.isValid() ? std::optional(reference.toMSecsSinceEpoch()) : std::nullopt);
  }
  return references.size();
}

SeismogramArray pairsFromOneStart(SeismogramArray records) {
  for (std::size_t i = 0; i + 1 < records.size(); i += 2)
    beginTogether(records[i], records[i + 1]);
  return records;
}

} // namespace xov
