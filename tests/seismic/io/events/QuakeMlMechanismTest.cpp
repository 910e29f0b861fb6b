#include "tests/seismic/EventTexts.h"
#include "tests/seismic/UnknownElements.h"

using namespace xov;
using test::onlyEvent;
using test::parsedEvents;
using test::timeText;

namespace {

QByteArray number(const char* element, const char* text) {
  return QByteArray("<") + element + "><value>" + text + "</value></" + element + ">";
}

QByteArray plane(const char* element, const char* strike, const char* dip, const char* rake) {
  return QByteArray("<") + element + ">" + number("strike", strike) + number("dip", dip) + number("rake", rake) +
         "</" + element + ">";
}

const QByteArray kOrigins = "<origin publicID=\"o\"><time><value>2011-03-11T05:46:24Z</value></time></origin>"
                            "<origin publicID=\"c\"><time><value>2011-03-11T05:47:33Z</value></time>"
                            "<latitude><value>37.52</value></latitude><longitude><value>143.05</value></longitude>"
                            "<depth><value>20000</value></depth></origin><preferredOriginID>o</preferredOriginID>";
const QByteArray kPlanes = "<nodalPlanes>" + plane("nodalPlane1", "203", "10", "88") +
                           plane("nodalPlane2", "25", "80", "90") + "</nodalPlanes>";
const QByteArray kTensor = "<momentTensor><derivedOriginID>c</derivedOriginID>" + number("scalarMoment", "5.31e22") +
                           "<tensor>" + number("Mrr", "1.73e22") + number("Mtt", "-2.81e21") +
                           number("Mpp", "-1.45e22") + number("Mrt", "2.12e22") + number("Mrp", "4.55e22") +
                           number("Mtp", "-6.57e21") +
                           "</tensor><sourceTimeFunction><type>triangle</type><duration>140</duration>"
                           "</sourceTimeFunction></momentTensor>";

QByteArray mechanism(const char* id, const QByteArray& contents) {
  return QByteArray("<focalMechanism publicID=\"") + id + "\">" + contents + "</focalMechanism>";
}

QByteArray document(const QByteArray& contents) {
  return "<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.2\"><eventParameters>\n<event publicID=\"e\">" +
         kOrigins + "\n" + contents + "</event></eventParameters></quakeml>";
}

} // namespace

TEST(QuakeMlMechanism, hasTensorPlanesAndCentroid) {
  const HypocentreValues values = onlyEvent(document(mechanism("m", kPlanes + kTensor)));
  EXPECT_EQ(timeText(values.originTime), "2011-03-11T05:46:24.000Z");
  ASSERT_TRUE(values.mechanism && values.mechanism->tensor);
  const FocalMechanism& found = *values.mechanism;
  EXPECT_EQ(found.tensor->Mrr, 1.73e22);
  EXPECT_EQ(found.tensor->Mtt, -2.81e21);
  EXPECT_EQ(found.tensor->Mpp, -1.45e22);
  EXPECT_EQ(found.tensor->Mrt, 2.12e22);
  EXPECT_EQ(found.tensor->Mrp, 4.55e22);
  EXPECT_EQ(found.tensor->Mtp, -6.57e21);
  EXPECT_EQ(found.scalarMomentNm, 5.31e22);
  EXPECT_EQ(found.halfDurationS, 70);
  EXPECT_EQ(timeText(found.centroidTime), "2011-03-11T05:47:33.000Z");
  EXPECT_EQ(found.centroidLatitudeDeg, 37.52F);
  EXPECT_EQ(found.centroidLongitudeDeg, 143.05F);
  EXPECT_EQ(found.centroidDepthKm, 20);
  EXPECT_EQ(found.planes[0].strikeDeg, 203);
  EXPECT_EQ(found.planes[0].dipDeg, 10);
  EXPECT_EQ(found.planes[0].rakeDeg, 88);
  EXPECT_EQ(found.planes[1].strikeDeg, 25);
}

TEST(QuakeMlMechanism, beginsWithThePreferredPlane) {
  QByteArray planes = kPlanes;
  planes.replace("<nodalPlanes>", "<nodalPlanes preferredPlane=\"2\">");
  const HypocentreValues values = onlyEvent(document(mechanism("m", planes)));
  ASSERT_TRUE(values.mechanism);
  EXPECT_EQ(values.mechanism->planes[0].strikeDeg, 25);
  EXPECT_EQ(values.mechanism->planes[1].strikeDeg, 203);
  EXPECT_FALSE(values.mechanism->tensor);
}

TEST(QuakeMlMechanism, isThePreferredOneElseTheFirstThatTellsSomething) {
  const QByteArray empty = mechanism("none", "<azimuthalGap>30</azimuthalGap>");
  const QByteArray first = mechanism("a", "<nodalPlanes>" + plane("nodalPlane1", "1", "2", "3") + "</nodalPlanes>");
  const QByteArray second = mechanism("b", "<nodalPlanes>" + plane("nodalPlane1", "4", "5", "6") + "</nodalPlanes>");
  EXPECT_EQ(onlyEvent(document(empty + first + second)).mechanism->planes[0].strikeDeg, 1);
  EXPECT_EQ(onlyEvent(document("<preferredFocalMechanismID>b</preferredFocalMechanismID>" + first + second))
                .mechanism->planes[0]
                .strikeDeg,
            4);
  EXPECT_FALSE(onlyEvent(document(empty)).mechanism);
}

TEST(QuakeMlMechanism, thatCannotBeReadLeavesItsEvent) {
  const QByteArray steep = mechanism("m", "<nodalPlanes>" + plane("nodalPlane1", "1", "91", "3") + "</nodalPlanes>");
  const auto file = parsedEvents(document(steep));
  ASSERT_EQ(file->events.size(), 1U);
  EXPECT_FALSE(file->events[0]->values().mechanism);
  EXPECT_EQ(file->notes, QStringList("in: 1 of 1 focal mechanism left out, the first on line 3: dip: found \"91\", "
                                     "expected 0 to 90"));
}

TEST(QuakeMlMechanism, needsAllElementsOfATensor) {
  QByteArray tensor = kTensor;
  tensor.replace(number("Mrp", "4.55e22"), "");
  const auto file = parsedEvents(document(mechanism("m", tensor)));
  ASSERT_EQ(file->events.size(), 1U);
  EXPECT_FALSE(file->events[0]->values().mechanism);
  ASSERT_EQ(file->notes.size(), 1);
  EXPECT_TRUE(file->notes[0].endsWith(QLatin1String("a moment tensor without all of its six elements")))
      << file->notes[0].toStdString();
}

TEST(QuakeMlMechanism, standsAmongElementsThatNobodyKnows) {
  const QByteArray text = document(mechanism("m", kPlanes + kTensor));
  const HypocentreValues values = onlyEvent(test::withUnknownElements(text));
  EXPECT_EQ(timeText(values.originTime), "2011-03-11T05:46:24.000Z");
  ASSERT_TRUE(values.mechanism && values.mechanism->tensor);
  EXPECT_EQ(values.mechanism->tensor->Mrr, 1.73e22);
  EXPECT_EQ(values.mechanism->tensor->Mtp, -6.57e21);
  EXPECT_EQ(values.mechanism->scalarMomentNm, 5.31e22);
  EXPECT_EQ(values.mechanism->halfDurationS, 70);
  EXPECT_EQ(values.mechanism->centroidLatitudeDeg, 37.52F);
  EXPECT_EQ(values.mechanism->planes[0].strikeDeg, 203);
  EXPECT_EQ(values.mechanism->planes[1].rakeDeg, 90);
}
