#include "apps/xov/live/EventSources.h"

#include "apps/xov/inputs/EventInputs.h"
#include "apps/xov/terminal/Messages.h"

namespace xov::cli {

namespace {

// The first records say what time it is at a server that plays a recording.
constexpr int kFirstRecordsMs = 1000;

template <typename Source>
void follow(Source& source, LiveEvents& events, const char* name) {
  source.onEvents(
      [&events, name](const HypocentreArray& found) { events.set(QLatin1String(name), markedByAnyScale(found)); });
  source.onMessage(noteToListener());
}

} // namespace

void EventSources::start(const QString& path, const std::optional<EventServiceSettings>& service) {
  if (!path.isEmpty()) {
    watch_ = std::make_unique<EventWatch>(EventWatchSettings{.path = path});
    follow(*watch_, events_, "files");
    watch_->start();
  }
  if (!service) return;
  service_ = std::make_unique<EventServiceClient>(*service);
  follow(*service_, events_, "service");
  serviceBegins_.setSingleShot(true);
  QObject::connect(&serviceBegins_, &QTimer::timeout, &serviceBegins_, [this] { service_->start(); });
  serviceBegins_.start(kFirstRecordsMs);
}

} // namespace xov::cli
