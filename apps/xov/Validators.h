#pragma once

#include <CLI/CLI.hpp>

namespace xov::cli {

/// Accepts finite numbers from `min` to `max`, both included; the message names the bounds.
CLI::Validator numberFromTo(double min, double max);

/// Accepts whole numbers from `min` to `max`, both included; the message names the bounds.
CLI::Validator wholeNumberFromTo(int min, int max);

/// Accepts finite numbers above 0.
CLI::Validator numberAboveZero();

} // namespace xov::cli
