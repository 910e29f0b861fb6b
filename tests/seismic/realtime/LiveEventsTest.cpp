#include "XOV_Graphics/seismic/realtime/LiveEvents.h"

#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"

#include <gtest/gtest.h>

using namespace xov;
using test::eventText;
using test::eventWords;

namespace {

HypocentreArray eventsOf(const char* words) { return parseEvents(eventText(words), QStringLiteral("x"))->events; }

} // namespace

TEST(LiveEvents, areOneArrayThatChangesWithItsSources) {
  LiveEvents events;
  const std::shared_ptr<const EventOriginArray> shown = events.events();
  EXPECT_TRUE(shown->empty());
  events.set("b", eventsOf("b:20:5.0"));
  events.set("a", eventsOf("c:30:6.0 a:10:4.0"));
  EXPECT_EQ(eventWords(*shown), "a:10:4.0 b:20:5.0 c:30:6.0");
  events.set("a", eventsOf("c:31:6.5"));
  EXPECT_EQ(eventWords(*shown), "b:20:5.0 c:31:6.5");
  events.set("b", {});
  EXPECT_EQ(eventWords(*shown), "c:31:6.5");
}

TEST(LiveEvents, holdAnEventOfSeveralSourcesAsTheFirstHasIt) {
  LiveEvents events;
  events.set("b", eventsOf("e:20:5.0 f:25:5.0"));
  events.set("a", eventsOf("e:21:5.5"));
  EXPECT_EQ(eventWords(*events.events()), "e:21:5.5 f:25:5.0");
  events.set("a", {});
  EXPECT_EQ(eventWords(*events.events()), "e:20:5.0 f:25:5.0");
}

TEST(LiveEvents, leaveOutNullEventsAndThoseWithoutATime) {
  LiveEvents events;
  HypocentreArray odd = eventsOf("a:10:4.0");
  odd.push_back(nullptr);
  odd.push_back(std::make_shared<Hypocentre>());
  events.set("a", odd);
  EXPECT_EQ(eventWords(*events.events()), "a:10:4.0");
}
