#include "XOV_Graphics/seismic/io/stations/InventoryReader.h"
#include "XOV_Graphics/seismic/io/stations/StationText.h"
#include "tests/seismic/TemporaryFiles.h"

namespace xov {
namespace {

Result<StationInventory> parse(const QByteArray& text) { return parseInventory(text, QStringLiteral("in")); }

const PolesAndZeros& filterOf(const StationChannel& channel) {
  return std::get<PolesAndZeros>(channel.response.stages.at(0).filter);
}

const char* const kAnnotated = "* **********************************\n"
                               "* NETWORK   (KNETWK): IU\n"
                               "* STATION    (KSTNM): ANMO\n"
                               "* LOCATION   (KHOLE): 00\n"
                               "* CHANNEL   (KCMPNM): BHZ\n"
                               "* CREATED           : 2020-06-20T18:01:25\n"
                               "* START             : 2002-11-19T21:07:00\n"
                               "* END               : 2008-06-30T20:00:00\n"
                               "* LATITUDE    (DEG) : 34.945911\n"
                               "* LONGITUDE   (DEG) : -106.457200\n"
                               "* ELEVATION     (M) : 1820.0\n"
                               "* DEPTH         (M) : 100.0\n"
                               "* DIP        (SEED) : -90.0\n"
                               "* AZIMUTH     (DEG) : 0.0\n"
                               "* SAMPLE RATE  (HZ) : 20.0\n"
                               "* INPUT UNIT        : M\n"
                               "* OUTPUT UNIT       : COUNTS\n"
                               "* COMMENT           : \n"
                               "* **********************************\n"
                               "ZEROS\t3\n"
                               "\t+0.000000e+00\t+0.000000e+00\n"
                               "POLES\t2\n"
                               "\t-3.701000e-02\t-3.701000e-02\n"
                               "\t-3.701000e-02\t+3.701000e-02\n"
                               "CONSTANT\t+9.636000e+08\n";

TEST(SacPoleZero, givesThePolesZerosAndConstantOfDisplacement) {
  // A zero that is not listed lies at 0, as the rest of the first line's three do.
  const auto inventory = parse("ZEROS 3\n -1.5 2\nPOLES 1\n-3e0 4\n\nconstant 12.5\n");
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  ASSERT_EQ(inventory->channels.size(), 1U);
  EXPECT_TRUE(inventory->stations.empty());
  const StationChannel& channel = inventory->channels.front();
  EXPECT_EQ(channel.codes, ChannelCodes());
  const PolesAndZeros& filter = filterOf(channel);
  EXPECT_EQ(filter.variable, TransferVariable::LaplaceRadians);
  EXPECT_EQ(filter.normalization, 12.5);
  EXPECT_EQ(filter.zeros, (std::vector<std::complex<double>>{{-1.5, 2}, 0, 0}));
  EXPECT_EQ(filter.poles, (std::vector<std::complex<double>>{{-3, 4}}));
  EXPECT_EQ(channel.response.stages[0].inputUnits, QStringLiteral("M"));
  EXPECT_EQ(channel.response.stages[0].gain, 1);
  EXPECT_FALSE(channel.response.stages[0].gainHz);
}

TEST(SacPoleZero, takesCodesTimesAndPlaceFromTheComments) {
  const auto inventory = parse(kAnnotated);
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  ASSERT_EQ(inventory->channels.size(), 1U);
  const StationChannel& channel = inventory->channels.front();
  EXPECT_EQ(channelName(channel.codes), QStringLiteral("IU.ANMO.00.BHZ"));
  EXPECT_EQ(channel.epoch.start, QDateTime(QDate(2002, 11, 19), QTime(21, 7), Qt::UTC));
  EXPECT_EQ(channel.epoch.end, QDateTime(QDate(2008, 6, 30), QTime(20, 0), Qt::UTC));
  EXPECT_EQ(channel.latitudeDeg, 34.945911);
  EXPECT_EQ(channel.longitudeDeg, -106.4572);
  EXPECT_EQ(channel.elevationM, 1820);
  EXPECT_EQ(channel.depthM, 100);
  EXPECT_EQ(channel.dipDeg, -90);
  EXPECT_EQ(channel.azimuthDeg, 0);
  EXPECT_EQ(channel.sampleRateHz, 20);
  EXPECT_EQ(filterOf(channel).zeros.size(), 3U);
  EXPECT_EQ(filterOf(channel).normalization, 9.636e8);
  ASSERT_EQ(inventory->stations.size(), 1U);
  EXPECT_EQ(inventory->stations.front().code, QStringLiteral("ANMO"));
  const auto stations = parseStations(kAnnotated, QStringLiteral("in"));
  ASSERT_TRUE(stations) << stations.error().toStdString();
  EXPECT_EQ(stations->front().latitudeDeg, 34.945911);
}

TEST(SacPoleZero, separatesBlocks) {
  // By the comments of the next, or by a part that comes again.
  const auto inventory =
      parse(QByteArray(kAnnotated) + "* CHANNEL (KCMPNM): BHN\nZEROS 0\nPOLES 1\n-1 0\nCONSTANT 2\n" +
            "ZEROS 1\nPOLES 0\nCONSTANT 3\n");
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  ASSERT_EQ(inventory->channels.size(), 3U);
  EXPECT_EQ(channelName(inventory->channels[1].codes), QStringLiteral("...BHN"));
  EXPECT_EQ(filterOf(inventory->channels[1]).poles.size(), 1U);
  EXPECT_EQ(filterOf(inventory->channels[1]).normalization, 2);
  EXPECT_EQ(inventory->channels[2].codes, ChannelCodes());
  EXPECT_EQ(filterOf(inventory->channels[2]).zeros.size(), 1U);
  EXPECT_EQ(filterOf(inventory->channels[2]).normalization, 3);
}

TEST(SacPoleZero, blocksStandWhereTheirFirstPartDoes) {
  const auto inventory =
      parse("* STATION : A\nZEROS 1\n1 0\nPOLES 0\nCONSTANT 2\n* STATION : B\nCONSTANT 3\nPOLES 0\n");
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  ASSERT_EQ(inventory->channels.size(), 2U);
  EXPECT_EQ(inventory->channels[0].line, 2);
  EXPECT_EQ(inventory->channels[1].line, 7);
}

TEST(SacPoleZero, daysOfTheYearGoFromItsFirstToItsLast) {
  const auto start = [](const char* time) {
    const auto inventory = parse(QByteArray("* START : ") + time + ",00:00:00\nCONSTANT 1\n");
    return inventory ? inventory->channels[0].epoch.start.date() : QDate();
  };
  EXPECT_EQ(start("2002,001"), QDate(2002, 1, 1));
  EXPECT_EQ(start("2002,365"), QDate(2002, 12, 31));
  EXPECT_EQ(start("2004,366"), QDate(2004, 12, 31));
  EXPECT_EQ(start("2002,000"), QDate());
  EXPECT_EQ(start("2002,366"), QDate());
}

TEST(SacPoleZero, knowsTimesByTheDayOfTheYearAndEpochsWithoutEnd) {
  const auto inventory = parse("* START : 2004,060,21:07:00.5000\n* END : No Ending Time\nCONSTANT 1\n");
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  // The sixtieth day of a leap year.
  EXPECT_EQ(inventory->channels[0].epoch.start, QDateTime(QDate(2004, 2, 29), QTime(21, 7, 0, 500), Qt::UTC));
  EXPECT_FALSE(inventory->channels[0].epoch.end.isValid());
}

TEST(SacPoleZero, refusesOtherLinesWithTheirNumber) {
  EXPECT_EQ(parse("ZEROS 1\n0 0\n1 1\n").error(),
            QStringLiteral("in: line 3: expected ZEROS, POLES, CONSTANT or a comment"));
  EXPECT_EQ(parse("ZEROS 2\n0 zero\n").error(), QStringLiteral("in: line 2: expected a real and an imaginary part"));
  EXPECT_EQ(parse("POLES 501\n").error(), QStringLiteral("in: line 1: expected a number of 0 to 500"));
  EXPECT_EQ(parse("POLES -1\n").error(), QStringLiteral("in: line 1: expected a number of 0 to 500"));
  EXPECT_EQ(parse("CONSTANT inf\n").error(), QStringLiteral("in: line 1: CONSTANT: expected a number"));
  EXPECT_EQ(parse("* LATITUDE : north\n").error(), QStringLiteral("in: line 1: LATITUDE: expected a number"));
  EXPECT_EQ(parse("* START : 2004-13-01\n").error(),
            QStringLiteral("in: line 1: time: found \"2004-13-01\", expected a time such as 2011-03-11T05:46:24.1Z"));
  EXPECT_EQ(parse("* nothing\n").error(), QStringLiteral("in: holds no poles and zeros"));
  EXPECT_EQ(parse(QByteArray("CONSTANT 1\n").repeated(20'001)).error(),
            QStringLiteral("in: line 20001: more than 20000 blocks"));
}

} // namespace
} // namespace xov
