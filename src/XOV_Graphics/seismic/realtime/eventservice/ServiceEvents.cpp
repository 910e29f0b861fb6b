#include "XOV_Graphics/seismic/realtime/eventservice/ServiceEvents.h"

#include <algorithm>
#include <map>

namespace xov {

namespace {

QDateTime originTimeOf(const std::shared_ptr<Hypocentre>& event) { return event->values().originTime; }

// Whether a display would show both alike.
bool isSameEvent(const std::shared_ptr<Hypocentre>& left, const std::shared_ptr<Hypocentre>& right) {
  const HypocentreValues& a = left->values();
  const HypocentreValues& b = right->values();
  return a.id == b.id && a.originTime == b.originTime && a.latitudeDeg == b.latitudeDeg &&
         a.longitudeDeg == b.longitudeDeg && a.depthKm == b.depthKm && a.mb == b.mb && a.Ms == b.Ms && a.Mw == b.Mw &&
         a.preferredMagnitude == b.preferredMagnitude && a.name == b.name;
}

} // namespace

void ServiceEvents::replace(HypocentreArray all) {
  events_ = std::move(all);
  std::ranges::stable_sort(events_, std::less<>(), originTimeOf);
}

bool ServiceEvents::update(const HypocentreArray& changed) {
  std::map<QString, std::shared_ptr<Hypocentre>> byId;
  for (const HypocentreArray* const each : {&std::as_const(events_), &changed}) {
    for (const auto& event : *each) {
      if (event->values().id.isEmpty()) return false;
      byId[event->values().id] = event;
    }
  }
  HypocentreArray all;
  for (const auto& [id, event] : byId)
    all.push_back(event);
  replace(std::move(all));
  return true;
}

void ServiceEvents::keep(const QDateTime& from, std::size_t most) {
  if (from.isValid()) std::erase_if(events_, [&](const auto& event) { return originTimeOf(event) < from; });
  if (events_.size() > most) events_.erase(events_.begin(), events_.end() - std::ptrdiff_t(most));
}

bool ServiceEvents::takeChanged() {
  const bool hasChanged = !std::ranges::equal(events_, told_, isSameEvent);
  told_ = events_;
  return hasChanged;
}

} // namespace xov
