#include "XOV_Graphics/views/navigation/PartHistory.h"

namespace xov {

void PartHistory::add(const Shown& before, bool continues) {
  future_.clear();
  if (continues && !past_.empty()) return;
  past_.push_back(before);
  if (past_.size() > kMostSteps) past_.erase(past_.begin());
}

PartHistory::Shown PartHistory::turn(std::vector<Shown>& from, std::vector<Shown>& to, const Shown& now) {
  if (from.empty()) return now;
  const Shown next = from.back();
  from.pop_back();
  to.push_back(now);
  return next;
}

void PartHistory::clear() {
  past_.clear();
  future_.clear();
}

} // namespace xov
