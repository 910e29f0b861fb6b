#include "apps/xov/live/EventSources.h"

#include "XOV_Graphics/seismic/MagnitudeScale.h"
#include "apps/xov/inputs/EventInputs.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"
#include "tests/seismic/realtime/eventservice/WebServer.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <QNetworkProxy>

namespace xov::cli {
namespace {

using test::eventText;
using test::eventWords;
using test::waitUntil;

std::shared_ptr<Hypocentre> eventOf(std::vector<EventMagnitude> magnitudes) {
  HypocentreValues values;
  values.originTime = QDateTime(QDate(2020, 9, 13), QTime(12, 0), Qt::UTC);
  setMagnitudes(values, std::move(magnitudes));
  return std::make_shared<Hypocentre>(std::move(values));
}

} // namespace

TEST(MarkedByAnyScale, countsAMagnitudeWithoutATypeWhereThereIsNoOther) {
  for (const char* type : {"", "M"}) {
    const auto marked = markedByAnyScale({eventOf({{QLatin1String(type), 5.5F}})}).front();
    EXPECT_EQ(marked->Mw(), 5.5F);
    EXPECT_EQ(marked->magnitude(), 5.5F);
    EXPECT_EQ(marked->values().magnitudes.front().type, QLatin1String(type)) << "as the catalogue has it";
  }
}

TEST(MarkedByAnyScale, leavesOtherEventsAsTheyAre) {
  const HypocentreArray events = {eventOf({{"mb", 4.5F}, {"", 5.5F}}), eventOf({{"ML", 4.5F}}), eventOf({})};
  EXPECT_EQ(markedByAnyScale(events), events);
}

TEST(EventSources, holdTheEventsOfFilesAndOfAService) {
  QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
  const test::TemporaryFiles files;
  files.write("events", eventText("a:10:4.0"));
  test::WebServer server;
  server.then(test::webAnswer(200, eventText("b:20:5.0")));
  EventServiceSettings service;
  service.address = server.address();
  service.now = [] { return QDateTime(QDate(2020, 9, 13), QTime(12, 30), Qt::UTC); };
  EventSources sources;
  const std::shared_ptr<const EventOriginArray> events = sources.events();
  sources.start(files.folder(), service);
  EXPECT_EQ(eventWords(*events), "a:10:4.0") << "what is there already";
  EXPECT_TRUE(waitUntil([&] { return eventWords(*events) == "a:10:4.0 b:20:5.0"; }));
}

TEST(EventSources, haveNoEventsWithoutFilesAndService) {
  EventSources sources;
  sources.start({}, {});
  EXPECT_TRUE(sources.events()->empty());
}

} // namespace xov::cli
