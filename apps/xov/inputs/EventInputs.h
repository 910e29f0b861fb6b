#pragma once

#include "apps/xov/options/Options.h"
#include "apps/xov/terminal/Messages.h"

#include <XOV_Graphics/seismic/EventOrigin.h>
#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <memory>
#include <optional>
#include <string>

namespace xov::cli {

/// The events to mark in a plot; none when the user names no file.
struct MarkedEvents {
  std::shared_ptr<const EventOriginArray> events = std::make_shared<const EventOriginArray>();
  ExitCode status = ExitCode::Ok; ///< Failed when the file could not be read; that has been said
};

/// Reads a file of events and says on standard error what is noted of it, or why it cannot be read.
std::optional<EventFile> readEventsOrComplain(const std::string& path);

/// The events as drums mark them by mb, Ms or Mw: one that has none of these, but a magnitude whose type its
/// catalogue does not name, has that as its Mw.
HypocentreArray markedByAnyScale(const HypocentreArray& events);

/// The option --events of commands that mark origin times.
class EventInputs {
public:
  void addOptions(const Options& options);

  /// Reads the file and says on standard error what is noted of it.
  MarkedEvents read() const;

  /// The file, or the folder that a live display watches; empty for none.
  QString path() const;

private:
  std::string file_;
};

} // namespace xov::cli
