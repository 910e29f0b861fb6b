#include "XOV_Graphics/seismic/io/events/EventReaders.h"

#include "tests/seismic/EventTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using test::onlyEvent;
using test::parsedEvents;
using test::TemporaryFiles;
using test::timeText;

namespace {

QByteArray value(const char* element, const char* text) {
  return QByteArray("<") + element + "><value>" + text + "</value><uncertainty>1</uncertainty></" + element + ">";
}

QByteArray origin(const char* id, const char* time, const char* latitude = "10", const char* longitude = "20",
                  const char* depth = "30000") {
  return QByteArray("<origin publicID=\"") + id + "\">" + value("longitude", longitude) + value("time", time) +
         value("latitude", latitude) + value("depth", depth) + "<quality/></origin>";
}

QByteArray magnitude(const char* id, const char* type, const char* mag) {
  return QByteArray("<magnitude publicID=\"") + id + "\">" + value("mag", mag) + "<type>" + type +
         "</type></magnitude>";
}

QByteArray quakeMl(const QByteArray& events) {
  return "<?xml version=\"1.0\"?>\n"
         "<q:quakeml xmlns=\"http://quakeml.org/xmlns/bed/1.2\" xmlns:q=\"http://quakeml.org/xmlns/quakeml/1.2\">\n"
         "<eventParameters publicID=\"x\"><description>all</description>\n" +
         events + "</eventParameters></q:quakeml>";
}

QByteArray event(const QByteArray& contents) { return "<event publicID=\"e\">" + contents + "</event>\n"; }

const char* const kTohoku = "2011-03-11T05:46:24.120Z";

} // namespace

TEST(QuakeMl, givesTimePlaceAndDepthInKilometres) {
  const HypocentreValues values = onlyEvent(quakeMl(event(origin("o", kTohoku, "38.297", "-142.373", "29500"))));
  EXPECT_EQ(timeText(values.originTime), "2011-03-11T05:46:24.120Z");
  EXPECT_EQ(values.latitudeDeg, 38.297F);
  EXPECT_EQ(values.longitudeDeg, -142.373F);
  EXPECT_EQ(values.depthKm, 29.5F);
  EXPECT_EQ(values.id, "e");
}

TEST(QuakeMl, takesThePreferredOriginElseTheFirstSoundOne) {
  const QByteArray both = origin("a", "2011-01-01T00:00:00Z") + origin("b", "2012-01-01T00:00:00Z");
  const QByteArray prefers = "<preferredOriginID> b </preferredOriginID>";
  EXPECT_EQ(onlyEvent(quakeMl(event(both + prefers))).originTime.date().year(), 2012);
  EXPECT_EQ(onlyEvent(quakeMl(event(prefers + both))).originTime.date().year(), 2012);
  EXPECT_EQ(onlyEvent(quakeMl(event(both))).originTime.date().year(), 2011);
  EXPECT_EQ(onlyEvent(quakeMl(event(both + "<preferredOriginID>c</preferredOriginID>"))).originTime.date().year(),
            2011);
  EXPECT_EQ(onlyEvent(quakeMl(event(origin("x", "never") + both))).originTime.date().year(), 2011);
}

TEST(QuakeMl, readsAllMagnitudesAndTheirScales) {
  const HypocentreValues values =
      onlyEvent(quakeMl(event(magnitude("1", "mb", "7.2") + magnitude("2", "Ms_20", "8.3") +
                              magnitude("3", "Mwc", "9.0") + magnitude("4", "Mww", "9.1") + origin("o", kTohoku))));
  ASSERT_EQ(values.magnitudes.size(), 4U);
  EXPECT_EQ(values.magnitudes[1].type, QStringLiteral("Ms_20"));
  EXPECT_EQ(values.mb, 7.2F);
  EXPECT_EQ(values.Ms, 8.3F);
  EXPECT_EQ(values.Mw, 9.0F);
  EXPECT_EQ(values.preferredMagnitude, 9.0F);
}

