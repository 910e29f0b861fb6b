#include "tests/seismic/EventTexts.h"

using namespace xov;
using test::onlyEvent;
using test::parsedEvents;
using test::timeText;

namespace {

// Invented; the columns are those of the manual. The last one of the 80 has the type of the line.
const QByteArray kOrigin = " 2004  7 9 0512  3.5 L  61.500  -4.250 12.5  TES 11 0.4 3.1LTES 3.4WTES 3.6bOTH1\n";
const QByteArray kMore = " 2004  7 9 0512  4.1 L  61.600  -4.300 15.0  OTH  8 0.6 3.3sOTH                1\n";
const QByteArray kPlane = "     120.0      45.0     -90.0                                    TES FOCMEC   F\n";
const QByteArray kRest = " ACTION:REG 04-07-09 06:00 OP:abc  STATUS:               ID:20040709051203     I\n"
                         " STAT SP IPHASW D HRMM SECON CODA AMPLIT PERI AZIMU VELO AIN AR TRES W  DIS CAZ7\n"
                         " ABCD SZ IP       0512 10.25                             110    0.0110   35  80 \n";
const QByteArray kBlank = QByteArray(80, ' ') + "\n";
const QByteArray kEvent = kOrigin + kMore + kPlane + kRest + kBlank;

} // namespace

TEST(Nordic, givesTheFirstOriginOfAnEvent) {
  const HypocentreValues values = onlyEvent(kEvent);
  EXPECT_EQ(timeText(values.originTime), "2004-07-09T05:12:03.500Z");
  EXPECT_EQ(values.latitudeDeg, 61.5F);
  EXPECT_EQ(values.longitudeDeg, -4.25F);
  EXPECT_EQ(values.depthKm, 12.5F);
}

TEST(Nordic, givesTheMagnitudesOfAllHypocentreLines) {
  const HypocentreValues values = onlyEvent(kEvent);
  ASSERT_EQ(values.magnitudes.size(), 4U);
  EXPECT_EQ(values.magnitudes[0].type, QStringLiteral("ML"));
  EXPECT_EQ(values.magnitudes[0].value, 3.1F);
  EXPECT_EQ(values.Mw, 3.4F);
  EXPECT_EQ(values.mb, 3.6F);
  EXPECT_EQ(values.Ms, 3.3F);
  EXPECT_EQ(values.preferredMagnitude, 3.4F);
}

TEST(Nordic, givesANodalPlane) {
  const HypocentreValues values = onlyEvent(kEvent);
  ASSERT_TRUE(values.mechanism);
  EXPECT_EQ(values.mechanism->planes[0].strikeDeg, 120);
  EXPECT_EQ(values.mechanism->planes[0].dipDeg, 45);
  EXPECT_EQ(values.mechanism->planes[0].rakeDeg, -90);
  EXPECT_FALSE(isDefined(values.mechanism->planes[1].strikeDeg));
  EXPECT_FALSE(onlyEvent(kOrigin + kRest).mechanism);
}

TEST(Nordic, endsAnEventWithABlankLine) {
  for (const QByteArray& blank : {kBlank, QByteArray("\n"), QByteArray("\r\n\n")}) {
    const auto file = parsedEvents(kOrigin + kRest + blank + kMore + kRest + blank);
    ASSERT_EQ(file->events.size(), 2U) << file.error().toStdString();
    EXPECT_EQ(file->events[1]->Ms(), 3.3F);
  }
}

TEST(Nordic, takesEachLineOfACompactFileForAnEvent) {
  const auto file = parsedEvents(kOrigin + kMore + kOrigin);
  EXPECT_EQ(file->events.size(), 3U);
  EXPECT_EQ(parsedEvents(kOrigin + kMore + "\n" + kOrigin)->events.size(), 2U) << "blank lines end events";
}

TEST(Nordic, readsTheFirstLineWithoutItsTypeAndWithoutAHypocentre) {
  EXPECT_EQ(onlyEvent(QByteArray(kOrigin).replace("1\n", " \n") + kRest).latitudeDeg, 61.5F);
  const HypocentreValues unlocated = onlyEvent(" 2021 0103 0345      D\n" + kRest);
  EXPECT_EQ(timeText(unlocated.originTime), "2021-01-03T03:45:00.000Z");
  EXPECT_FALSE(isDefined(unlocated.latitudeDeg));
}

TEST(Nordic, isRecognisedBehindOtherLinesOfItsWidth) {
  EXPECT_EQ(onlyEvent(kPlane + kOrigin + kRest).latitudeDeg, 61.5F);
  EXPECT_FALSE(parsedEvents("some text\n" + kOrigin + kRest));
}

TEST(Nordic, countsEventsWithABadFieldAndNamesTheFirst) {
  const auto file = parsedEvents(kEvent + QByteArray(kEvent).replace("  7 9 ", " 13 9 ") +
                                 QByteArray(kEvent).replace(" 61.500", "161.500") +
                                 QByteArray(kEvent).replace(" 3.1L", " ***L") + kRest);
  EXPECT_EQ(file->events.size(), 1U);
  EXPECT_EQ(file->notes,
            QStringList("in: 4 of 5 events left out, the first on line 8: time: found \"2004 13 9 05 12 3.5\", "
                        "expected a time such as 2011-03-11T05:46:24.1Z"));
}

TEST(Nordic, takesTheDigitsOfALineOfHighAccuracyForTheHypocentreAboveIt) {
  //                              1         2         3         4         5
  //                     1234567890123456789012345678901234567890123456789012345678901234567890
  const QByteArray line = " 2004  7 9 0512  3.512  61.50123   -4.25456   12.345  0.142";
  const QByteArray precise = line + QByteArray(79 - line.size(), ' ') + "H\n";
  const HypocentreValues values = onlyEvent(kOrigin + precise + kMore + kRest);
  EXPECT_EQ(timeText(values.originTime), "2004-07-09T05:12:03.512Z");
  EXPECT_EQ(values.latitudeDeg, 61.50123F);
  EXPECT_EQ(values.longitudeDeg, -4.25456F);
  EXPECT_EQ(values.depthKm, 12.345F);
  EXPECT_EQ(onlyEvent(kOrigin + kMore + precise).latitudeDeg, 61.5F) << "it belongs to the second hypocentre";
  const QByteArray blank = QByteArray(79, ' ') + "H\n";
  EXPECT_EQ(onlyEvent(kOrigin + blank + kRest).latitudeDeg, 61.5F) << "what is missing stays";
  EXPECT_EQ(timeText(onlyEvent(kOrigin + blank + kRest).originTime), "2004-07-09T05:12:03.500Z");
  EXPECT_FALSE(parsedEvents(kOrigin + QByteArray(precise).replace("61.50123", "91.50123")));
}
