#include "XOV_Graphics/seismic/prepare/Components.h"

#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace xov {
namespace {

SeismogramArray recordsOf(const std::vector<const char*>& components) {
  SeismogramArray records;
  for (const char* component : components)
    records.push_back(makeRecord({.component = component}));
  return records;
}

// The components from top to bottom; "-" for one that is missing.
QStringList picked(const std::vector<const char*>& components, const QStringList& codes = {}) {
  const Result<ThreeComponents> found = pickComponents(recordsOf(components), codes);
  if (!found) return {found.error()};
  QStringList names;
  for (const auto& record : *found)
    names.append(record ? record->kcmpnm() : QStringLiteral("-"));
  return names;
}

TEST(PickComponents, ordersThemByTheirLastCharacter) {
  EXPECT_EQ(picked({"BHE", "BHN", "BHZ"}), (QStringList{"BHZ", "BHN", "BHE"}));
  EXPECT_EQ(picked({"BHT", "BHZ", "BHR"}), (QStringList{"BHZ", "BHR", "BHT"}));
  EXPECT_EQ(picked({"LH2", "LHZ", "LH1"}), (QStringList{"LHZ", "LH1", "LH2"}));
  EXPECT_EQ(picked({"bhe", "bhz", "bhn"}), (QStringList{"bhz", "bhn", "bhe"}));
}

TEST(PickComponents, takesThreeNumbersInTheirOrder) {
  EXPECT_EQ(picked({"BH3", "BH1", "BH2"}), (QStringList{"BH1", "BH2", "BH3"}));
}

TEST(PickComponents, leavesMissingOnesOut) {
  EXPECT_EQ(picked({"BHT"}), (QStringList{"-", "-", "BHT"}));
  EXPECT_EQ(picked({"BHE", "BHZ"}), (QStringList{"BHZ", "-", "BHE"}));
}

TEST(PickComponents, takesThreeRecordsThatItCannotTellApartInTheirOrder) {
  EXPECT_EQ(picked({"UP", "FWD", "SIDE"}), (QStringList{"UP", "FWD", "SIDE"}));
  EXPECT_EQ(picked({"BHZ", "HHZ", "LHZ"}), (QStringList{"BHZ", "HHZ", "LHZ"}));
}

TEST(PickComponents, obeysCodes) {
  EXPECT_EQ(picked({"BHZ", "BHN", "BHE", "BHR", "BHT"}, {"BHZ", "BHR", "BHT"}), (QStringList{"BHZ", "BHR", "BHT"}));
  EXPECT_EQ(picked({"BH1", "BH2", "BHZ"}, {"z", "2", "1"}), (QStringList{"BHZ", "BH2", "BH1"}));
  EXPECT_EQ(picked({"BHZ", "BHN"}, {"Z", "R", "T"}), (QStringList{"BHZ", "-", "-"}));
}

TEST(PickComponents, refusesTwoForOnePlace) {
  EXPECT_EQ(picked({"BHZ", "BHN", "BHR", "BHT"}),
            QStringList{"found II.TLY..BHN and II.TLY..BHR, expected one radial component"});
  EXPECT_EQ(picked({"BHZ", "HHZ", "BHN"}, {"Z", "N", "E"}),
            QStringList{"found II.TLY..BHZ and II.TLY..HHZ, expected one vertical component"});
}

TEST(PickComponents, refusesWhatFitsNoPlace) {
  EXPECT_EQ(picked({"LOG"}), QStringList{"found II.TLY..LOG, expected components that end in Z, R/N/1 or T/E/2"});
  EXPECT_EQ(picked({"BHZ", "LOG"}),
            QStringList{"found 2 records, expected a component that ends in Z, R/N/1 or T/E/2 of each"});
  EXPECT_EQ(picked({}), QStringList{"found no record, expected components"});
}

TEST(PickComponents, refusesTwoStations) {
  const Result<ThreeComponents> found =
      pickComponents({makeRecord({.component = "BHZ"}), makeRecord({.station = "ARU", .component = "BHN"})});
  EXPECT_EQ(found.error(), "found components of II.TLY and II.ARU, expected one station");
}

TEST(ObservationOf, putsPreparedRecordsInThePlacesOfPresentOnes) {
  const ThreeComponents components = {nullptr, makeRecord({.component = "BHN"}), makeRecord({.component = "BHE"})};
  const SeismogramArray present = presentComponents(components);
  EXPECT_EQ(present, (SeismogramArray{components[1], components[2]}));
  const SeismogramArray prepared = {makeRecord(), makeRecord()};
  const auto observation = observationOf(components, prepared);
  EXPECT_EQ(observation->vertical(), nullptr);
  EXPECT_EQ(observation->radial(), prepared[0]);
  EXPECT_EQ(observation->transverse(), prepared[1]);
  EXPECT_EQ(observationOf(components, {prepared[0]})->transverse(), nullptr);
}

} // namespace
} // namespace xov