TEST(QuakeMl, takesThePreferredMagnitude) {
  const QByteArray all = magnitude("3", "Mwc", "9.0") + magnitude("4", "Mww", "9.1") + magnitude("5", "ML", "8.0");
  const auto preferring = [&](const char* id) {
    return onlyEvent(
        quakeMl(event(origin("o", kTohoku) + "<preferredMagnitudeID>" + id + "</preferredMagnitudeID>" + all)));
  };
  EXPECT_EQ(preferring("4").Mw, 9.1F);
  EXPECT_EQ(preferring("4").preferredMagnitude, 9.1F);
  EXPECT_EQ(preferring("5").Mw, 9.0F);
  EXPECT_EQ(preferring("5").preferredMagnitude, 8.0F);
  EXPECT_EQ(preferring("6").preferredMagnitude, 9.0F);
}

// The local magnitude has no publicID, and the event prefers none: that is not the same "none".
TEST(QuakeMl, prefersNoMagnitudeForHavingNoIdentifier) {
  const QByteArray local = "<magnitude><mag><value>4.5</value></mag><type>ML</type></magnitude>";
  for (const char* preferred : {"", "<preferredMagnitudeID/>", "<preferredMagnitudeID> </preferredMagnitudeID>"}) {
    const HypocentreValues values =
        onlyEvent(quakeMl(event(origin("o", kTohoku) + preferred + local + magnitude("2", "Mww", "6.0"))));
    ASSERT_EQ(values.magnitudes.size(), 2U);
    EXPECT_EQ(values.preferredMagnitude, 6.0F) << preferred;
  }
}

TEST(QuakeMl, takesOnlyTheMagnitudesOfTheEventItself) {
  const QByteArray station = "<stationMagnitude><mag><value>1</value></mag></stationMagnitude>";
  const QByteArray mechanism = "<focalMechanism><momentTensor><magnitude><mag><value>2</value></mag></magnitude>"
                               "</momentTensor></focalMechanism>";
  EXPECT_TRUE(onlyEvent(quakeMl(event(station + mechanism + origin("o", kTohoku)))).magnitudes.empty());
}

TEST(QuakeMl, namesTheEventAfterItsRegion) {
  const QByteArray title = "<description><type>earthquake name</type><text>Great quake</text></description>";
  const QByteArray region = "<description><text>Near Honshu</text><type>Flinn-Engdahl region</type></description>";
  EXPECT_EQ(onlyEvent(quakeMl(event(title + region + origin("o", kTohoku)))).name, QStringLiteral("Near Honshu"));
  EXPECT_EQ(onlyEvent(quakeMl(event(region + title + origin("o", kTohoku)))).name, QStringLiteral("Near Honshu"));
  EXPECT_EQ(onlyEvent(quakeMl(event(title + origin("o", kTohoku)))).name, QStringLiteral("Great quake"));
}

TEST(QuakeMl, leavesWhatIsMissingUnset) {
  const HypocentreValues values = onlyEvent(quakeMl(event("<origin>" + value("time", kTohoku) + "</origin>")));
  EXPECT_EQ(values.latitudeDeg, kUndefinedValue);
  EXPECT_EQ(values.longitudeDeg, kUndefinedValue);
  EXPECT_EQ(values.depthKm, kUndefinedValue);
  EXPECT_EQ(values.preferredMagnitude, kUndefinedValue);
}

TEST(QuakeMl, countsEventsThatItLeavesOutAndNamesTheFirst) {
  // Three lines come before the events.
  const auto file = parsedEvents(quakeMl(event(origin("o", kTohoku)) + event(origin("o", "soon")) +
                                         event(magnitude("1", "mb", "5")) + event(origin("o", kTohoku, "91"))));
  EXPECT_EQ(file->events.size(), 1U);
  EXPECT_EQ(file->notes,
            QStringList("in: 3 of 4 events left out, the first on line 5: time: found \"soon\", expected "
                        "a time such as 2011-03-11T05:46:24.1Z"));
}

