#include "apps/xov/output/RecordNames.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace xov::cli {
namespace {

SacHeader headerOf(const char* network, const char* station, const char* location, const char* channel) {
  SacHeader header;
  header.delta = 1;
  header.b = 0;
  header.knetwk = network;
  header.kstnm = station;
  header.khole = location;
  header.kcmpnm = channel;
  return header;
}

std::shared_ptr<SeismogramRecord> recordOf(const SacHeader& header) {
  return std::make_shared<SacSeismogram>(header, std::vector<float>(10));
}

TEST(RecordNames, tellCodesTimesAndTheEvent) {
  SacHeader header = headerOf("II", "TLY", "00", "BHZ");
  // Minute and second carry over: 23:59:59.5 and 1 s is the next day.
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(23, 59, 59, 500), Qt::UTC));
  header.b = 1;
  header.o = -30;
  NameFields fields = nameFieldsOf({recordOf(header)});
  EXPECT_EQ(fields["network"], "II");
  EXPECT_EQ(fields["station"], "TLY");
  EXPECT_EQ(fields["location"], "00");
  EXPECT_EQ(fields["channel"], "BHZ");
  EXPECT_EQ(fields["date"], "2011-03-12");
  EXPECT_EQ(fields["time"], "000000");
  EXPECT_EQ(fields["year"], "2011");
  EXPECT_EQ(fields["day"], "071"); // 31 + 28 + 12
  EXPECT_EQ(fields["event"], "20110311T235929");
}

TEST(RecordNames, haveAValueForEveryFieldThatIsTold) {
  const NameFields fields = nameFieldsOf({recordOf(headerOf("II", "TLY", "00", "BHZ"))});
  for (const QString& name : recordFieldNames())
    EXPECT_TRUE(fields.contains(name)) << qPrintable(name);
  EXPECT_EQ(fields.size(), std::size_t(recordFieldNames().size()));
}

TEST(RecordNames, joinAFewCodesAndCountMore) {
  const auto channelsOf = [](std::initializer_list<const char*> channels) {
    SeismogramArray records;
    for (const char* channel : channels)
      records.push_back(recordOf(headerOf("II", "TLY", "00", channel)));
    return nameFieldsOf(records)["channel"];
  };
  EXPECT_EQ(channelsOf({"BHZ", "BHE", "BHZ", "BHN"}), "BHE+BHN+BHZ");
  EXPECT_EQ(channelsOf({"BHZ", "BHE", "BHN", "LHZ"}), "several");
}

TEST(RecordNames, leaveCodesThatAreNotSetEmptyAndCallTimesUnknown) {
  SacHeader header;
  header.delta = 1;
  header.b = 0;
  NameFields fields = nameFieldsOf({recordOf(header)});
  EXPECT_EQ(fields["network"], "");
  EXPECT_EQ(fields["station"], "");
  for (const char* name : {"date", "time", "year", "day", "event"})
    EXPECT_EQ(fields[QLatin1String(name)], "unknown") << name;
}

TEST(RecordNames, takeTheEarliestSample) {
  SacHeader late = headerOf("II", "TLY", "00", "BHZ");
  SacHeader early = late;
  setReferenceTime(late, QDateTime(QDate(2012, 1, 1), QTime(0, 0), Qt::UTC));
  setReferenceTime(early, QDateTime(QDate(2011, 12, 31), QTime(1, 2, 3), Qt::UTC));
  NameFields fields = nameFieldsOf({recordOf(late), recordOf(early)});
  EXPECT_EQ(fields["date"], "2011-12-31");
  EXPECT_EQ(fields["time"], "010203");
  EXPECT_EQ(fields["day"], "365");
}

} // namespace
} // namespace xov::cli
