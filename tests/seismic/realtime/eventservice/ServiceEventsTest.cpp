#include "XOV_Graphics/seismic/realtime/eventservice/ServiceEvents.h"

#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"

#include <gtest/gtest.h>

using namespace xov;
using test::eventWords;

namespace {

HypocentreArray answered(const char* words) {
  return parseEvents(test::eventText(words), QStringLiteral("x"))->events;
}

} // namespace

TEST(ServiceEvents, areReplacedByAllAndUpdatedByChanges) {
  ServiceEvents events;
  events.replace(answered("b:20:5.0 a:10:4.0"));
  EXPECT_EQ(eventWords(events.events()), "a:10:4.0 b:20:5.0");
  EXPECT_TRUE(events.update(answered("c:05:3.0 b:21:5.1")));
  EXPECT_EQ(eventWords(events.events()), "c:05:3.0 a:10:4.0 b:21:5.1");
  events.replace(answered("b:21:5.1"));
  EXPECT_EQ(eventWords(events.events()), "b:21:5.1");
}

TEST(ServiceEvents, cannotBeUpdatedWithoutIdentifiers) {
  ServiceEvents events;
  events.replace(answered("a:10:4.0"));
  EXPECT_FALSE(events.update(answered("b:20:5.0 :30:6.0")));
  EXPECT_EQ(eventWords(events.events()), "a:10:4.0");
  events.replace(answered(":30:6.0"));
  EXPECT_FALSE(events.update(answered("b:20:5.0")));
  EXPECT_EQ(eventWords(events.events()), ":30:6.0");
}

TEST(ServiceEvents, changeOnlyWhereADisplayWouldShowIt) {
  ServiceEvents events;
  EXPECT_FALSE(events.takeChanged());
  events.replace(answered("a:10:4.0"));
  EXPECT_TRUE(events.takeChanged());
  events.replace(answered("a:10:4.0"));
  EXPECT_FALSE(events.takeChanged());
  for (const char* words : {"a:10:4.1", "a:11:4.1", "b:11:4.1", ""}) {
    events.replace(answered(words));
    EXPECT_TRUE(events.takeChanged()) << words;
  }
}

TEST(ServiceEvents, keepThoseOfTheWindowAndTheLatest) {
  ServiceEvents events;
  events.replace(answered("a:10:4.0 b:20:4.0 c:30:4.0 d:40:4.0"));
  events.keep({}, 10);
  EXPECT_EQ(events.events().size(), 4u);
  events.keep(QDateTime(QDate(2020, 9, 13), QTime(12, 20), Qt::UTC), 10);
  EXPECT_EQ(eventWords(events.events()), "b:20:4.0 c:30:4.0 d:40:4.0");
  events.keep({}, 2);
  EXPECT_EQ(eventWords(events.events()), "c:30:4.0 d:40:4.0");
}
