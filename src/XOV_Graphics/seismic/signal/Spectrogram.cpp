#include "XOV_Graphics/seismic/signal/Spectrogram.h"

#include "XOV_Graphics/seismic/signal/FrequencyRows.h"
#include "XOV_Graphics/seismic/signal/SegmentPower.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace xov {

namespace {

constexpr double kWindowsWanted = 60;
constexpr int kShortestWindow = 6; // powers of two
constexpr int kLongestWindow = 14;
constexpr double kMostOverlap = 0.95;
constexpr double kMostInColumn = 1e9; // segments
constexpr std::size_t kLeastSegment = 4;
constexpr double kMostSeconds = 1e15; // beyond, samples could not be told apart
constexpr double kLowestShare = 0.05;
constexpr double kHighestShare = 0.995;
constexpr double kRound = 5;
constexpr double kLeastSpan = 20;

double endOf(const SpectrogramPiece& piece) {
  return piece.startSeconds + double(piece.samples.size()) * piece.intervalSeconds;
}

// Forms the columns of one recording.
class ColumnMaker {
public:
  ColumnMaker(std::vector<SpectrogramPiece> pieces, const SpectrogramSettings& settings)
      : pieces_(std::move(pieces)),
        settings_(settings) {}

  Spectrogram make() {
    if (!settle()) return {};
    rows_.emplace(result_.rows, result_.lowestHz, result_.highestHz, result_.logFrequency);
    sums_.resize(std::size_t(result_.rows) * std::size_t(result_.columns));
    counts_.resize(std::size_t(result_.columns));
    for (const SpectrogramPiece& piece : pieces_)
      add(piece);
    writeDecibels();
    return std::move(result_);
  }

private:
  bool settle() {
    std::erase_if(pieces_, [](const SpectrogramPiece& piece) { return !piece.isUsable(); });
    if (pieces_.empty()) return false;
    result_.rows = std::clamp(settings_.rows, 1, kMostSpectrogramCells);
    result_.columns = std::clamp(settings_.columns, 1, kMostSpectrogramCells);
    result_.startSeconds = pieces_.front().startSeconds;
    double longest = 0;
    for (const SpectrogramPiece& piece : pieces_) {
      result_.startSeconds = std::min(result_.startSeconds, piece.startSeconds);
      result_.endSeconds = std::max(result_.endSeconds, endOf(piece));
      longest = std::max(longest, double(piece.samples.size()) * piece.intervalSeconds);
    }
    const double duration = result_.endSeconds - result_.startSeconds;
    if (!(duration > 0 && duration < kMostSeconds)) return false;
    const double interval = pieces_.front().intervalSeconds;
    const double wanted =
        settings_.windowSeconds > 0 ? settings_.windowSeconds : usualWindowSeconds(duration, interval);
    result_.windowSeconds = std::min(wanted, longest);
    result_.logFrequency = settings_.logFrequency;
    result_.highestHz = settings_.highestHz > 0 ? settings_.highestHz : 0.5 / interval;
    result_.lowestHz = settings_.lowestHz > 0 ? settings_.lowestHz : 0;
    if (result_.logFrequency && result_.lowestHz == 0) result_.lowestHz = 1 / result_.windowSeconds;
    return result_.highestHz > result_.lowestHz && std::isfinite(result_.highestHz);
  }

  double columnSeconds() const { return (result_.endSeconds - result_.startSeconds) / result_.columns; }

