#pragma once

#include "XOV_Graphics/views/base/XOVView.h"
#include "tests/support/FakeRecord.h"

#include <memory>
#include <random>
#include <vector>

namespace xov::testing {

/// Makes up what a careless host hands to a view: absurd numbers, empty and broken data.
class RandomHost {
public:
  explicit RandomHost(unsigned seed) : random_(seed) {}

  std::mt19937& engine() { return random_; }
  bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }
  int count(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
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
  std::mt19937 random_;
};

} // namespace xov::testing
