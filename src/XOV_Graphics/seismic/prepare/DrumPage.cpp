#include "XOV_Graphics/seismic/prepare/DrumPage.h"

#include "XOV_Graphics/seismic/prepare/Amplitudes.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordTexts.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kSecondsPerHour = 3600;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kFarthestSeconds = 1e12; // from 1970, some thirty thousand years
constexpr qsizetype kNamedChannels = 5;
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

// The samples of a piece before the end of the page; null when there are none.
std::shared_ptr<SeismogramRecord> cutAt(const std::shared_ptr<SeismogramRecord>& piece, double end) {
  const std::int64_t count = samplesBefore(*piece, end);
  if (count == 0) return nullptr;
  if (count == piece->npts()) return piece;
  const float* const samples = piece->GetSacSeis();
  return copyOfRecord(*piece, {.samples = std::vector<float>(samples, samples + count)});
}

std::int32_t rowsFor(const SeismogramArray& pieces, double rowSeconds) {
  double end = 0;
  for (const auto& piece : pieces)
    end = std::max(end, double(piece->b()) + double(std::max(piece->npts() - 1, 0)) * double(piece->delta()));
  const double rows = std::floor(end / rowSeconds) + 1;
  return std::int32_t(std::clamp(rows, 1.0, double(kMostDrumRows)));
}

// The largest absolute sample of each minute, as far as it has finite ones.
std::vector<float> minutePeaks(const SeismogramArray& pieces) {
  std::vector<float> peaks;
  for (const auto& piece : pieces) {
    const auto count = std::size_t(piece->npts());
    const double perMinute = std::clamp(std::round(kSecondsPerMinute / double(piece->delta())), 1.0, double(count));
    for (std::size_t first = 0; first < count; first += std::size_t(perMinute)) {
      const float* const begin = piece->GetSacSeis() + first;
      const Extrema extrema = finiteExtrema({begin, std::min(std::size_t(perMinute), count - first)});
      peaks.push_back(std::max(std::abs(extrema.min), std::abs(extrema.max)));
    }
  }
  return peaks;
}

double gainFor(const SeismogramArray& pieces) {
  std::vector<float> peaks = minutePeaks(pieces);
  if (peaks.empty()) return 1;
  const float largest = *std::ranges::max_element(peaks);
  const auto middle = peaks.begin() + std::ptrdiff_t(peaks.size() / 2);
  std::ranges::nth_element(peaks, middle);
  const double gain = kUsualReach * double(largest) / double(*middle);
  return std::isfinite(gain) ? std::min(gain, kLargestGain) : kLargestGain;
}

} // namespace

Result<DrumPage> layOutDrum(const SeismogramArray& records, double rowSeconds, std::optional<int> rows) {
  if (!(rowSeconds > 0)) return Error{QStringLiteral("found rows of %1 s, expected more than 0").arg(rowSeconds)};
  SeismogramArray timed;
  std::optional<double> earliest;
  for (const auto& record : records) {
    const std::optional<double> start = startSeconds(*record);
    const bool drawable = record->npts() > 0 && record->delta() > 0;
    if (!drawable || !start || !(std::abs(*start) < kFarthestSeconds)) continue;
    timed.push_back(record);
    earliest = std::min(earliest.value_or(*start), *start);
  }
  if (const QStringList channels = channelsOf(records); channels.size() > 1) return Error{severalChannels(channels)};
  if (!earliest) return Error{QStringLiteral("found no record with samples and times, expected a reference time")};
  const double hour = std::floor(*earliest / kSecondsPerHour) * kSecondsPerHour;
  const QDateTime start = QDateTime::fromMSecsSinceEpoch(qint64(hour * kMillisecondsPerSecond), Qt::UTC);
  for (auto& record : timed)
    record = onTimeAxis(record, start);
  DrumPage page;
  page.pieces = consecutivePieces(withoutMeans(timed, MeanOf::Channel));
  page.rows = rows ? std::clamp(*rows, 1, kMostDrumRows) : rowsFor(page.pieces, rowSeconds);
  for (auto& piece : page.pieces)
    piece = cutAt(piece, double(page.rows) * rowSeconds);
  std::erase(page.pieces, nullptr);
  page.gain = gainFor(page.pieces);
  return page;
}

} // namespace xov