TEST(QuakeMl, withoutASoundEventIsRefused) {
  EXPECT_EQ(
      parsedEvents(quakeMl(event(origin("o", kTohoku, "91")))).error(),
      QStringLiteral("in: 1 of 1 event left out, the first on line 4: latitude: found \"91\", expected -90 to 90"));
  EXPECT_EQ(parsedEvents(quakeMl(event(magnitude("1", "mb", "5")))).error(),
            QStringLiteral("in: 1 of 1 event left out, the first on line 4: an event without an origin"));
  EXPECT_EQ(parsedEvents(quakeMl(event(magnitude("1", "mb", "five") + origin("o", kTohoku)))).error(),
            QStringLiteral(
                "in: 1 of 1 event left out, the first on line 4: magnitude: found \"five\", expected -10 to 15"));
}

TEST(QuakeMl, withoutEventsIsAnEmptyCatalogue) {
  const auto file = parsedEvents(quakeMl({}));
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->events.empty());
}

TEST(QuakeMl, thatIsCutOffOrNotWellFormedIsRefusedInOneLine) {
  const QByteArray whole = quakeMl(event(origin("o", kTohoku)));
  for (const QByteArray& bytes :
       {whole.chopped(30), whole.first(whole.indexOf("<value>")), QByteArray(whole).replace("</event>", "</x>")}) {
    const auto file = parsedEvents(bytes);
    EXPECT_FALSE(file);
    EXPECT_TRUE(file.error().startsWith(QStringLiteral("in: line "))) << file.error().toStdString();
    EXPECT_FALSE(file.error().contains(u'\n'));
  }
}

TEST(QuakeMl, tellsOtherDocumentsFromItsOwn) {
  EXPECT_EQ(parsedEvents("<FDSNStationXML/>").error(),
            QStringLiteral("in: line 1: found <FDSNStationXML>, expected <quakeml>"));
}

TEST(QuakeMl, declaresNoEntities) {
  // Ten entities, each ten times the one before: 10^9 characters if they were put in.
  QByteArray bomb = "<!DOCTYPE quakeml [<!ENTITY e0 \"x\">";
  for (int i = 1; i < 10; ++i) {
    const QByteArray before = "&e" + QByteArray::number(i - 1) + ";";
    bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" + before.repeated(10) + "\">";
  }
  const auto file = parsedEvents(bomb + "]><quakeml><eventParameters>&e9;</eventParameters></quakeml>");
  EXPECT_EQ(file.error(), QStringLiteral("in: line 1: the document declares entities, which QuakeML has none of"));
  const auto external =
      parsedEvents("<!DOCTYPE q [<!ENTITY f SYSTEM \"file:///etc/passwd\">]><quakeml>&f;</quakeml>");
  EXPECT_EQ(external.error(),
            QStringLiteral("in: line 1: the document declares entities, which QuakeML has none of"));
  EXPECT_TRUE(parsedEvents("<!DOCTYPE quakeml><quakeml/>")) << "a document type alone does no harm";
}

TEST(QuakeMl, isReadWhateverItsEncoding) {
  const QString text = QString::fromUtf8(quakeMl(event(origin("o", kTohoku))));
  QByteArray wide("\xFF\xFE");
  wide.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
  EXPECT_EQ(onlyEvent(wide).latitudeDeg, 10);
  EXPECT_EQ(onlyEvent("\xEF\xBB\xBF" + text.toUtf8()).latitudeDeg, 10);
}

