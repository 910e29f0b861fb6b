#include "apps/xov/inputs/Validators.h"

#include <QString>

#include <XOV_Graphics/base/TimeText.h>
#include <XOV_Graphics/seismic/ChannelPatterns.h>
#include <algorithm>
#include <cmath>
#include <optional>

namespace xov::cli {

namespace {

std::optional<double> finiteNumber(const std::string& text) {
  bool ok = false;
  const double value = QString::fromStdString(text).toDouble(&ok);
  if (!ok || !std::isfinite(value)) return {};
  return value;
}

template <typename Accepts>
Check numberThat(const QString& expected, Accepts accepts) {
  const auto check = [expected, accepts](const std::string& text) -> std::string {
    const std::optional<double> value = finiteNumber(text);
    if (value && accepts(*value)) return {};
    return QStringLiteral("found '%1', expected %2").arg(QString::fromStdString(text), expected).toStdString();
  };
  return Check{check, {}};
}

} // namespace

Check numberFromTo(double min, double max) {
  return numberThat(QStringLiteral("a number from %1 to %2").arg(min).arg(max),
                    [min, max](double value) { return value >= min && value <= max; });
}

Check wholeNumberFromTo(int min, int max) {
  const QString expected = QStringLiteral("a whole number from %1 to %2").arg(min).arg(max);
  const auto check = [=](const std::string& text) -> std::string {
    bool ok = false;
    const int value = QString::fromStdString(text).toInt(&ok);
    if (ok && value >= min && value <= max) return {};
    return QStringLiteral("found '%1', expected %2").arg(QString::fromStdString(text), expected).toStdString();
  };
  return Check{check, {}};
}

Check numberAboveZero() {
  return numberThat(QStringLiteral("a number above 0"), [](double value) { return value > 0; });
}

void expectRising(const std::string& option, const std::vector<double>& ends) {
  if (!ends.empty() && !(ends[0] < ends[1])) throw UsageError(option, "expected the second number above the first");
}

void expectMinBelowMax(std::optional<double> min, std::optional<double> max) {
  if (min && max && !(float(*min) < float(*max))) throw UsageError("--max", "expected a number above that of --min");
}

Check oneOf(const std::vector<std::string>& words) {
  const auto check = [words](const std::string& text) -> std::string {
    if (std::ranges::find(words, text) != words.end()) return {};
    std::string expected;
    for (const std::string& word : words)
      expected += expected.empty() ? word : (&word == &words.back() ? " or " : ", ") + word;
    return "found '" + text + "', expected " + expected;
  };
  return Check{check, words};
}

Check channelPattern() {
  const auto check = [](const std::string& text) -> std::string {
    return ChannelPatterns::parse({QString::fromStdString(text)}).error().toStdString();
  };
  return Check{check, {}};
}

QDateTime parsedUtcTime(const std::string& text) {
  return parseUtcTime(QString::fromStdString(text)).value_or(QDateTime());
}

Check utcTime() {
  const auto check = [](const std::string& text) -> std::string {
    if (parsedUtcTime(text).isValid()) return {};
    return "found '" + text + "', expected a time as 2011-03-11T05:46:23";
  };
  return Check{check, {}};
}

} // namespace xov::cli
