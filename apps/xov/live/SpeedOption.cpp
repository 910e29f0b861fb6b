#include "apps/xov/live/SpeedOption.h"

#include "apps/xov/inputs/Validators.h"

namespace xov::cli {

namespace {

constexpr double kLargestSpeed = 1e6;

} // namespace

void addSpeedOption(const Options& options, double& speed) {
  options.add("--speed", speed, "Recorded seconds a second (default 1)")
      .typeName("N")
      .check(numberAboveZero())
      .check(numberFromTo(0, kLargestSpeed));
}

} // namespace xov::cli
