#include "XOV_Graphics/graphics/LogTicks.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace xov {

namespace {

constexpr double kLargestLog = 700;   // beyond the logarithms of all numbers and of their products
constexpr double kOnTheEnd = 1e-6;    // of a decade: a tick that rounding has moved across a limit still counts
constexpr double kClosestMinor = 2;   // points
constexpr int kPlainFrom = -3;        // decades whose labels are plain numbers
constexpr int kPlainTo = 4;           //
constexpr std::size_t kFewDigits = 3; // fewer make no axis
constexpr int kAllDigits[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
constexpr int kSomeDigits[] = {1, 2, 5};
constexpr int kDecades[] = {1};
constexpr int kDecadeSteps[] = {1, 2, 5, 10, 20, 50, 100, 200, 500};
constexpr double kShortestRange = 1e-9;  // of the values; labels of shorter ones would be all digits
constexpr double kMostLinearTicks = 100; // more than any axis has room for

int floorOf(double value) { return int(std::floor(value)); }

/// A digit of a decade: digit · 10^power.
struct Mark {
  int digit = 1;
  int power = 0;
  double log10() const { return power + std::log10(double(digit)); }
};

class TickMaker {
public:
  explicit TickMaker(const LogTickRequest& request)
      : request_(request),
        lower_(std::min(request.lower, request.upper)),
        upper_(std::max(request.lower, request.upper)) {}

  LogTicks make() const {
    const double decades = upper_ - lower_;
    const bool drawable = decades > 0 && request_.length > 0 && std::isfinite(request_.length) &&
                          std::abs(lower_) <= kLargestLog && std::abs(upper_) <= kLargestLog;
    if (!drawable) return {};
    if (marks(kAllDigits, 1).size() < kFewDigits) return linearTicks();
    for (const auto& [digits, minors] : {std::pair(std::span<const int>(kAllDigits), std::span<const int>()),
                                         {std::span<const int>(kSomeDigits), std::span<const int>(kAllDigits)}}) {
      const std::vector<LogTick> ticks = labelled(marks(digits, 1));
      if (!touch(ticks)) return {ticks, minorTicks(marks(minors, 1), ticks)};
    }
    return decadeTicks();
  }

private:
  bool holds(double log10) const { return log10 >= lower_ - kOnTheEnd && log10 <= upper_ + kOnTheEnd; }
  double pointsPerDecade() const { return request_.length / (upper_ - lower_); }

  /// The marks of these digits on the axis, in every `step`-th decade.
  std::vector<Mark> marks(std::span<const int> digits, int step) const {
    std::vector<Mark> found;
    const int first = floorOf(lower_ - kOnTheEnd);
    for (int power = first - ((first % step) + step) % step; power <= upper_ + kOnTheEnd; power += step) {
      for (const int digit : digits) {
        const Mark mark{digit, power};
        if (holds(mark.log10())) found.push_back(mark);
      }
    }
    return found;
  }

  static std::vector<LogTick> labelled(const std::vector<Mark>& marks) {
    const bool plain = std::ranges::all_of(
        marks, [](const Mark& mark) { return mark.power >= kPlainFrom && mark.power <= kPlainTo; });
    std::vector<LogTick> ticks;
    for (const Mark& mark : marks) {
      if (plain) {
        const QString text = QString::number(mark.digit * std::pow(10.0, mark.power), 'f', std::max(0, -mark.power));
        ticks.push_back({mark.log10(), text.toStdString(), {}});
      } else {
        const std::string factor = mark.digit == 1 ? "" : std::to_string(mark.digit) + "·";
        ticks.push_back({mark.log10(), factor + "10", exponentOf(mark.power)});
      }
    }
    return ticks;
  }

  bool touch(const std::vector<LogTick>& ticks) const {
    const auto tooClose = [this](const LogTick& a, const LogTick& b) {
      const double between = (b.log10 - a.log10) * pointsPerDecade();
      return between < (request_.extent(a) + request_.extent(b)) / 2 + request_.gap;
    };
    return std::ranges::adjacent_find(ticks, tooClose) != ticks.end();
  }

  /// Those that are no major ones; none where they would run into each other.
  std::vector<double> minorTicks(const std::vector<Mark>& marks, const std::vector<LogTick>& major) const {
    std::vector<double> minor;
    for (const Mark& mark : marks) {
      const double at = mark.log10();
      if (std::ranges::none_of(major, [at](const LogTick& tick) { return std::abs(tick.log10 - at) < kOnTheEnd; }))
        minor.push_back(at);
    }
    return minor;
  }

  LogTicks decadeTicks() const {
    for (const int step : kDecadeSteps) {
      const std::vector<LogTick> ticks = labelled(marks(kDecades, step));
      if (touch(ticks)) continue;
      if (step > 1) {
        const bool hasRoom = pointsPerDecade() >= kClosestMinor;
        return {ticks, hasRoom ? minorTicks(marks(kDecades, 1), ticks) : std::vector<double>()};
      }
      // The digits lie closest at the end of a decade, from 9 to 10, those of 1 2 5 from 1 to 2 and 5 to 10.
      if (pointsPerDecade() * (1 - std::log10(9.0)) >= kClosestMinor)
        return {ticks, minorTicks(marks(kAllDigits, 1), ticks)};
      if (pointsPerDecade() * std::log10(2.0) >= kClosestMinor)
        return {ticks, minorTicks(marks(kSomeDigits, 1), ticks)};
      return {ticks, {}};
    }
    return {};
  }

  // Multiples of a round step, of a range of less than half a decade. Values count in units of the decade that the
  // range begins in, so that none is beyond the numbers.
  LogTicks linearTicks() const {
    const int decade = floorOf(lower_);
    const double from = std::pow(10.0, lower_ - decade);
    const double to = std::pow(10.0, upper_ - decade);
    if (!(to - from > kShortestRange * from)) return {};
    const int finest = floorOf(std::log10((to - from) / kMostLinearTicks));
    for (int power = finest; power <= 0; ++power) {
      for (const int digit : kSomeDigits) {
        const std::vector<LogTick> ticks = multiples({digit, power}, decade, from, to);
        if (!ticks.empty() && !touch(ticks)) return {ticks, {}};
      }
    }
    return {};
  }

  static std::vector<LogTick> multiples(const Mark& step, int decade, double from, double to) {
    const double unit = step.digit * std::pow(10.0, step.power);
    constexpr double kRounding = 1e-9;
    if (!((to - from) / unit <= kMostLinearTicks)) return {};
    const auto first = std::int64_t(std::ceil(from / unit - kRounding));
    const auto last = std::int64_t(std::floor(to / unit + kRounding));
    const bool plain = decade >= kPlainFrom && decade <= kPlainTo;
    std::vector<LogTick> ticks;
    for (std::int64_t i = first; i <= last; ++i) {
      const double value = double(i) * unit;
      const int decimals = plain ? std::max(0, -step.power - decade) : std::max(0, -step.power);
      const double shown = plain ? value * std::pow(10.0, decade) : value;
      std::string text = QString::number(shown, 'f', decimals).toStdString();
      if (!plain) text += "·10";
      ticks.push_back({decade + std::log10(value), std::move(text), plain ? std::string() : exponentOf(decade)});
    }
    return ticks;
  }

  const LogTickRequest& request_;
  double lower_;
  double upper_;
};

} // namespace

std::string exponentOf(int power) {
  std::string text = power < 0 ? "−" : "";
  text += std::to_string(std::abs(power));
  return text;
}

LogTicks logTicks(const LogTickRequest& request) { return TickMaker(request).make(); }

} // namespace xov
