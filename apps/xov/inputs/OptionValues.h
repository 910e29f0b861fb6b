#pragma once

namespace CLI {
class Option;
}

namespace xov::cli {

/// Makes an option take exactly `count` values, as words of their own or between commas ("0 100" or "0,100"), and
/// nothing of what follows: file names may stand right behind it. A value may look like a negative number, but not
/// like a long option, which the user has forgotten a value before.
CLI::Option* takesExactly(CLI::Option* option, int count);

} // namespace xov::cli
