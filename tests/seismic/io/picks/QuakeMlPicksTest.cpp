#include "XOV_Graphics/seismic/io/picks/QuakeMlPicks.h"

#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "XOV_Graphics/seismic/io/picks/PickFiles.h"
#include "tests/seismic/PickSamples.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/UnknownElements.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>

using namespace xov;
using test::fullPick;
using test::TemporaryFiles;
using test::tlyPick;

namespace {

Result<PickFile> parsedDocument(const QByteArray& text) { return parsePicks(text, QStringLiteral("in")); }

QByteArray withPick(const QByteArray& inside) {
  return "<?xml version=\"1.0\"?><q:quakeml xmlns=\"http://quakeml.org/xmlns/bed/1.2\" "
         "xmlns:q=\"http://quakeml.org/xmlns/quakeml/1.2\"><eventParameters publicID=\"smi:local/p\">"
         "<event publicID=\"smi:local/e\">" +
         inside + "</event></eventParameters></q:quakeml>";
}

Hypocentre tohoku() {
  HypocentreValues values;
  values.originTime = *parseUtcTime(u"2011-03-11T05:46:24.12Z");
  values.latitudeDeg = 38.25F;
  values.longitudeDeg = 142.5F;
  values.depthKm = 29.5F;
  values.name = QStringLiteral("Near the east coast of Honshu");
  values.magnitudes = {{QStringLiteral("mb"), 7.25F}, {QStringLiteral("Mww"), 9.125F}};
  values.preferredMagnitude = 9.125F;
  return Hypocentre(values);
}

// What QuakeML 1.2 lets stand in these elements (QuakeML-BED-1.2.xsd), as far as picks need it: children of the
// bed namespace, each at most once but for those in kRepeated, and the attributes that must be there.
const QMap<QString, QStringList> kChildren = {
    {"quakeml", {"eventParameters"}},
    {"eventParameters", {"comment", "event", "description", "creationInfo"}},
    {"event",
     {"description", "comment", "focalMechanism", "amplitude", "magnitude", "stationMagnitude", "origin", "pick",
      "preferredOriginID", "preferredMagnitudeID", "preferredFocalMechanismID", "type", "typeCertainty",
      "creationInfo"}},
    {"description", {"text", "type"}},
    {"comment", {"text", "creationInfo"}},
    {"origin",
     {"compositeTime",    "comment",      "originUncertainty", "arrival",   "time",           "longitude",
      "latitude",         "depth",        "depthType",         "timeFixed", "epicenterFixed", "referenceSystemID",
      "methodID",         "earthModelID", "quality",           "type",      "region",         "evaluationMode",
      "evaluationStatus", "creationInfo"}},
    {"arrival",
     {"comment", "pickID", "phase", "timeCorrection", "azimuth", "distance", "takeoffAngle", "timeResidual",
      "horizontalSlownessResidual", "backazimuthResidual", "timeWeight", "horizontalSlownessWeight",
      "backazimuthWeight", "earthModelID", "creationInfo"}},
    {"magnitude",
     {"comment", "stationMagnitudeContribution", "mag", "type", "stationCount", "azimuthalGap", "originID",
      "methodID", "evaluationMode", "evaluationStatus", "creationInfo"}},
    {"pick",
     {"comment", "time", "waveformID", "filterID", "methodID", "horizontalSlowness", "backazimuth",
      "slownessMethodID", "onset", "phaseHint", "polarity", "evaluationMode", "evaluationStatus", "creationInfo"}},
    {"time", {"value", "uncertainty", "lowerUncertainty", "upperUncertainty", "confidenceLevel"}},
    {"longitude", {"value", "uncertainty", "lowerUncertainty", "upperUncertainty", "confidenceLevel"}},
    {"latitude", {"value", "uncertainty", "lowerUncertainty", "upperUncertainty", "confidenceLevel"}},
    {"depth", {"value", "uncertainty", "lowerUncertainty", "upperUncertainty", "confidenceLevel"}},
    {"mag", {"value", "uncertainty", "lowerUncertainty", "upperUncertainty", "confidenceLevel"}},
};
const QStringList kRepeated = {"event", "pick", "arrival", "magnitude", "comment", "description", "origin"};
const QMap<QString, QStringList> kNeededChildren = {{"pick", {"time", "waveformID"}},
                                                    {"arrival", {"pickID", "phase"}},
                                                    {"time", {"value"}},
                                                    {"origin", {"time", "longitude", "latitude"}},
                                                    {"magnitude", {"mag"}},
                                                    {"comment", {"text"}}};
const QStringList kHasPublicId = {"eventParameters", "event", "origin", "arrival", "magnitude", "pick"};
const QStringList kReferences = {"pickID", "originID", "preferredOriginID", "preferredMagnitudeID"};

/// What is wrong with a document by these rules, one line each.
QStringList faultsOf(const QByteArray& document) {
  static const QRegularExpression reference(
      R"(^(smi|quakeml):[\w\d][\w\d\-\.\*\(\)_~']{2,}/[\w\d\-\.\*\(\)_~'][\w\d\-\.\*\(\)\+\?_~'=,;#/&]*$)");
  QStringList faults;
  QStringList ids;
  QStringList referred;
  QStringList path;
  std::vector<QStringList> seen;
  QXmlStreamReader xml(document);
  while (!xml.atEnd()) {
    xml.readNext();
    if (xml.isStartElement()) {
      const QString name = xml.name().toString();
      const QString expected =
          name == "quakeml" ? "http://quakeml.org/xmlns/quakeml/1.2" : "http://quakeml.org/xmlns/bed/1.2";
      if (xml.namespaceUri() != expected) faults << name + " in the namespace " + xml.namespaceUri().toString();
      if (!path.isEmpty()) {
        if (!kChildren.value(path.last()).contains(name)) faults << name + " in " + path.last();
        if (seen.back().contains(name) && !kRepeated.contains(name)) faults << "a second " + name;
        seen.back() << name;
      }
      if (kHasPublicId.contains(name)) ids << xml.attributes().value("publicID").toString();
      if (name == "waveformID" &&
          !(xml.attributes().hasAttribute("networkCode") && xml.attributes().hasAttribute("stationCode")))
        faults << "waveformID without codes";
      path << name;
      seen.emplace_back();
    } else if (xml.isCharacters() && !path.isEmpty() && kReferences.contains(path.last())) {
      referred << xml.text().toString();
    } else if (xml.isEndElement()) {
      for (const QString& needed : kNeededChildren.value(path.last()))
        if (!seen.back().contains(needed)) faults << path.last() + " without " + needed;
      path.removeLast();
      seen.pop_back();
    }
  }
  if (xml.hasError()) faults << xml.errorString();
  for (const QString& id : ids)
    if (!reference.match(id).hasMatch()) faults << "the id " + id;
  for (const QString& id : referred)
    if (!ids.contains(id)) faults << "a reference to " + id;
  if (ids.removeDuplicates() > 0) faults << "an id twice";
  return faults;
}

std::string lines(const QStringList& texts) { return texts.join('\n').toStdString(); }

} // namespace

