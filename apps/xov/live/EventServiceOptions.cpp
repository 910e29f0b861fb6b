#include "apps/xov/live/EventServiceOptions.h"

#include "apps/xov/inputs/Validators.h"

namespace xov::cli {

namespace {

// Services of public institutes ask for no more than a question every few seconds.
constexpr double kShortestEvery = 5;
constexpr double kLongestEvery = 86400;
// An event that leaves the display at its edge is still known.
constexpr double kMarginSeconds = 60;

} // namespace

void EventServiceOptions::addOptions(const Options& options, const Option& server) {
  const Option service =
      options.add("--event-service", address_, "Mark events that an FDSN event web service has, too, as they come")
          .typeName("URL")
          .needs(server);
  options.add("--every", everySeconds_, "Seconds between questions to the event service (default 60)")
      .typeName("S")
      .check(numberFromTo(kShortestEvery, kLongestEvery))
      .needs(service);
}

void EventServiceOptions::check() const {
  if (address_.empty()) return;
  const Result<QUrl> address = parseEventServiceAddress(QString::fromStdString(address_));
  if (!address) throw UsageError("--event-service", address.error().toStdString());
  if (!address->userInfo().isEmpty()) {
    throw UsageError("--event-service", "found a user; expected it in the environment: XOV_EVENT_SERVICE_USER, "
                                        "XOV_EVENT_SERVICE_PASSWORD");
  }
}

std::optional<EventServiceSettings> EventServiceOptions::settings(double windowSeconds,
                                                                  std::function<QDateTime()> present) const {
  if (address_.empty()) return {};
  EventServiceSettings settings;
  settings.address = parseEventServiceAddress(QString::fromStdString(address_)).value();
  settings.address.setUserName(qEnvironmentVariable("XOV_EVENT_SERVICE_USER"), QUrl::DecodedMode);
  settings.address.setPassword(qEnvironmentVariable("XOV_EVENT_SERVICE_PASSWORD"), QUrl::DecodedMode);
  settings.everySeconds = everySeconds_;
  settings.windowSeconds = windowSeconds + kMarginSeconds;
  settings.now = std::move(present);
  return settings;
}

} // namespace xov::cli
