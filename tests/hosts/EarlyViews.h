#pragma once

namespace xov::testing {

/// The environment variable that has this program do one wrong thing before anything else, and what it may be.
inline constexpr char kEarlyVariable[] = "XOV_TEST_EARLY";
inline constexpr char kViewWithoutApplication[] = "view";
inline constexpr char kDrawsWithoutApplication[] = "draw";

} // namespace xov::testing
