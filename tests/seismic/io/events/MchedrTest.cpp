#include "tests/seismic/EventTexts.h"

using namespace xov;
using test::onlyEvent;
using test::parsedEvents;
using test::timeText;

namespace {

// Invented; records of 60 columns.
const QByteArray kOrigin = "HY19991231 235958.25 21.500S 170.250W  33.0N0.95 45W180     \n";
const QByteArray kErrors = "E  0.27   1.72   1.64   2.7 5.1  20 5.4 105.9MWTEST5.6MLOTH  \n";
const QByteArray kOfficial = "A   45  40 90.5 5.9MWTEST         0       0       0A        \n";
const QByteArray kOthers = "AH19991231 235957.00 21.400S 170.200W  30.0         20  20 OTH \n"
                           "AE 0.10   1.00   1.00   1.0 80.0 5.2MD            0.0   \n"
                           "P ABC  P     eP    000010.00                                \n"
                           "C Felt.                                                     \n";
const QByteArray kEvent = kOrigin + kErrors + kOfficial + kOthers;

} // namespace

TEST(Mchedr, givesTheOrigin) {
  const HypocentreValues values = onlyEvent(kEvent);
  EXPECT_EQ(timeText(values.originTime), "1999-12-31T23:59:58.250Z");
  EXPECT_EQ(values.latitudeDeg, -21.5F);
  EXPECT_EQ(values.longitudeDeg, -170.25F);
  EXPECT_EQ(values.depthKm, 33);
  const HypocentreValues north = onlyEvent("HY20000101 000000.00 21.500N 170.250E      \n");
  EXPECT_EQ(north.latitudeDeg, 21.5F);
  EXPECT_EQ(north.longitudeDeg, 170.25F);
  EXPECT_FALSE(isDefined(north.depthKm));
}

TEST(Mchedr, givesTheMagnitudesAndPrefersTheOfficialOne) {
  const HypocentreValues values = onlyEvent(kEvent);
  ASSERT_EQ(values.magnitudes.size(), 5U);
  EXPECT_EQ(values.mb, 5.1F);
  EXPECT_EQ(values.Ms, 5.4F);
  EXPECT_EQ(values.Mw, 5.9F);
  EXPECT_EQ(values.magnitudes[3].type, QStringLiteral("ML"));
  EXPECT_EQ(values.magnitudes[3].value, 5.6F);
  EXPECT_EQ(values.magnitudes[4].type, QStringLiteral("MD"));
  EXPECT_EQ(values.magnitudes[4].value, 5.2F);
  EXPECT_EQ(values.preferredMagnitude, 5.9F);
  EXPECT_EQ(onlyEvent(QByteArray(kEvent).replace("90.5 5.9MW", "90.5 5.6ML")).preferredMagnitude, 5.6F);
  const HypocentreValues another = onlyEvent(QByteArray(kEvent).replace("90.5 5.9MW", "90.5 6.2MW"));
  EXPECT_EQ(another.preferredMagnitude, 6.2F) << "it need not be among those of E";
  EXPECT_EQ(another.magnitudes.size(), 6U);
}

TEST(Mchedr, countsEventsWithABadFieldAndNamesTheFirst) {
  const auto file = parsedEvents(kEvent + QByteArray(kEvent).replace("19991231 23", "19991231 25") +
                                 QByteArray(kEvent).replace("21.500", "91.500") + "HY1999\n");
  EXPECT_EQ(file->events.size(), 1U);
  EXPECT_EQ(file->notes,
            QStringList("in: 3 of 4 events left out, the first on line 8: time: found \"1999 12 31 25 59 "
                        "58.25\", expected a time such as 2011-03-11T05:46:24.1Z"));
}

TEST(Mchedr, isNotWhatMerelyBeginsLikeIt) {
  EXPECT_FALSE(parsedEvents("HYPOCENTRES OF 1999\n"));
  EXPECT_EQ(onlyEvent("HY,time,mag\nX,2020-01-02,4\n").originTime.date().year(), 2020);
}

