#pragma once

#include "apps/xov/options/Options.h"

namespace xov::cli {

/// The option --speed of commands that play recordings: recorded seconds a second, 1 unless the user says otherwise.
void addSpeedOption(const Options& options, double& speed);

} // namespace xov::cli
