#pragma once

#include "XOV_Graphics/seismic/Hypocentre.h"

namespace xov {

/// What is known from the answers of a service.
class ServiceEvents {
public:
  /// All there are: what was known before and is not among them has been deleted.
  void replace(HypocentreArray all);
  /// New and changed ones: those with a known identifier take the place of what was known. False where one has no
  /// identifier, so that nobody can tell; nothing is taken then.
  bool update(const HypocentreArray& changed);
  /// Forgets those before `from`, where it is valid, and the earliest of more than `most`.
  void keep(const QDateTime& from, std::size_t most);

  /// In the order of their times.
  const HypocentreArray& events() const { return events_; }
  /// Whether events have come, changed or gone since the last call.
  bool takeChanged();

private:
  HypocentreArray events_;
  HypocentreArray told_; // at the last takeChanged()
};

} // namespace xov