TEST(QuakeMlPicks, areWrittenAsTheSchemaHasThem) {
  const Hypocentre event = tohoku();
  Pick strange = tlyPick("S", "2011-03-11T05:58:00Z", "BHN");
  strange.id = QStringLiteral("a pick <with> blanks");
  Pick bare;
  for (const Hypocentre* known : {&event, static_cast<const Hypocentre*>(nullptr)}) {
    const Result<QByteArray> document = quakeMlOf({fullPick(), strange, bare}, known, QStringLiteral("out"));
    ASSERT_TRUE(document) << document.error().toStdString();
    EXPECT_EQ(lines(faultsOf(*document)), "") << document->toStdString();
  }
  EXPECT_EQ(lines(faultsOf(*quakeMlOf({}, nullptr, QStringLiteral("out")))), "");
}

TEST(QuakeMlPicks, comeBackAsTheyWereWritten) {
  const TemporaryFiles files;
  const PickArray picks = {fullPick(), tlyPick("S", "1969-12-31T23:59:59.999999999Z", "BHN")};
  ASSERT_TRUE(writePicks(picks, files.path("p.xml"), PickFormat::QuakeMl));
  const Result<PickFile> read = readPicks(files.path("p.xml"));
  ASSERT_TRUE(read) << read.error().toStdString();
  EXPECT_EQ(read->picks, picks);
  const QByteArray first = files.read(files.path("p.xml"));
  ASSERT_TRUE(writePicks(read->picks, files.path("p.xml"), PickFormat::QuakeMl));
  EXPECT_EQ(files.read(files.path("p.xml")), first) << "ids stay what they are";
}

// Both codes are needed; where a location is not named, no location is told from one that is empty.
TEST(QuakeMlPicks, nameNetworkAndStationAlwaysAndOtherCodesWhereTheyAreKnown) {
  Pick pick = tlyPick("S", "2011-03-11T05:58:00Z", "BHN");
  const auto written = [&](const ChannelCodes& channel, const QByteArray& element) {
    pick.channel = channel;
    return quakeMlOf({pick}, nullptr, QStringLiteral("out"))->contains(element);
  };
  EXPECT_TRUE(
      written({"II", "TLY", "", "BHN"}, R"(<waveformID networkCode="II" stationCode="TLY" channelCode="BHN"/>)"));
  EXPECT_TRUE(written({"", "", "10", ""}, R"(<waveformID networkCode="" stationCode="" locationCode="10"/>)"));
}

