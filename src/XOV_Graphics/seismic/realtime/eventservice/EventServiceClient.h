#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/realtime/eventservice/EventServiceQuery.h"

#include <QUrl>

#include <functional>
#include <memory>

namespace xov {

/// How an event service is asked.
struct XOV_EXPORT EventServiceSettings {
  QUrl address;                     ///< of parseEventServiceAddress()
  double everySeconds = 60;         ///< from an answer to the next question
  double windowSeconds = 86400;     ///< events are asked for from so long before now() on
  double longestAnswerSeconds = 60; ///< a question has failed when its answer is not there by then
  /// Twice as long as the pause before it is that after each failure, up to this or `everySeconds`; a service that
  /// says when it wants to be asked again (Retry-After) is asked then, or after this at the latest.
  double longestPauseSeconds = 900;
  qint64 mostBytes = qint64(16) << 20; ///< of an answer
  std::size_t mostEvents = 20000;      ///< those with the latest origin times count
  /// Every so manieth question is for all events of the window, so that those that the service has deleted go; those
  /// between are for what is new and changed. 1 always asks for all.
  int wholeEvery = 10;
  /// The moment that the display shows; the clock's where there is none. Where it is far from the clock's, as with a
  /// recording that is played, all events of the window are asked for each time.
  std::function<QDateTime()> now;
};

/// Asks an FDSN event web service for events, again and again for as long as it exists (FDSN Web Service
/// Specifications, version 1.2, fdsnws-event: starttime, endtime, updatedafter). Works in the event loop of the
/// thread that it was made in; nothing blocks.
///
///     EventServiceClient client(settings);
///     client.onEvents([&](const HypocentreArray& events) { live.set("service", events); });
///     client.start();
///
/// Nothing that a service sends is trusted: answers are bounded in bytes and time, events are read as readEvents()
/// does, a redirection may not lead from https to http, nor further than five times. What goes wrong is one line; the
/// events stay as they are, and the next questions follow with growing pauses. A callback may stop() the client, or
/// destroy it.
class XOV_EXPORT EventServiceClient {
public:
  /// Nothing is asked before start().
  explicit EventServiceClient(EventServiceSettings settings);
  ~EventServiceClient();
  EventServiceClient(const EventServiceClient&) = delete;
  EventServiceClient& operator=(const EventServiceClient&) = delete;

  /// Is called with all events of the window, in the order of their times, after each answer that has changed them.
  void onEvents(std::function<void(const HypocentreArray&)> take);
  /// Is called with a line for the user when something changes: a failure, and the answer after one. A failure that
  /// repeats itself is said once. No line holds a user, a password or a parameter of the address.
  void onMessage(std::function<void(const QString&)> take);

  /// Begins to ask.
  void start();
  /// Ends asking; the events stay as they are.
  void stop();

  /// How many answers have been taken.
  int answerCount() const;
  /// How long the pause is that is under way; 0 while an answer is awaited.
  double pauseSeconds() const;

private:
  class Private;
  std::unique_ptr<Private> d_;
};

} // namespace xov
