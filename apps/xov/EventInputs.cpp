#include "apps/xov/EventInputs.h"

#include "seismic/io/EventReaders.h"

#include <CLI/CLI.hpp>

namespace xov::cli {

void EventInputs::addOptions(CLI::App& options) {
  options.add_option("--events", file_, "Mark the events of this file: QuakeML or a table, such as CSV")
      ->type_name("FILE");
}

MarkedEvents EventInputs::read() const {
  if (file_.empty()) return {};
  const Result<EventFile> found = readEvents(QString::fromStdString(file_));
  MarkedEvents marked;
  if (!found) {
    complain(found.error());
    marked.status = ExitCode::Failed;
    return marked;
  }
  for (const QString& note : found->notes)
    complain(note);
  marked.events = std::make_shared<const EventOriginArray>(found->origins());
  return marked;
}

} // namespace xov::cli