namespace {

// Invented, too. Digits have their points where the format puts them: 21.60 S, 170.40 W, 33.5 km, half duration 4.2
// s, 1.9 times 10^18 N m; elements in hundredths.
const QByteArray kCentroid = "DpTESTC02359594  2160S   17040W   0335             042190118\n";
const QByteArray kTensor = "Dt 18 rr-034001tt-014001pp 048001rt-026001rp-172001tp-047001\n";
const QByteArray kAxes = "Da 18 186   37 82-001   17185-185   48295 11618-160  784 -73\n";

} // namespace

TEST(Mchedr, givesTheMomentTensorWithItsCentroidAndPlanes) {
  const HypocentreValues values = onlyEvent(kEvent + kCentroid + kTensor + kAxes);
  ASSERT_TRUE(values.mechanism);
  const FocalMechanism& mechanism = *values.mechanism;
  EXPECT_EQ(timeText(mechanism.centroidTime), "1999-12-31T23:59:59.400Z");
  EXPECT_EQ(mechanism.centroidLatitudeDeg, -21.6F);
  EXPECT_EQ(mechanism.centroidLongitudeDeg, -170.4F);
  EXPECT_EQ(mechanism.centroidDepthKm, 33.5F);
  EXPECT_EQ(mechanism.halfDurationS, 4.2F);
  EXPECT_DOUBLE_EQ(mechanism.scalarMomentNm, 1.9e18);
  ASSERT_TRUE(mechanism.tensor);
  EXPECT_DOUBLE_EQ(mechanism.tensor->Mrr, -0.34e18);
  EXPECT_DOUBLE_EQ(mechanism.tensor->Mtt, -0.14e18);
  EXPECT_DOUBLE_EQ(mechanism.tensor->Mpp, 0.48e18);
  EXPECT_DOUBLE_EQ(mechanism.tensor->Mrt, -0.26e18);
  EXPECT_DOUBLE_EQ(mechanism.tensor->Mrp, -1.72e18);
  EXPECT_DOUBLE_EQ(mechanism.tensor->Mtp, -0.47e18);
  EXPECT_EQ(mechanism.planes[0].strikeDeg, 116);
  EXPECT_EQ(mechanism.planes[0].dipDeg, 18);
  EXPECT_EQ(mechanism.planes[0].rakeDeg, -160);
  EXPECT_EQ(mechanism.planes[1].strikeDeg, 7);
  EXPECT_EQ(mechanism.planes[1].dipDeg, 84);
  EXPECT_EQ(mechanism.planes[1].rakeDeg, -73);
  EXPECT_FALSE(onlyEvent(kEvent).mechanism);
}

TEST(Mchedr, keepsTheFirstSolutionWithATensor) {
  const QByteArray other = QByteArray(kTensor).replace("rr-034", "rr 099");
  EXPECT_DOUBLE_EQ(onlyEvent(kEvent + kCentroid + kTensor + kCentroid + other).mechanism->tensor->Mrr, -0.34e18);
  const QByteArray bare = "DpPPT S                                               18  18\n";
  EXPECT_DOUBLE_EQ(onlyEvent(kEvent + bare + kCentroid + kTensor).mechanism->tensor->Mrr, -0.34e18);
  EXPECT_FALSE(onlyEvent(kEvent + bare).mechanism) << "a moment alone is no mechanism";
}

TEST(Mchedr, putsACentroidAfterMidnightOnTheNextDay) {
  const QByteArray late = QByteArray(kCentroid).replace("C02359594", "C00000021");
  EXPECT_EQ(timeText(onlyEvent(kEvent + late + kTensor).mechanism->centroidTime), "2000-01-01T00:00:02.100Z");
}

TEST(Mchedr, leavesOutAnEventWhoseTensorCannotBeRead) {
  for (const QByteArray& bad :
       {QByteArray(kTensor).replace("rr-034", "rrx034"), QByteArray(kTensor).replace("tt", "xx"),
        QByteArray(kTensor).replace("Dt 18", "Dt 99"), kTensor.left(40) + "\n"}) {
    const auto file = parsedEvents(kEvent + kEvent + kCentroid + bad);
    EXPECT_EQ(file->events.size(), 1U) << bad.toStdString();
    EXPECT_EQ(file->notes.size(), 1) << bad.toStdString();
  }
}
