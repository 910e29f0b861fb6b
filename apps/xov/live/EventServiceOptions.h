#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/seismic/realtime/eventservice/EventServiceClient.h>
#include <functional>
#include <optional>
#include <string>

namespace xov::cli {

/// The options --event-service and --every of commands that show what arrives.
class EventServiceOptions {
public:
  /// They need `server`, the option that names where records come from.
  void addOptions(const Options& options, const Option& server);

  /// Refuses an address that is none, or that has a user and a password in it, as a usage error.
  void check() const;

  /// What to ask for a display of the last `windowSeconds` before `present`; nothing where the user names no service.
  /// User and password come from the environment: XOV_EVENT_SERVICE_USER and XOV_EVENT_SERVICE_PASSWORD.
  std::optional<EventServiceSettings> settings(double windowSeconds, std::function<QDateTime()> present) const;

private:
  std::string address_;
  double everySeconds_ = 60;
};

} // namespace xov::cli
