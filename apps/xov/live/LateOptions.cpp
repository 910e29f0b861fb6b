#include "apps/xov/live/LateOptions.h"

#include "apps/xov/inputs/Validators.h"

namespace xov::cli {

namespace {

constexpr double kLongestLateness = 366 * 86400.0;

} // namespace

void LateOptions::addOptions(const Options& options) {
  options.addFlag("--latency", lateness_.isShown,
                  "Write beside each channel how far its last sample lies in the past");
  options.add("--late", lateness_.seconds, "Draw channels grey whose last sample lies further in the past than this")
      .typeName("S")
      .check(numberAboveZero())
      .check(numberFromTo(0, kLongestLateness));
}

} // namespace xov::cli
