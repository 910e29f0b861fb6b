#include "XOV_Graphics/seismic/prepare/DrumPage.h"

#include "XOV_Graphics/seismic/prepare/Amplitudes.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordTexts.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace xov {

namespace {

constexpr double kSecondsPerHour = 3600;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kFarthestSeconds = 1e12; // from 1970, some thirty thousand years
constexpr qsizetype kNamedChannels = 5;
constexpr std::ptrdiff_t kMostOfOneTime = 8; // pieces that are compared with each other
constexpr double kSecondsPerMinute = 60;
constexpr double kUsualReach = 0.6; // of the way from a zero line to the edge of its row
constexpr double kLargestGain = 8;

QString severalChannels(const QStringList& names) {
  const QString named = names.first(std::min(names.size(), kNamedChannels)).join(QStringLiteral(", "));
  return QStringLiteral("found %1 channels, expected one: %2%3")
      .arg(names.size())
      .arg(named, names.size() > kNamedChannels ? QStringLiteral(", ...") : QString());
}

// How many samples lie before a time, as the view reckons times.
std::int64_t samplesBefore(const SeismogramRecord& record, double seconds) {
  std::int64_t low = 0;
  std::int64_t high = record.npts();
  while (low < high) {
    const std::int64_t middle = low + (high - low) / 2;
    const float elapsed = record.delta() * float(middle);
    if (double(record.b() + elapsed) < seconds)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}

// The samples of a piece from the start of the page to its end; null when there are none.
std::shared_ptr<SeismogramRecord> cutToPage(std::shared_ptr<SeismogramRecord> piece, double end) {
  const std::int64_t first = samplesBefore(*piece, 0);
  const std::int64_t last = samplesBefore(*piece, end);
  if (last <= first) return nullptr;
  if (first == 0 && last == piece->npts()) return piece;
  const auto cut = changedRecord(std::move(piece));
  cut->keepSamples(std::size_t(first), std::size_t(last - first));
  return cut;
}

bool canBePlaced(const SeismogramRecord& record) {
  const std::optional<double> start = startSeconds(record);
  return record.npts() > 0 && record.delta() > 0 && start && std::abs(*start) < kFarthestSeconds;
}

// Whether two pieces hold the same samples at the same time, as two copies of a file do.
bool isCopy(const SeismogramRecord& left, const SeismogramRecord& right) {
  const double interval = intervalSeconds(left);
  const double between = startSeconds(left).value_or(0) - startSeconds(right).value_or(0);
  const auto sameValue = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
  return std::abs(between) <= interval / 2 && left.delta() == right.delta() &&
         std::ranges::equal(samplesOf(left), samplesOf(right), sameValue);
}

// The pieces in the order of their starts, each once.
SeismogramArray withoutCopies(SeismogramArray pieces, QStringList& notes) {
  std::ranges::stable_sort(pieces, {}, [](const auto& piece) { return startSeconds(*piece).value_or(0); });
  SeismogramArray kept;
  for (const auto& piece : pieces) {
    const auto isTheSame = [&](const auto& other) { return isCopy(*other, *piece); };
    const auto recent = kept.end() - std::min<std::ptrdiff_t>(std::ssize(kept), kMostOfOneTime);
    if (std::none_of(recent, kept.end(), isTheSame)) kept.push_back(piece);
  }
  if (const auto copies = std::ssize(pieces) - std::ssize(kept); copies > 0)
    notes.append(QStringLiteral("%1: %2 of %3 records have the samples of another one; drawn once")
                     .arg(pieces.front()->labelString())
                     .arg(copies)
                     .arg(pieces.size()));
  return kept;
}

// The whole hour, in hours since 1970, that the page starts with.
double firstHour(const SeismogramArray& pieces) {
  std::map<double, double> covered; // seconds of data in the first and the last two hours of each piece
  for (const auto& piece : pieces) {
    const double start = startSeconds(*piece).value_or(0);
    const double end = start + double(piece->npts()) * intervalSeconds(*piece);
    const double first = std::floor(start / kSecondsPerHour);
    const double last = std::floor(end / kSecondsPerHour);
    for (const double hour : std::set{first, std::min(first + 1, last), last})
      covered[hour] += std::min(end, (hour + 1) * kSecondsPerHour) - std::max(start, hour * kSecondsPerHour);
  }
  const auto enough =
      std::ranges::find_if(covered, [](const auto& hour) { return hour.second >= kSecondsPerMinute; });
  return (enough == covered.end() ? covered.begin() : enough)->first;
}

QDateTime firstHourOf(const SeismogramArray& pieces) {
  const double seconds = firstHour(pieces) * kSecondsPerHour;
  return QDateTime::fromMSecsSinceEpoch(qint64(seconds * kMillisecondsPerSecond), Qt::UTC);
}

// What of the pieces, whose times count from the start of the page, lies before it.
void noteWhatIsBefore(const SeismogramArray& pieces, const QDateTime& start, QStringList& notes) {
  double seconds = 0;
  for (const auto& piece : pieces)
    seconds += double(samplesBefore(*piece, 0)) * intervalSeconds(*piece);
  if (seconds > 0)
    notes.append(QStringLiteral("%1: less than a minute (%2 s) before %3 left out")
                     .arg(pieces.front()->labelString())
                     .arg(seconds)
                     .arg(start.toString(Qt::ISODate)));
}

std::int32_t rowsUntil(double seconds, double rowSeconds) {
  return std::int32_t(std::clamp(std::ceil(seconds / rowSeconds), 1.0, double(kMostDrumRows)));
}

std::int32_t rowsFor(const SeismogramArray& pieces, double rowSeconds) {
  double end = 0;
  for (const auto& piece : pieces)
    end = std::max(end, double(piece->b()) + (double(std::max(piece->npts(), 1)) - 1) * double(piece->delta()));
  const double rows = std::floor(end / rowSeconds) + 1;
  return std::int32_t(std::clamp(rows, 1.0, double(kMostDrumRows)));
}

bool isFinite(float sample) { return std::isfinite(sample); }

// The largest absolute sample of each minute, as far as it has finite ones.
std::vector<float> minutePeaks(const SeismogramArray& pieces) {
  std::vector<float> peaks;
  for (const auto& piece : pieces) {
    const auto count = std::size_t(std::max(piece->npts(), 0));
    if (count == 0) continue;
    const BorrowedSamples samples = piece->borrowedSamples();
    const double perMinute = std::clamp(std::round(kSecondsPerMinute / double(piece->delta())), 1.0, double(count));
    for (std::size_t first = 0; first < count; first += std::size_t(perMinute)) {
      const std::span<const float> minute(samples.samples + first, std::min(std::size_t(perMinute), count - first));
      const Extrema extrema = finiteExtrema(minute, samples.index, samples.source);
      const bool isSilent = extrema.min == 0 && extrema.max == 0;
      if (isSilent && samples.source == nullptr && std::ranges::none_of(minute, isFinite)) continue; // a gap
      peaks.push_back(std::max(std::abs(extrema.min), std::abs(extrema.max)));
    }
  }
  return peaks;
}

} // namespace

double drumGain(const SeismogramArray& pieces) {
  std::vector<float> peaks = minutePeaks(pieces);
  if (peaks.empty()) return 1;
  const float largest = *std::ranges::max_element(peaks);
  const auto middle = peaks.begin() + std::ptrdiff_t(peaks.size() / 2);
  std::ranges::nth_element(peaks, middle);
  const double gain = kUsualReach * double(largest) / double(*middle);
  return std::isfinite(gain) ? std::min(gain, kLargestGain) : kLargestGain;
}

Result<DrumPage> layOutDrum(SeismogramArray records, double rowSeconds, std::optional<int> rows,
                            const DrumSpan& span) {
  if (!(rowSeconds > 0)) return Error{QStringLiteral("found rows of %1 s, expected more than 0").arg(rowSeconds)};
  if (const QStringList channels = channelsOf(records); channels.size() > 1) return Error{severalChannels(channels)};
  std::erase_if(records, [](const auto& record) { return !canBePlaced(*record); });
  if (records.empty())
    return Error{QStringLiteral("found no record with samples and times, expected a reference time")};
  DrumPage page;
  records = withoutCopies(std::move(records), page.notes);
  page.start = span.start.isValid() ? span.start.toUTC() : firstHourOf(records);
  const double spanSeconds = double(page.start.msecsTo(span.end)) / kMillisecondsPerSecond;
  if (span.end.isValid() && !(spanSeconds > 0))
    return Error{QStringLiteral("found a page from %1 to %2, expected an end after the start")
                     .arg(page.start.toString(Qt::ISODate), span.end.toUTC().toString(Qt::ISODate))};
  for (auto& record : records)
    record = onTimeAxis(std::move(record), page.start);
  if (!span.start.isValid()) noteWhatIsBefore(records, page.start, page.notes);
  page.pieces = consecutivePieces(withoutMeans(std::move(records), MeanOf::Channel));
  if (rows)
    page.rows = std::clamp(*rows, 1, kMostDrumRows);
  else
    page.rows = span.end.isValid() ? rowsUntil(spanSeconds, rowSeconds) : rowsFor(page.pieces, rowSeconds);
  for (auto& piece : page.pieces)
    piece = cutToPage(std::move(piece), double(page.rows) * rowSeconds);
  std::erase(page.pieces, nullptr);
  page.gain = drumGain(page.pieces);
  return page;
}

} // namespace xov
