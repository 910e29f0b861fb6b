#include "apps/xov/inputs/EventInputs.h"

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

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

void EventInputs::addOptions(const Options& options) {
  options
      .add("--events", file_, "Mark the events of this file: QuakeML, NDK, Nordic, mchedr, hypoDD, ZMAP or a table")
      .typeName("FILE");
}

MarkedEvents EventInputs::read() const {
  if (file_.empty()) return {};
  MarkedEvents marked;
  if (const std::optional<EventFile> found = readEventsOrComplain(file_)) {
    marked.events = std::make_shared<const EventOriginArray>(found->origins());
  } else {
    marked.status = ExitCode::Failed;
  }
  return marked;
}

} // namespace xov::cli
