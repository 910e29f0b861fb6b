#pragma once

#include "XOV_Graphics/views/base/PlotPart.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace xov {

/// The parts that a view has shown one after the other, nothing standing for the whole.
class PartHistory {
public:
  using Shown = std::optional<PlotPart>;

  /// From `before` to what is shown next, which drops what was left by going back. A step that continues the one
  /// before it keeps where that began. The oldest of more than kMostSteps are forgotten.
  void add(const Shown& before, bool continues);
  bool canGoBack() const { return !past_.empty(); }
  bool canGoForward() const { return !future_.empty(); }
  /// What was shown before, and `now` is to be come back to; `now` itself where there is nothing.
  Shown back(const Shown& now) { return turn(past_, future_, now); }
  Shown forward(const Shown& now) { return turn(future_, past_, now); }
  void clear();

  static constexpr std::size_t kMostSteps = 1000;

private:
  static Shown turn(std::vector<Shown>& from, std::vector<Shown>& to, const Shown& now);

  std::vector<Shown> past_;
  std::vector<Shown> future_;
};

} // namespace xov
