#pragma once

#include <cstdint>
#include <random>

namespace xov::synthetic {

/// Random numbers that are the same with every compiler: the sequence of std::mt19937_64 is laid down by the C++
/// standard, those of the standard's distributions are not.
class Random {
public:
  explicit Random(std::uint64_t seed);

  /// Evenly spread in (0, 1].
  double uniform();
  /// Gaussian of mean 0 and standard deviation 1, after G. E. P. Box, M. E. Muller, A note on the
  /// generation of random normal deviates, Ann. Math. Stat. 29, 610-611 (1958).
  double normal();

private:
  std::mt19937_64 engine_;
  double spare_ = 0;
  bool hasSpare_ = false;
};

} // namespace xov::synthetic
