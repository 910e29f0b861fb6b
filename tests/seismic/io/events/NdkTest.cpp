#include "tests/seismic/EventTexts.h"

using namespace xov;
using test::onlyEvent;
using test::parsedEvents;
using test::timeText;

namespace {

// Invented; the columns are those of the project's description.
const QByteArray kHypocentre = "TEST 2001/02/03 23:59:50.5 -12.25  170.50  33.0 6.5 7.1 ISLANDS OF NOWHERE\n";
const QByteArray kData = "C200102032359A   B: 10   20  40 S: 30   40  50 M: 50   60 125 CMT: 1 TRIHD: 12.5\n";
const QByteArray kCentroid = "CENTROID:     20.5 0.1 -12.50 0.01  171.25 0.02  40.0  0.5 FREE S-20010601000000\n";
const QByteArray kTensor = "28  1.250 0.010 -0.500 0.020 -0.750 0.030  0.100 0.040 -0.200 0.050  0.300 0.060\n";
const QByteArray kPlanes = "V10   1.300 80 270  -0.300  5  20  -1.000 10 110   1.000  20 35   80 210 55   97\n";
const QByteArray kEvent = kHypocentre + kData + kCentroid + kTensor + kPlanes;

} // namespace

TEST(Ndk, givesTheReferenceOriginAndItsMagnitudes) {
  const HypocentreValues values = onlyEvent(kEvent);
  EXPECT_EQ(timeText(values.originTime), "2001-02-03T23:59:50.500Z");
  EXPECT_EQ(values.latitudeDeg, -12.25F);
  EXPECT_EQ(values.longitudeDeg, 170.5F);
  EXPECT_EQ(values.depthKm, 33);
  EXPECT_EQ(values.name, QStringLiteral("ISLANDS OF NOWHERE"));
  EXPECT_EQ(values.mb, 6.5F);
  EXPECT_EQ(values.Ms, 7.1F);
}

// 2/3 (28 - 16.1) = 7.9333 for 1.000 x 10^28 dyne cm, which are 10^21 N m.
TEST(Ndk, givesTheMomentAndItsMagnitude) {
  const HypocentreValues values = onlyEvent(kEvent);
  EXPECT_EQ(values.Mw, 7.93F);
  EXPECT_EQ(values.preferredMagnitude, values.Mw);
  ASSERT_TRUE(values.mechanism);
  EXPECT_NEAR(values.mechanism->scalarMomentNm / 1e21, 1, 1e-12);
}

TEST(Ndk, givesTheMechanism) {
  const HypocentreValues values = onlyEvent(kEvent);
  ASSERT_TRUE(values.mechanism && values.mechanism->tensor);
  const FocalMechanism& mechanism = *values.mechanism;
  EXPECT_EQ(timeText(mechanism.centroidTime), "2001-02-04T00:00:11.000Z") << "20.5 s later is the next day";
  EXPECT_EQ(mechanism.centroidLatitudeDeg, -12.5F);
  EXPECT_EQ(mechanism.centroidLongitudeDeg, 171.25F);
  EXPECT_EQ(mechanism.centroidDepthKm, 40);
  EXPECT_EQ(mechanism.halfDurationS, 12.5F);
  EXPECT_NEAR(mechanism.tensor->Mrr / 1e21, 1.25, 1e-12);
  EXPECT_NEAR(mechanism.tensor->Mtt / 1e21, -0.5, 1e-12);
  EXPECT_NEAR(mechanism.tensor->Mpp / 1e21, -0.75, 1e-12);
  EXPECT_NEAR(mechanism.tensor->Mrt / 1e21, 0.1, 1e-12);
  EXPECT_NEAR(mechanism.tensor->Mrp / 1e21, -0.2, 1e-12);
  EXPECT_NEAR(mechanism.tensor->Mtp / 1e21, 0.3, 1e-12);
  EXPECT_EQ(mechanism.planes[0].strikeDeg, 20);
  EXPECT_EQ(mechanism.planes[0].dipDeg, 35);
  EXPECT_EQ(mechanism.planes[0].rakeDeg, 80);
  EXPECT_EQ(mechanism.planes[1].strikeDeg, 210);
  EXPECT_EQ(mechanism.planes[1].dipDeg, 55);
  EXPECT_EQ(mechanism.planes[1].rakeDeg, 97);
}

TEST(Ndk, takesAMagnitudeOfZeroForNone) {
  const HypocentreValues values = onlyEvent(QByteArray(kEvent).replace("6.5 7.1", "0.0 0.0"));
  EXPECT_EQ(values.magnitudes.size(), 1U);
  EXPECT_EQ(values.mb, kUndefinedValue);
  EXPECT_EQ(values.Ms, kUndefinedValue);
}

TEST(Ndk, countsEventsWithABadFieldAndNamesTheFirst) {
  const auto file = parsedEvents(kEvent + QByteArray(kEvent).replace("-12.25", "-95.00") +
                                 QByteArray(kEvent).replace("2001/02/03", "2001/02/30") +
                                 QByteArray(kEvent).replace("28  1.250", "28  *****") +
                                 QByteArray(kEvent).replace("28  1.250", "99  1.250"));
  EXPECT_EQ(file->events.size(), 1U);
  EXPECT_EQ(file->notes, QStringList("in: 4 of 5 events left out, the first on line 6: latitude: found \"-95.00\", "
                                     "expected -90 to 90"));
}

TEST(Ndk, losesOneEventToALineTooFewOrTooMany) {
  const auto lacking = parsedEvents(kEvent + kHypocentre + kData + kCentroid + kPlanes + kEvent);
  EXPECT_EQ(lacking->events.size(), 2U);
  EXPECT_EQ(lacking->notes, QStringList("in: 1 of 3 events left out, the first on line 6: found 4 lines, expected 5 "
                                        "an event"));
  const auto repeated = parsedEvents(kEvent + kPlanes.repeated(20) + kEvent);
  EXPECT_EQ(repeated->events.size(), 1U);
  EXPECT_EQ(repeated->notes,
            QStringList("in: 1 of 2 events left out, the first on line 1: found more lines, expected "
                        "5 an event"));
  const auto cutOff = parsedEvents(kEvent + kHypocentre + kData + kCentroid);
  EXPECT_EQ(cutOff->events.size(), 1U);
  EXPECT_EQ(cutOff->notes.size(), 1);
}
