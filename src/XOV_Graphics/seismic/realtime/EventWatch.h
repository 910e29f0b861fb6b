#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/Hypocentre.h"

#include <QString>

#include <functional>
#include <memory>

namespace xov {

/// What an EventWatch does.
struct XOV_EXPORT EventWatchSettings {
  QString path;                   ///< a file of events, or a folder of such files; may appear later
  double pollSeconds = 5;         ///< how often is looked for what the file system does not tell of
  double settleSeconds = 1;       ///< a file that cannot be read is damaged when it has not changed for so long
  std::size_t mostFiles = 10000;  ///< of a folder; those that changed last count
  std::size_t mostEvents = 20000; ///< those with the latest origin times count
};

/// Follows the events of a file or folder for as long as it exists: reads what readEvents() takes, and reads again
/// what others write, change and delete. A file of a folder is known by its contents, whatever its name; hidden ones
/// and those that end in "~", ".tmp" or ".part" are left out, and so are folders within it.
///
///     EventWatch watch({.path = "/var/spool/events"});
///     watch.onEvents([&](const HypocentreArray& events) { ... });
///     watch.start();
///
/// Works in the event loop of the thread that it was made in, a few files at a time, so that thousands do not stop a
/// display. Files that are half written count as they were before until they are whole, damaged ones until they are
/// mended; files of more than 64 MiB are refused. Of several events with one identifier the one in the file that
/// changed last counts. A callback may destroy the watch.
class XOV_EXPORT EventWatch {
public:
  /// Nothing is read before start().
  explicit EventWatch(EventWatchSettings settings);
  ~EventWatch();
  EventWatch(const EventWatch&) = delete;
  EventWatch& operator=(const EventWatch&) = delete;

  /// Is called with all events, in the order of their times, whenever some have come, changed or gone.
  void onEvents(std::function<void(const HypocentreArray&)> take);
  /// Is called with a line for the user: a file that is damaged or not there, rows that are left out. What stays as
  /// it is is said once.
  void onMessage(std::function<void(const QString&)> take);

  /// Begins to watch, and reads what is there.
  void start();
  /// Ends watching; the events stay as they are.
  void stop();

  /// Whether everything that was there has been read.
  bool isUpToDate() const;

private:
  class Private;
  std::unique_ptr<Private> d_;
};

} // namespace xov
