#include "apps/xov/inputs/EventInputs.h"

#include <XOV_Graphics/base/FileName.h>
#include <algorithm>

namespace xov::cli {

namespace {

// Some catalogues write M for whatever it is.
bool isUntyped(const EventMagnitude& magnitude) {
  return magnitude.type.isEmpty() || magnitude.type == QLatin1String("M");
}

} // namespace

std::optional<EventFile> readEventsOrComplain(const std::string& path) {
  Result<EventFile> found = readEvents(fileNameFromBytes(path));
  if (!found) {
    complain(found.error());
    return {};
  }
  for (const QString& text : found->notes)
    note(text);
  return std::move(found).value();
}

HypocentreArray markedByAnyScale(const HypocentreArray& events) {
  HypocentreArray marked = events;
  for (auto& event : marked) {
    HypocentreValues values = event->values();
    if (isDefined(values.mb) || isDefined(values.Ms) || isDefined(values.Mw)) continue;
    const auto untyped = std::ranges::find_if(values.magnitudes, isUntyped);
    if (untyped == values.magnitudes.end()) continue;
    values.Mw = untyped->value;
    event = std::make_shared<Hypocentre>(std::move(values));
  }
  return marked;
}

void EventInputs::addOptions(const Options& options) {
  options
      .add("--events", file_, "Mark the events of this file: QuakeML, NDK, Nordic, mchedr, hypoDD, ZMAP or a table")
      .typeName("FILE");
}

QString EventInputs::path() const { return fileNameFromBytes(file_); }

MarkedEvents EventInputs::read() const {
  if (file_.empty()) return {};
  MarkedEvents marked;
  if (const std::optional<EventFile> found = readEventsOrComplain(file_)) {
    const HypocentreArray events = markedByAnyScale(found->events);
    marked.events = std::make_shared<const EventOriginArray>(events.begin(), events.end());
  } else {
    marked.status = ExitCode::Failed;
  }
  return marked;
}

} // namespace xov::cli