TEST(EventTable, readsThePlainColumns) {
  const HypocentreValues values =
      onlyEvent("time,latitude,longitude,depth,magnitude,type\n2011-03-11T05:46:24.12Z,38.297,142.373,29,9.1,Mww\n");
  EXPECT_EQ(timeText(values.originTime), "2011-03-11T05:46:24.120Z");
  EXPECT_EQ(values.latitudeDeg, 38.297F);
  EXPECT_EQ(values.longitudeDeg, 142.373F);
  EXPECT_EQ(values.depthKm, 29);
  EXPECT_EQ(values.preferredMagnitude, 9.1F);
  EXPECT_EQ(values.Mw, 9.1F);
  EXPECT_EQ(values.magnitudes.front().type, QStringLiteral("Mww"));
}

TEST(EventTable, readsThePlainColumnsWithoutNames) {
  EXPECT_EQ(onlyEvent("2011-03-11T05:46:24Z,38.297,142.373,29,9.1,mb\n").mb, 9.1F);
  const HypocentreValues values = onlyEvent("2011-03-11T05:46:24Z,38.297,142.373,29,9.1");
  EXPECT_EQ(values.preferredMagnitude, 9.1F);
  EXPECT_EQ(values.mb, kUndefinedValue);
}

TEST(EventTable, readsColumnsInAnyOrderAmongOthers) {
  const HypocentreValues values = onlyEvent("id,magType,mag,nst,depth,longitude,latitude,time,place,type\n"
                                            "us1,mb,4.5,12,10.5,-7,6,2020-01-02T03:04:05Z,somewhere,earthquake\n");
  EXPECT_EQ(values.mb, 4.5F);
  EXPECT_EQ(values.magnitudes.front().type, QStringLiteral("mb")) << "the column type is the event's here";
  EXPECT_EQ(values.depthKm, 10.5F);
  EXPECT_EQ(values.longitudeDeg, -7);
  EXPECT_EQ(values.latitudeDeg, 6);
  EXPECT_EQ(timeText(values.originTime), "2020-01-02T03:04:05.000Z");
  EXPECT_EQ(values.name, QStringLiteral("somewhere"));
}

TEST(EventTable, readsQuotedFields) {
  const HypocentreValues values = onlyEvent("place,time,\"latitude\",mag\n"
                                            "\"10 km N of \"\"A, B\"\"\" ,2020-01-02T03:04:05Z, \"6.5\" ,\"4\"\n");
  EXPECT_EQ(values.name, QStringLiteral("10 km N of \"A, B\""));
  EXPECT_EQ(values.latitudeDeg, 6.5F);
  EXPECT_EQ(values.preferredMagnitude, 4);
}

TEST(EventTable, readsLinesThatEndWithCrLf) {
  const auto file = parsedEvents("time,latitude,mag\r\n2020-01-02T03:04:05Z,1,4\r\n\r\n2020-01-03T03:04:05Z,2,5\r\n");
  ASSERT_EQ(file->events.size(), 2U) << file.error().toStdString();
  EXPECT_EQ(file->events[0]->magnitude(), 4);
  EXPECT_EQ(file->events[1]->magnitude(), 5);
  EXPECT_TRUE(file->notes.isEmpty());
}

TEST(EventTable, readsOtherSeparators) {
  const char* const fdsn = "#EventID | Time | Latitude | Longitude | Depth/km | Author | MagType | Magnitude | "
                           "EventLocationName\n"
                           "1|2010-02-27T06:34:13.330000|-36.1485|-72.9327|28.1|ISC|Mw|8.78|NEAR COAST\n";
  EXPECT_EQ(onlyEvent(fdsn).Mw, 8.78F);
  EXPECT_EQ(onlyEvent(fdsn).depthKm, 28.1F);
  EXPECT_EQ(onlyEvent(fdsn).name, QStringLiteral("NEAR COAST"));
  EXPECT_EQ(onlyEvent("Date;Time UTC;Latitude;Mag\n2020/01/02;03:04:05.6;1;4\n").originTime.time().msec(), 600);
  EXPECT_EQ(onlyEvent("time\tlat\tlon\tmag\n2020-01-02\t1\t2\t3\n").longitudeDeg, 2);
}

