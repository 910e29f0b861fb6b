#include "XOV_Graphics/seismic/realtime/LiveEvents.h"

#include <algorithm>

namespace xov {

void LiveEvents::set(const QString& source, HypocentreArray events) {
  sources_[source] = std::move(events);
  std::map<QString, const HypocentreArray*> owners; // of identifiers
  HypocentreArray all;
  for (const auto& [name, own] : sources_) {
    for (const auto& event : own) {
      if (!event || !event->oDate().isValid()) continue;
      const QString& id = event->values().id;
      if (id.isEmpty() || owners.try_emplace(id, &own).first->second == &own) all.push_back(event);
    }
  }
  std::ranges::stable_sort(all, std::less<>(), [](const auto& event) { return event->oDate(); });
  events_->assign(all.begin(), all.end());
}

} // namespace xov
