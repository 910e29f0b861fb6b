#pragma once

#include "apps/xov/options/Options.h"

#include <QDateTime>

#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// Accepts finite numbers from `min` to `max`, both included; the message names the bounds.
Check numberFromTo(double min, double max);

/// Accepts whole numbers from `min` to `max`, both included; the message names the bounds.
Check wholeNumberFromTo(int min, int max);

/// Accepts finite numbers above 0.
Check numberAboveZero();

/// Throws UsageError of an option with two numbers, if it was given, unless the second is above the first.
void expectRising(const std::string& option, const std::vector<double>& ends);

/// The same of --min and --max where both were given, in single precision, as views see them.
void expectMinBelowMax(std::optional<double> min, std::optional<double> max);

/// Accepts one of a few words; the message names them all.
Check oneOf(const std::vector<std::string>& words);

/// Accepts patterns that select channels.
Check channelPattern();

/// A time such as "2011-03-11T05:46:23", UTC unless it names a zone; invalid when the text is none.
QDateTime parsedUtcTime(const std::string& text);

/// Accepts what parsedUtcTime() takes.
Check utcTime();

} // namespace xov::cli
