#include "XOV_Graphics/seismic/prepare/PhaseTimes.h"

#include "XOV_Graphics/seismic/arrivals/Arrivals.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/FakeRecord.h"

namespace xov {
namespace {

using testing::FakeRecord;

/// A minute after its event, 33 km deep.
struct RecordOfAnEvent : FakeRecord {
  explicit RecordOfAnEvent(float distance) {
    caption = QStringLiteral("II.TLY");
    originSeconds = -60;
    distanceDeg = distance;
    depthKm = 33;
  }
};

TEST(PhaseSeconds, areThoseOfAPickOfThatNameBeforeAnythingElse) {
  RecordOfAnEvent record(30);
  record.picks[3] = 7;
  record.labels[3] = QStringLiteral("P");
  EXPECT_EQ(*phaseSeconds(record, "P"), 7);
}

TEST(PhaseSeconds, areThoseOfAFieldOfTheHeader) {
  RecordOfAnEvent record(30);
  record.picks = {{0, 1}, {9, 2}, {10, 3}, {11, 4}};
  EXPECT_EQ(*phaseSeconds(record, "T0"), 1);
  EXPECT_EQ(*phaseSeconds(record, "T9"), 2);
  EXPECT_EQ(*phaseSeconds(record, "A"), 3);
  EXPECT_EQ(*phaseSeconds(record, "F"), 4);
  EXPECT_EQ(*phaseSeconds(record, "O"), -60);
  for (const char* name : {"T1", "T10", "t0", "B", ""})
    EXPECT_EQ(phaseSeconds(record, name).error(), QStringLiteral("II.TLY: found no pick ") + name);
}

TEST(PhaseSeconds, areExpectedAfterTheOriginTimeWhereNobodyHasPickedThePhase) {
  const std::vector<PhaseArrival> p = arrivalsAt(30, 33, std::vector{SeismicPhase::P});
  ASSERT_FALSE(p.empty());
  EXPECT_NEAR(p.front().seconds, 366, 3); // six minutes at 30 degrees
  EXPECT_EQ(*phaseSeconds(RecordOfAnEvent(30), "P"), p.front().seconds - 60);
}

TEST(PhaseSeconds, areNotKnownWithoutTheEvent) {
  const QString error = "II.TLY: found no pick P, nor the event's origin time and distance to expect it from";
  RecordOfAnEvent record(30);
  record.originSeconds = kUndefinedValue;
  EXPECT_EQ(phaseSeconds(record, "P").error(), error);
  EXPECT_EQ(phaseSeconds(record, "O").error(), QStringLiteral("II.TLY: found no pick O"));
  EXPECT_EQ(phaseSeconds(RecordOfAnEvent(kUndefinedValue), "P").error(), error);
}

TEST(PhaseSeconds, areNoneWhereThePhaseDoesNotArrive) {
  EXPECT_EQ(phaseSeconds(RecordOfAnEvent(20), "PKP").error(),
            QStringLiteral("II.TLY: found no pick PKP, and none arrives at 20 degrees"));
}

} // namespace
} // namespace xov
