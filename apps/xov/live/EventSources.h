#pragma once

#include <QTimer>

#include <XOV_Graphics/seismic/realtime/EventWatch.h>
#include <XOV_Graphics/seismic/realtime/LiveEvents.h>
#include <XOV_Graphics/seismic/realtime/eventservice/EventServiceClient.h>
#include <memory>
#include <optional>

namespace xov::cli {

/// The events of a live display, as they come: from a file or folder that is watched, and from a service that is
/// asked again and again. What the user should know is said to whoever hears it in the thread that this is started
/// in. Works in the event loop; to be made when there is one.
class EventSources {
public:
  /// One array, which changes as events do.
  const std::shared_ptr<const EventOriginArray>& events() const { return events_.events(); }

  /// Begins; an empty path and no service have no events.
  void start(const QString& path, const std::optional<EventServiceSettings>& service);

private:
  LiveEvents events_;
  std::unique_ptr<EventWatch> watch_;
  std::unique_ptr<EventServiceClient> service_;
  QTimer serviceBegins_;
};

} // namespace xov::cli
