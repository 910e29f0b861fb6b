#pragma once

#include <CLI/CLI.hpp>

#include <QDateTime>

namespace xov::cli {

/// Accepts finite numbers from `min` to `max`, both included; the message names the bounds.
CLI::Validator numberFromTo(double min, double max);

/// Accepts whole numbers from `min` to `max`, both included; the message names the bounds.
CLI::Validator wholeNumberFromTo(int min, int max);

/// Accepts finite numbers above 0.
CLI::Validator numberAboveZero();

/// Accepts patterns that select channels.
CLI::Validator channelPattern();

/// A time such as "2011-03-11T05:46:23", UTC unless it names a zone; invalid when the text is none.
QDateTime parsedUtcTime(const std::string& text);

/// Accepts what parsedUtcTime() takes.
CLI::Validator utcTime();

} // namespace xov::cli