  // The segments of a column are spread evenly over it, so that neighbouring columns go on in the same steps.
  void add(const SpectrogramPiece& piece) {
    const double wanted = std::round(result_.windowSeconds / piece.intervalSeconds);
    if (!(wanted <= double(piece.samples.size()))) return;
    const std::size_t segment = std::max(kLeastSegment, std::size_t(wanted));
    prepare(segment, piece.intervalSeconds);
    const double overlap = settings_.overlap >= 0 ? std::min(settings_.overlap, kMostOverlap) : 0;
    const double hop = std::max(double(segment) * (1 - overlap) * piece.intervalSeconds, piece.intervalSeconds);
    const auto each = std::int64_t(std::clamp(std::ceil(columnSeconds() / hop), 1.0, kMostInColumn));
    const double step = columnSeconds() / double(each);
    const double offset = piece.startSeconds - result_.startSeconds;
    const double end = endOf(piece) - result_.startSeconds;
    FiniteSegments finite(piece.samples);
    const auto most = each * result_.columns - 1;
    const auto last = std::min(most, std::int64_t(std::min(end / step, double(most))));
    int column = 0;
    int added = 0;
    for (auto i = std::int64_t(std::max(0.0, std::floor(offset / step))); i <= last; ++i) {
      const double middle = (double(i) + 0.5) * step - offset;
      const double begin = std::round(middle / piece.intervalSeconds - double(segment) / 2);
      if (!(begin >= 0) || !(begin + double(segment) <= double(piece.samples.size()))) continue;
      const HeldSamples held = piece.held(std::size_t(begin), segment);
      if (!finite.isFinite(std::size_t(begin), segment)) continue;
      if (int(i / each) != column) {
        finishColumn(column, added);
        added = 0;
        column = int(i / each);
      }
      power_->add(piece.samples.subspan(std::size_t(begin), segment), density_);
      ++added;
    }
    finishColumn(column, added);
  }

  void finishColumn(int column, int added) {
    if (added == 0) return;
    const auto rows = std::size_t(result_.rows);
    rows_->addTo(std::span(sums_).subspan(std::size_t(column) * rows, rows), density_);
    counts_[std::size_t(column)] += added;
    std::fill(density_.begin(), density_.end(), 0);
  }

  void prepare(std::size_t segment, double intervalSeconds) {
    if (power_ && power_->samples() == segment && interval_ == intervalSeconds) return;
    power_.emplace(windowOf(settings_.window, segment), intervalSeconds);
    interval_ = intervalSeconds;
    density_.assign(power_->bins(), 0);
    rows_->setBins(power_->bins(), power_->stepHz());
  }

  void writeDecibels() {
    const auto rows = std::size_t(result_.rows);
    const auto columns = std::size_t(result_.columns);
    result_.decibels.assign(rows * columns, std::numeric_limits<float>::quiet_NaN());
    for (std::size_t column = 0; column < columns; ++column) {
      if (counts_[column] == 0) continue;
      for (std::size_t row = 0; row < rows; ++row) {
        const double power = sums_[column * rows + row] / counts_[column];
        result_.decibels[row * columns + column] =
            power > 0 ? float(std::max(10 * std::log10(power), double(kNoPowerDb))) : kNoPowerDb;
      }
    }
  }

  std::vector<SpectrogramPiece> pieces_;
  const SpectrogramSettings& settings_;
  Spectrogram result_;
  std::optional<FrequencyRows> rows_;
  std::optional<SegmentPower> power_;
  double interval_ = 0;
  std::vector<double> density_;
  std::vector<double> sums_; ///< column after column
  std::vector<int> counts_;
};

} // namespace

bool SpectrogramPiece::isUsable() const {
  return !samples.empty() && intervalSeconds > 0 && std::abs(startSeconds) < kMostSeconds &&
         double(samples.size()) * intervalSeconds < kMostSeconds;
}

double usualWindowSeconds(double durationSeconds, double intervalSeconds) {
  if (!(durationSeconds > 0 && intervalSeconds > 0)) return 0;
  const double samples = durationSeconds / intervalSeconds / kWindowsWanted;
  const double power = std::clamp(std::round(std::log2(samples)), double(kShortestWindow), double(kLongestWindow));
  return std::exp2(power) * intervalSeconds;
}

Spectrogram spectrogram(std::span<const SpectrogramPiece> pieces, const SpectrogramSettings& settings) {
  return ColumnMaker({pieces.begin(), pieces.end()}, settings).make();
}

DecibelRange robustRange(std::span<const float> decibels) {
  std::vector<float> values;
  values.reserve(decibels.size());
  std::ranges::copy_if(decibels, std::back_inserter(values),
                       [](float value) { return std::isfinite(value) && value > kNoPowerDb; });
  if (values.empty()) return {-kLeastSpan, 0};
  const auto percentile = [&values](double share) {
    const auto place = values.begin() + std::ptrdiff_t(share * double(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return double(*place);
  };
  const double highest = std::ceil(percentile(kHighestShare) / kRound) * kRound;
  const double lowest = std::floor(percentile(kLowestShare) / kRound) * kRound;
  return {std::min(lowest, highest - kLeastSpan), highest};
}

} // namespace xov