TEST(EventTable, readsFdsnTextWhoseRowOfNamesIsGone) {
  const HypocentreValues values =
      onlyEvent("7|2010-02-27T06:34:13.33|-36.1|-72.9|28.1|A|B|C|D|mb|7.5|E|OFF THE COAST\n");
  EXPECT_EQ(timeText(values.originTime), "2010-02-27T06:34:13.330Z");
  EXPECT_EQ(values.latitudeDeg, -36.1F);
  EXPECT_EQ(values.longitudeDeg, -72.9F);
  EXPECT_EQ(values.depthKm, 28.1F);
  EXPECT_EQ(values.mb, 7.5F);
  EXPECT_EQ(values.name, QStringLiteral("OFF THE COAST"));
  EXPECT_EQ(values.id, "7");
  EXPECT_FALSE(parsedEvents("7|2010-02-27T06:34:13.33|-36.1|-72.9\n")) << "too few columns to tell";
}

TEST(EventTable, readsWhatEventsAreKnownBy) {
  EXPECT_EQ(onlyEvent("time,latitude,id,mag\n2020-01-02,1,us7000,5\n").id, "us7000");
  EXPECT_EQ(onlyEvent("#EventID | Time | Magnitude\ngfz2020|2020-01-02|5\n").id, "gfz2020");
  EXPECT_EQ(onlyEvent("2020-01-02,1,2\n").id, "");
  EXPECT_FALSE(parsedEvents("id,time\n7,2020-01-02\n")) << "tells nothing of events but a time";
}

TEST(EventTable, readsColumnsOfMagnitudeTypes) {
  const HypocentreValues values = onlyEvent("time,lat,mb,ms,mw,ml\n2020-01-02,1,5.5,6.5,,4.5\n");
  EXPECT_EQ(values.mb, 5.5F);
  EXPECT_EQ(values.Ms, 6.5F);
  EXPECT_EQ(values.Mw, kUndefinedValue);
  EXPECT_EQ(values.preferredMagnitude, 6.5F);
  EXPECT_EQ(values.magnitudes.size(), 3U);
}

TEST(EventTable, leavesEmptyAndMissingFieldsUnset) {
  for (const char* row : {"2020-01-02,,,,,", "2020-01-02", "2020-01-02,nan,NaN,-,none,null"}) {
    const HypocentreValues values = onlyEvent(QByteArray("time,latitude,longitude,depth,mag,magType\n") + row + "\n");
    EXPECT_EQ(values.latitudeDeg, kUndefinedValue) << row;
    EXPECT_EQ(values.longitudeDeg, kUndefinedValue);
    EXPECT_EQ(values.depthKm, kUndefinedValue);
    EXPECT_EQ(values.preferredMagnitude, kUndefinedValue);
    EXPECT_TRUE(values.magnitudes.empty());
  }
}

TEST(EventTable, countsRowsThatItLeavesOutAndNamesTheLineOfTheFirst) {
  const auto file = parsedEvents("time,latitude,longitude,depth,mag\n"
                                 "2020-01-02,1,2,3,4\n"
                                 "\n"
                                 "2020-01-02,north,2,3,4\n"
                                 ",1,2,3,4\n"
                                 "2020-01-02,1,361,3,4\n"
                                 "2020-01-02,1,2,24400,4\n"
                                 "2020-01-02,1,2,3,99\n"
                                 "2020-01-03,1,2,3,4\n");
  EXPECT_EQ(file->events.size(), 2U);
  EXPECT_EQ(file->notes, QStringList("in: 5 of 7 rows left out, the first on line 4: latitude: found \"north\", "
                                     "expected -90 to 90"));
}

TEST(EventTable, takesAQuoteThatIsNotClosedForText) {
  const auto file = parsedEvents("place,time,latitude\n\"open,2020-01-02,1\n\"closed\",2020-01-03,1\n");
  ASSERT_EQ(file->events.size(), 2U);
  EXPECT_EQ(file->events[0]->values().name, QStringLiteral("\"open"));
  EXPECT_EQ(file->events[1]->values().name, QStringLiteral("closed"));
}

