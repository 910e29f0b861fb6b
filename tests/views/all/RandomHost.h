#pragma once

#include "XOV_Graphics/views/base/XOVView.h"
#include "tests/support/FakeRecord.h"

#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <vector>

namespace xov::testing {

/// Makes up what a careless host hands to a view: absurd numbers, empty and broken data. What it decides follows from
/// a seed, or from the bytes of a fuzzer, which then choose one by one; behind the last of them all is false or 0.
class RandomHost {
public:
  explicit RandomHost(unsigned seed) : random_(seed) {}
  explicit RandomHost(std::span<const std::uint8_t> bytes) : bytes_(bytes), isOfBytes_(true) {}

  std::mt19937& engine() { return random_; }
  bool chance(double probability);
  int count(int most);
  double between(double lower, double upper);
  /// A plain number most of the time, else zero, a huge or a tiny one, NaN or an infinity.
  float number();
  std::vector<float> samples(int most);
  /// Within minutes of one moment most of the time, else at the ends of the calendar.
  QDateTime time();
  std::shared_ptr<SeismogramRecord> record();
  std::shared_ptr<SeismogramArray> records();
  /// From 1 × 1 to 5000 × 5000 points; most of them of a usual size.
  QRectF frame();
  /// Titles, labels, limits and flags of the base class.
  void dress(XOVView& view);

private:
  std::uint32_t take(int bytes);

  std::mt19937 random_;
  std::span<const std::uint8_t> bytes_;
  bool isOfBytes_ = false;
};

} // namespace xov::testing
