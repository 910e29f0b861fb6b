#pragma once

#include <CLI/CLI.hpp>

#include <QDateTime>

#include <string>
#include <vector>

namespace xov::cli {

/// Accepts finite numbers from `min` to `max`, both included; the message names the bounds.
CLI::Validator numberFromTo(double min, double max);

/// Accepts whole numbers from `min` to `max`, both included; the message names the bounds.
CLI::Validator wholeNumberFromTo(int min, int max);

/// Accepts finite numbers above 0.
CLI::Validator numberAboveZero();

/// Accepts one of a few words; the message names them all.
CLI::Validator oneOf(const std::vector<std::string>& words);

/// The words of the oneOf() that an option has; none where it has no such check.
std::vector<std::string> choicesOf(CLI::Option& option);

/// Accepts patterns that select channels.
CLI::Validator channelPattern();

/// A time such as "2011-03-11T05:46:23", UTC unless it names a zone; invalid when the text is none.
QDateTime parsedUtcTime(const std::string& text);

/// Accepts what parsedUtcTime() takes.
CLI::Validator utcTime();

} // namespace xov::cli
