#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/Hypocentre.h"

#include <map>
#include <memory>

namespace xov {

/// The events of several sources, such as an EventWatch and an EventServiceClient, in one array that views keep:
///
///     view.setEventOrigins(events.events());                                            // once
///     watch.onEvents([&](const HypocentreArray& found) { events.set("files", found); }); // whenever some change
///
/// The next redraw marks them.
class XOV_EXPORT LiveEvents {
public:
  /// What a source has by now takes the place of what it had.
  void set(const QString& source, HypocentreArray events);

  /// The events of all sources in the order of their times, those of one time in that of the sources' names: one
  /// array, which changes with them. Null events and those without a time are left out, and of several with one
  /// identifier all but the first source's.
  const std::shared_ptr<const EventOriginArray>& events() const { return shown_; }

private:
  std::map<QString, HypocentreArray> sources_;
  std::shared_ptr<EventOriginArray> events_ = std::make_shared<EventOriginArray>();
  std::shared_ptr<const EventOriginArray> shown_ = events_; // the same, as views take it
};

} // namespace xov