TEST(QuakeMlPicks, standWithTheEventThatTheyAreOf) {
  const TemporaryFiles files;
  const Hypocentre event = tohoku();
  ASSERT_TRUE(writePicks({fullPick()}, files.path("p.xml"), PickFormat::QuakeMl, &event));
  const Result<EventFile> events = readEvents(files.path("p.xml"));
  ASSERT_TRUE(events) << events.error().toStdString();
  ASSERT_EQ(events->events.size(), 1U);
  const HypocentreValues& values = events->events[0]->values();
  EXPECT_EQ(values.originTime, event.values().originTime);
  EXPECT_EQ(values.latitudeDeg, 38.25F);
  EXPECT_EQ(values.longitudeDeg, 142.5F);
  EXPECT_EQ(values.depthKm, 29.5F);
  EXPECT_EQ(values.name, event.values().name);
  EXPECT_EQ(events->events[0]->magnitude(), 9.125F);
  EXPECT_EQ(readPicks(files.path("p.xml"))->picks, PickArray{fullPick()});
}

TEST(QuakeMlPicks, areReadWithPhasesOfArrivalsAndOneUncertaintyForBothSides) {
  const Result<PickFile> read = parsedDocument(withPick(
      "<origin publicID=\"smi:local/o\"><arrival publicID=\"smi:local/a\"><pickID>smi:local/1</pickID>"
      "<phase>Pn</phase></arrival></origin>"
      "<pick publicID=\"smi:local/1\"><time><value>2011-03-11T05:52:31.5Z</value><uncertainty>0.5</uncertainty>"
      "</time><waveformID networkCode=\"II\" stationCode=\"TLY\"/><polarity>positive</polarity>"
      "<backazimuth><value>12</value></backazimuth></pick>"));
  ASSERT_TRUE(read) << read.error().toStdString();
  ASSERT_EQ(read->picks.size(), 1U);
  const Pick& pick = read->picks[0];
  EXPECT_EQ(pick.phase, QStringLiteral("Pn"));
  EXPECT_EQ(pick.channel, (ChannelCodes{"II", "TLY", "", ""}));
  EXPECT_EQ(pick.lowerSeconds, 0.5);
  EXPECT_EQ(pick.upperSeconds, 0.5);
  EXPECT_EQ(pick.polarity, PickPolarity::Positive);
  EXPECT_EQ(pick.onset, PickOnset::Unknown);
}

TEST(QuakeMlPicks, thatCannotBeUsedAreLeftOutWithANote) {
  const QByteArray sound = "<pick publicID=\"smi:local/1\"><time><value>2011-03-11T05:52:31Z</value></time>"
                           "<waveformID networkCode=\"II\" stationCode=\"TLY\"/></pick>";
  const Result<PickFile> read = parsedDocument(withPick(sound + "<pick publicID=\"smi:local/2\"/>"));
  ASSERT_TRUE(read) << read.error().toStdString();
  EXPECT_EQ(read->picks.size(), 1U);
  EXPECT_EQ(read->notes, QStringList{"in: 1 of 2 picks left out, the first on line 1: time: found nothing"});
  EXPECT_TRUE(parsedDocument(withPick(""))->picks.empty());
  EXPECT_FALSE(parsedDocument(withPick(sound).chopped(30)));
  EXPECT_FALSE(parsedDocument("<html/>"));
}

TEST(QuakeMlPicks, withWhatXmlHasNoneOfAreRefusedInOneLine) {
  Pick pick = fullPick();
  pick.comment = QChar(1);
  EXPECT_EQ(quakeMlOf({fullPick(), pick}, nullptr, QStringLiteral("out")).error(),
            QStringLiteral("out: pick 2 holds a character that XML has none of"));
}

TEST(QuakeMlPicks, standAmongElementsThatNobodyKnows) {
  const Result<QByteArray> text = quakeMlOf({fullPick(), tlyPick("S", "2011-03-11T05:58:00Z")}, nullptr, "out");
  ASSERT_TRUE(text) << text.error().toStdString();
  const Result<PickFile> plain = parsedDocument(*text);
  const Result<PickFile> read = parsedDocument(test::withUnknownElements(*text));
  ASSERT_TRUE(plain && read) << read.error().toStdString();
  ASSERT_EQ(plain->picks.size(), 2U);
  EXPECT_TRUE(read->picks == plain->picks);
  EXPECT_TRUE(read->notes.isEmpty());
}
