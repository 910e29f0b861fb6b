#include "XOV_Graphics/views/base/PlotReadout.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

constexpr QLatin1String kTime("time");

QString textOf(double value, double step, const QString& unit = QStringLiteral("s")) {
  PlotReadout readout;
  readout.add(kTime, value, unit, step);
  return readout.text();
}

TEST(PlotReadout, isEmptyAtFirst) {
  const PlotReadout readout;
  EXPECT_TRUE(readout.isEmpty());
  EXPECT_EQ(readout.text(), QString());
  EXPECT_EQ(readout.find(kTime), nullptr);
  EXPECT_TRUE(std::isnan(readout.value(kTime)));
}

TEST(PlotReadout, hasAsManyDecimalsAsTellNeighbouringPointsApart) {
  EXPECT_EQ(textOf(12.3456, 1), QStringLiteral("time 12 s"));
  EXPECT_EQ(textOf(12.3456, 0.5), QStringLiteral("time 12.3 s"));
  EXPECT_EQ(textOf(12.3456, 0.1), QStringLiteral("time 12.3 s"));
  EXPECT_EQ(textOf(12.3456, 0.02), QStringLiteral("time 12.35 s"));
  EXPECT_EQ(textOf(86400.25, 120), QStringLiteral("time 86400 s"));
  EXPECT_EQ(textOf(-0.2, 5), QStringLiteral("time 0 s")); // and not "-0"
}

TEST(PlotReadout, hasSixDigitsWhereNoStepIsKnown) {
  EXPECT_EQ(textOf(1234567, 0), QStringLiteral("time 1.23457e+06 s"));
  EXPECT_EQ(textOf(0.5, std::numeric_limits<double>::quiet_NaN()), QStringLiteral("time 0.5 s"));
  EXPECT_EQ(textOf(2.5, 1e-12), QStringLiteral("time 2.5 s"));
  EXPECT_EQ(textOf(1e300, 1), QStringLiteral("time 1e+300 s"));
}

TEST(PlotReadout, leavesOutWhatIsNoNumber) {
  for (const double odd : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
    EXPECT_EQ(textOf(odd, 1), QString());
  PlotReadout readout;
  readout.addText(kTime, QString());
  readout.addMoment(QDateTime());
  EXPECT_TRUE(readout.isEmpty());
}

TEST(PlotReadout, joinsWhatItTellsAndFindsValuesByName) {
  PlotReadout readout;
  readout.addText(QLatin1String("record"), QStringLiteral("II.TLY BHZ"));
  readout.add(kTime, 2, QStringLiteral("s"));
  readout.add(QLatin1String("azimuth"), 45, QStringLiteral("°"));
  EXPECT_EQ(readout.text(), QStringLiteral("II.TLY BHZ   time 2 s   azimuth 45°"));
  EXPECT_EQ(readout.value(kTime), 2);
  EXPECT_EQ(readout.find(kTime)->unit, QStringLiteral("s"));
  EXPECT_TRUE(std::isnan(readout.value(QLatin1String("record"))));
}

TEST(PlotReadout, tellsMomentsInUtcAndInLocalTime) {
  const QDateTime moment(QDate(2011, 3, 11), QTime(18, 46, 23, 120), Qt::UTC);
  PlotReadout readout;
  readout.addMoment(moment, 0.01, QTimeZone(-12600)); // 3.5 hours behind
  EXPECT_EQ(readout.text(), QStringLiteral("2011-03-11 18:46:23.120 UTC   local 15:16:23.120 -0330"));
  EXPECT_EQ(readout.value(QLatin1String("utc")), 1299869183.12); // 15044 days and 67583.12 s after 1970
  PlotReadout coarse;
  coarse.addMoment(moment, 60, QTimeZone(9 * 3600)); // the next day in Japan
  EXPECT_EQ(coarse.text(), QStringLiteral("2011-03-11 18:46:23 UTC   local 2011-03-12 03:46:23 +0900"));
}

TEST(PlotReadout, momentsAreReckonedToTheMillisecondWithinTenThousandYears) {
  const QDateTime reference(QDate(2011, 3, 11), QTime(5, 0), Qt::UTC);
  EXPECT_EQ(momentAfter(reference, -0.0016).toUTC(), reference.addMSecs(-2));
  EXPECT_FALSE(momentAfter(reference, 1e30).isValid());
  EXPECT_FALSE(momentAfter(reference, std::numeric_limits<double>::quiet_NaN()).isValid());
  EXPECT_FALSE(momentAfter(QDateTime(), 1).isValid());
}

TEST(PlotReadout, theUnitOfAnAxisIsInBracketsBehindItsName) {
  EXPECT_EQ(NamedUnit(QStringLiteral("Time (s)")).name, QStringLiteral("Time"));
  EXPECT_EQ(NamedUnit(QStringLiteral("Time (s)")).unit, QStringLiteral("s"));
  EXPECT_EQ(NamedUnit(QStringLiteral("Amplitude")).name, QStringLiteral("Amplitude"));
  EXPECT_EQ(NamedUnit(QStringLiteral("Amplitude")).unit, QString());
  EXPECT_EQ(NamedUnit(QStringLiteral("(s)")).name, QStringLiteral("(s)"));
  EXPECT_EQ(NamedUnit(QString()).name, QString());
}

} // namespace
} // namespace xov
