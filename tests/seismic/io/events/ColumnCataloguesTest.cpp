// ZMAP and hypoDD: an event a row, told from each other and from tables by their columns.

#include "tests/seismic/EventTexts.h"

using namespace xov;
using test::onlyEvent;
using test::parsedEvents;
using test::timeText;

namespace {

const QByteArray kZmap = "142.373\t38.297\t2011.189\t3\t11\t9.1\t29.0\t5\t46\t24.12\n";

const QByteArray kLoc =
    "  77  37.1250 -121.5000   7.250   10.0   -20.0  30.0  1.0  2.0  3.0 1998  6 25 12 34 56.789  2.4   1\n";
const QByteArray kReloc =
    "  77  37.1250 -121.5000   7.250   10.0   -20.0  30.0  1.0  2.0  3.0 1998  6 25 12 34 56.789  2.4 "
    " 100   0   200   10  0.01 -9.000   1\n";

const QByteArray kPhases = "#  1998  6 25 12 34 56.79  37.1250 -121.5000  7.25  2.4  0.1 0.2 0.05   77\n"
                           "ABC   3.52  1.0  P\n"
                           "DEF   5.86  0.5  S\n";

} // namespace

TEST(Zmap, givesTheEventOfARow) {
  const HypocentreValues values = onlyEvent(kZmap);
  EXPECT_EQ(timeText(values.originTime), "2011-03-11T05:46:24.120Z");
  EXPECT_EQ(values.latitudeDeg, 38.297F);
  EXPECT_EQ(values.longitudeDeg, 142.373F);
  EXPECT_EQ(values.depthKm, 29);
  EXPECT_EQ(values.preferredMagnitude, 9.1F);
  EXPECT_TRUE(values.magnitudes.front().type.isEmpty());
}

TEST(Zmap, readsNumbersInEveryFormAndBetweenEverySeparator) {
  const HypocentreValues matlab =
      onlyEvent("   1.4237300e+02   3.8297000e+01   2.0111890e+03   3.0000000e+00   1.1000000e+01   9.1000000e+00"
                "   2.9000000e+01   5.0000000e+00   4.6000000e+01   2.4120000e+01\n");
  EXPECT_EQ(timeText(matlab.originTime), "2011-03-11T05:46:24.120Z");
  EXPECT_EQ(matlab.longitudeDeg, 142.373F);
  EXPECT_EQ(timeText(onlyEvent("142.373, 38.297, 2011, 3, 11, 9.1, 29, 5, 46, 24.12, 1.5, NaN, 0.1\n").originTime),
            "2011-03-11T05:46:24.120Z");
  EXPECT_EQ(timeText(onlyEvent("142.373 38.297 2011 3 11 9.1 29 5 46\n").originTime), "2011-03-11T05:46:00.000Z");
}

TEST(Zmap, leavesWhatIsNoNumberUnset) {
  const HypocentreValues values = onlyEvent("142.373 38.297 2011 3 11 NaN nan 5 46 24\n");
  EXPECT_FALSE(isDefined(values.preferredMagnitude));
  EXPECT_FALSE(isDefined(values.depthKm));
}

TEST(Zmap, countsRowsWithABadFieldAndNamesTheFirst) {
  const auto file = parsedEvents(kZmap + "\n" + QByteArray(kZmap).replace("2011.189", "20110.5") +
                                 QByteArray(kZmap).replace("\t3\t", "\t3.5\t") + "142.373 38.297 2011 3\n" + kZmap);
  EXPECT_EQ(file->events.size(), 2U);
  EXPECT_EQ(file->notes, QStringList("in: 3 of 5 rows left out, the first on line 3: time: found \"20110.5 3 11 5 46 "
                                     "24.12\", expected a time such as 2011-03-11T05:46:24.1Z"));
  EXPECT_EQ(parsedEvents(kZmap + "142.373 38.297 2011 3\n")->notes,
            QStringList("in: 1 of 2 rows left out, the first on line 2: found 4 columns, expected at least 9"));
}

TEST(HypoDd, givesRelocatedEvents) {
  for (const QByteArray& row : {kLoc, kReloc}) {
    const HypocentreValues values = onlyEvent(row);
    EXPECT_EQ(timeText(values.originTime), "1998-06-25T12:34:56.789Z");
    EXPECT_EQ(values.latitudeDeg, 37.125F);
    EXPECT_EQ(values.longitudeDeg, -121.5F);
    EXPECT_EQ(values.depthKm, 7.25F);
    EXPECT_EQ(values.preferredMagnitude, 2.4F);
  }
}

TEST(HypoDd, givesTheEventsOfAFileOfPhases) {
  const auto file = parsedEvents(kPhases + QByteArray(kPhases).replace("56.79", "60.00"));
  ASSERT_EQ(file->events.size(), 2U) << file.error().toStdString();
  const HypocentreValues& values = file->events[0]->values();
  EXPECT_EQ(timeText(values.originTime), "1998-06-25T12:34:56.790Z");
  EXPECT_EQ(values.latitudeDeg, 37.125F);
  EXPECT_EQ(values.longitudeDeg, -121.5F);
  EXPECT_EQ(values.depthKm, 7.25F);
  EXPECT_EQ(values.preferredMagnitude, 2.4F);
  EXPECT_EQ(timeText(file->events[1]->oDate()), "1998-06-25T12:35:00.000Z") << "second 60 is the next minute";
}

TEST(HypoDd, countsRowsWithABadFieldAndNamesTheFirst) {
  const auto located = parsedEvents(kReloc + QByteArray(kReloc).replace("37.1250", "*******") + "  78  37.1\n");
  EXPECT_EQ(located->events.size(), 1U);
  EXPECT_EQ(located->notes, QStringList("in: 2 of 3 events left out, the first on line 2: latitude: found "
                                        "\"*******\", expected -90 to 90"));
  const auto phases = parsedEvents(kPhases + "# 1998 6 25\n");
  EXPECT_EQ(phases->notes,
            QStringList("in: 1 of 2 events left out, the first on line 4: found 3 columns, expected at "
                        "least 10"));
  EXPECT_EQ(parsedEvents(kPhases + "# 1998 6 25 12 34 56.79 37.1250 -121.5000 7.250\n")->notes,
            QStringList("in: 1 of 2 events left out, the first on line 4: found 9 columns, expected at least 10"))
      << "all but the magnitude";
}

TEST(ColumnCatalogues, areNotTakenForEachOther) {
  EXPECT_EQ(onlyEvent("# a table\n2020-01-02,1,2,3,4\n").latitudeDeg, 1) << "a comment is no file of phases";
  EXPECT_FALSE(parsedEvents("1 2 3 4 5 6 7 8 9 10\n")) << "5 April of the year 3 is no time of a catalogue";
}