TEST(EventTable, withoutASoundRowIsRefused) {
  EXPECT_EQ(parsedEvents("time,latitude\nx,1\n").error(),
            QStringLiteral("in: 1 of 1 row left out, the first on line 2: time: found \"x\", expected a time such as "
                           "2011-03-11T05:46:24.1Z"));
}

TEST(EventTable, withoutRowsIsAnEmptyCatalogue) {
  const auto file = parsedEvents("\xEF\xBB\xBFtime,latitude,longitude,depth,mag\n# nothing today\n");
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->events.empty());
}

TEST(Events, areReadFromFilesByTheirContents) {
  const TemporaryFiles files;
  EXPECT_EQ(readEvents(files.write("a.csv", quakeMl(event(origin("o", kTohoku)))))->events.size(), 1U);
  EXPECT_EQ(readEvents(files.write("a.xml", "time,mag\n2020-01-02,4\n"))->events.size(), 1U);
}

TEST(Events, areRecognisedByTheirContentsWhateverFollows) {
  const TemporaryFiles files;
  EXPECT_TRUE(looksLikeEvents(files.write("a", quakeMl(""))));
  EXPECT_TRUE(looksLikeEvents(files.write("b", "time,latitude,longitude,mag\nno time\n")));
  EXPECT_FALSE(looksLikeEvents(files.write("c", "just some text\n")));
  EXPECT_FALSE(looksLikeEvents(files.write("d", "")));
  EXPECT_FALSE(looksLikeEvents(files.path("none")));
}

TEST(Events, reachTheViewsAsOrigins) {
  const auto file = parsedEvents("time,mag,magType\n2020-01-02T00:00:00Z,6.5,Mw\n");
  const EventOriginArray origins = file->origins();
  ASSERT_EQ(origins.size(), 1U);
  EXPECT_EQ(origins[0]->Mw(), 6.5F);
  EXPECT_EQ(origins[0]->oDate(), QDateTime(QDate(2020, 1, 2), QTime(0, 0), Qt::UTC));
}

TEST(Events, areRefusedInAnyOtherForm) {
  const TemporaryFiles files;
  const QString path = files.write("a.txt", "just some text\n");
  EXPECT_EQ(readEvents(path).error(),
            path + ": unknown format, expected QuakeML, GCMT NDK, mchedr, Nordic, hypoDD, ZMAP or a table of events");
  EXPECT_EQ(readEvents(files.write("empty", {})).error(), files.path("empty") + ": the file is empty");
  EXPECT_EQ(readEvents(files.folder()).error(), files.folder() + ": is a folder, expected a file");
}

TEST(EventReaders, knowEventsByTheBeginningOfAFile) {
  const TemporaryFiles files;
  EXPECT_TRUE(looksLikeEvents(files.write("a.xml", quakeMl(""))));
  EXPECT_TRUE(looksLikeEvents(files.write("a.csv", "time,latitude,longitude\n2011-03-11T05:46:24Z,1,2\n")));
  EXPECT_FALSE(looksLikeEvents(files.write("a.txt", "no events at all\n")));
  EXPECT_FALSE(looksLikeEvents(files.write("empty", "")));
  EXPECT_FALSE(looksLikeEvents(files.path("none")));
  EXPECT_FALSE(looksLikeEvents(files.folder()));
}

TEST(EventReaders, refuseATableOfMoreThanAGibibyteBeforeTheyReadIt) {
  const TemporaryFiles files;
  const QString path = files.write("large.csv", "time,latitude,longitude\n2011-03-11T05:46:24Z,1,2\n");
  ASSERT_TRUE(QFile::resize(path, (qint64(1) << 30) + 1)); // takes no room on the disk
  EXPECT_EQ(readEvents(path).error(), path + ": found 1073741825 bytes, expected a catalogue of at most 1 GiB");
}
