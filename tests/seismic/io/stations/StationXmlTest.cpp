#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/stations/InventoryReader.h"
#include "XOV_Graphics/seismic/io/stations/StationText.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/UnknownElements.h"
#include "tests/seismic/io/stations/StationXmlTexts.h"

namespace xov {
namespace {

using namespace test;

Result<StationInventory> parse(const QByteArray& text) { return parseInventory(text, QStringLiteral("in")); }

const char* const kPlace = "<Latitude>34.9</Latitude><Longitude unit=\"DEGREES\">-106.4</Longitude>"
                           "<Elevation>1820.5</Elevation><Site><Name>Albuquerque</Name><Town>no</Town></Site>";

QByteArray station(const QByteArray& contents, const QByteArray& attributes = "code=\"ANMO\"") {
  return "<Network code=\"IU\"><Station " + attributes + ">" + contents + "</Station></Network>\n";
}

InstrumentResponse responseIn(const QByteArray& response) {
  const auto inventory = parse(stationXml(station(kPlace + channelElement("BHZ", "locationCode=\"00\"", response))));
  EXPECT_TRUE(inventory) << inventory.error().toStdString();
  return inventory && !inventory->channels.empty() ? inventory->channels.front().response : InstrumentResponse();
}

TEST(StationXml, givesStationsAndChannelsWithTheirPlacesAndTimes) {
  const auto inventory = parse(
      stationXml(station(kPlace + channelElement("BHZ", "locationCode=\"00\" startDate=\"2010-01-01T00:00:00\"", ""),
                         "code=\"ANMO\" startDate=\"2008-06-30T20:00:00Z\" endDate=\"2020-01-01T00:00:00.0000\"")));
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  EXPECT_TRUE(inventory->notes.isEmpty());
  ASSERT_EQ(inventory->stations.size(), 1U);
  const InventoryStation& found = inventory->stations.front();
  EXPECT_EQ(found.network, QStringLiteral("IU"));
  EXPECT_EQ(found.code, QStringLiteral("ANMO"));
  EXPECT_EQ(found.site, QStringLiteral("Albuquerque"));
  EXPECT_EQ(found.latitudeDeg, 34.9);
  EXPECT_EQ(found.longitudeDeg, -106.4);
  EXPECT_EQ(found.elevationM, 1820.5);
  EXPECT_EQ(found.line, 4);
  EXPECT_EQ(found.epoch.start, QDateTime(QDate(2008, 6, 30), QTime(20, 0), Qt::UTC));
  EXPECT_EQ(found.epoch.end, QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
  ASSERT_EQ(inventory->channels.size(), 1U);
  const StationChannel& channel = inventory->channels.front();
  EXPECT_EQ(channelName(channel.codes), QStringLiteral("IU.ANMO.00.BHZ"));
  EXPECT_EQ(channel.epoch.start, QDateTime(QDate(2010, 1, 1), QTime(0, 0), Qt::UTC));
  EXPECT_FALSE(channel.epoch.end.isValid());
  EXPECT_EQ(channel.latitudeDeg, 34.5);
  EXPECT_EQ(channel.longitudeDeg, -106.5);
  EXPECT_EQ(channel.elevationM, 1820);
  EXPECT_EQ(channel.depthM, 100);
  EXPECT_EQ(channel.azimuthDeg, 90);
  EXPECT_EQ(channel.dipDeg, -90);
  EXPECT_EQ(channel.sampleRateHz, 20);
  EXPECT_TRUE(channel.response.stages.empty());
}

TEST(StationXml, givesTheStagesOfAResponseInTheirOrder) {
  const InstrumentResponse response = responseIn(responseOfThreeStages());
  EXPECT_EQ(response.problem, QString());
  ASSERT_TRUE(response.sensitivity);
  EXPECT_EQ(response.sensitivity->value, 600);
  EXPECT_EQ(response.sensitivity->frequencyHz, 1);
  EXPECT_EQ(response.sensitivity->inputUnits, QStringLiteral("M/S"));
  ASSERT_EQ(response.stages.size(), 3U);

  const ResponseStage& sensor = response.stages[0];
  EXPECT_EQ(sensor.number, 1);
  EXPECT_EQ(sensor.inputUnits, QStringLiteral("M/S"));
  EXPECT_EQ(sensor.outputUnits, QStringLiteral("V"));
  EXPECT_EQ(sensor.gain, 1500);
  EXPECT_EQ(sensor.gainHz, 1);
  const auto* const roots = std::get_if<PolesAndZeros>(&sensor.filter);
  ASSERT_TRUE(roots);
  EXPECT_EQ(roots->variable, TransferVariable::LaplaceRadians);
  EXPECT_EQ(roots->normalization, 2.5);
  EXPECT_EQ(roots->normalizationHz, 1);
  EXPECT_EQ(roots->zeros, (std::vector<std::complex<double>>{0, -0.5}));
  EXPECT_EQ(roots->poles, (std::vector<std::complex<double>>{{-3, 4}, {-3, -4}}));

  EXPECT_EQ(response.stages[1].number, 2);
  EXPECT_EQ(response.stages[1].gain, 0.4);
  EXPECT_TRUE(std::holds_alternative<FilterCoefficients>(response.stages[1].filter));

  const auto* const fir = std::get_if<FilterCoefficients>(&response.stages[2].filter);
  ASSERT_TRUE(fir);
  EXPECT_EQ(fir->numerators, (std::vector<double>{0.25, 0.5, 0.25}));
  ASSERT_TRUE(response.stages[2].decimation);
  EXPECT_EQ(response.stages[2].decimation->inputRateHz, 40);
  EXPECT_EQ(response.stages[2].decimation->factor, 2);
  EXPECT_EQ(response.stages[2].decimation->offset, 1);
  EXPECT_EQ(response.stages[2].decimation->delaySeconds, 0.025);
  EXPECT_EQ(response.stages[2].decimation->correctionSeconds, 0.0125);
}

TEST(StationXml, completesSymmetricFilters) {
  const auto coefficients = [](const char* symmetry) {
    const InstrumentResponse response = responseIn(
        QByteArray("<Response><Stage number=\"1\"><FIR><Symmetry>") + symmetry +
        "</Symmetry><NumeratorCoefficient>1</NumeratorCoefficient><NumeratorCoefficient>2</NumeratorCoefficient>"
        "<NumeratorCoefficient>3</NumeratorCoefficient></FIR></Stage></Response>");
    return response.problem.isEmpty() ? std::get<FilterCoefficients>(response.stages.at(0).filter).numerators
                                      : std::vector<double>();
  };
  EXPECT_EQ(coefficients("NONE"), (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(coefficients("ODD"), (std::vector<double>{1, 2, 3, 2, 1}));
  EXPECT_EQ(coefficients("EVEN"), (std::vector<double>{1, 2, 3, 3, 2, 1}));
  EXPECT_EQ(coefficients("SOME"), (std::vector<double>{}));
}

TEST(StationXml, readsListsAndTellsPolynomials) {
  const InstrumentResponse response = responseIn(
      "<Response><Stage number=\"1\"><ResponseList><InputUnits><Name>M</Name></InputUnits>"
      "<ResponseListElement><Frequency>0.5</Frequency><Amplitude>2</Amplitude><Phase>-90</Phase>"
      "</ResponseListElement></ResponseList></Stage><Stage number=\"2\"><Polynomial>"
      "<InputUnits><Name>V</Name></InputUnits><Coefficient>1</Coefficient></Polynomial></Stage></Response>");
  ASSERT_EQ(response.stages.size(), 2U);
  const auto* const list = std::get_if<ResponseList>(&response.stages[0].filter);
  ASSERT_TRUE(list);
  ASSERT_EQ(list->points.size(), 1U);
  EXPECT_EQ(list->points[0].frequencyHz, 0.5);
  EXPECT_EQ(list->points[0].amplitude, 2);
  EXPECT_EQ(list->points[0].phaseDeg, -90);
  EXPECT_EQ(response.stages[0].inputUnits, QStringLiteral("M"));
  EXPECT_TRUE(std::holds_alternative<PolynomialStage>(response.stages[1].filter));
  EXPECT_EQ(response.stages[1].inputUnits, QStringLiteral("V"));
}

TEST(StationXml, keepsAChannelWhoseResponseIsWrongAndSaysWhy) {
  const auto problem = [](const char* stage) {
    return responseIn(QByteArray("<Response>\n<Stage number=\"1\">") + stage + "</Stage></Response>").problem;
  };
  // The document has three lines before the station, which begins with the response's first.
  EXPECT_EQ(problem("<StageGain><Value>12O0</Value></StageGain>"),
            QStringLiteral("in: line 5: Value: found \"12O0\", expected a number"));
  EXPECT_EQ(problem("<StageGain><Value>NaN</Value></StageGain>"),
            QStringLiteral("in: line 5: Value: found \"NaN\", expected a number"));
  EXPECT_EQ(problem("<PolesZeros><Pole><Real>1</Real></Pole></PolesZeros>"),
            QStringLiteral("in: line 5: a pole or zero without a real or imaginary part"));
  EXPECT_EQ(problem("<PolesZeros><PzTransferFunctionType>MAGIC</PzTransferFunctionType></PolesZeros>"),
            QStringLiteral("in: line 5: unknown kind of transfer function \"MAGIC\""));
  const QByteArray many =
      "<Coefficients>" + QByteArray("<Numerator>1</Numerator>").repeated(6000) + "</Coefficients>";
  EXPECT_EQ(problem((many + "</Stage><Stage number=\"2\">" + many).constData()),
            QStringLiteral("in: line 5: more than 10000 coefficients, poles and zeros"));
}

TEST(StationXml, leavesOutStationsAndChannelsThatAreWrong) {
  const QByteArray bad = "<Channel code=\"BHN\" locationCode=\"\" startDate=\"yesterday\"></Channel>\n"
                         "<Channel code=\"BHE\" locationCode=\"\"><Latitude>91</Latitude></Channel>\n";
  const QByteArray nowhere = station("<Latitude>1</Latitude>" + channelElement("BHZ", "", ""), "code=\"NOWH\"");
  const auto inventory = parse(stationXml(station(kPlace + bad + channelElement("BHZ", "", "")) + nowhere));
  ASSERT_TRUE(inventory);
  ASSERT_EQ(inventory->stations.size(), 1U);
  ASSERT_EQ(inventory->channels.size(), 1U);
  EXPECT_EQ(inventory->channels.front().codes.back(), QStringLiteral("BHZ"));
  EXPECT_EQ(inventory->notes,
            (QStringList{"in: 1 of 2 stations left out, the first on line 8: a station without latitude or longitude",
                         "in: 2 of 4 channels left out, the first on line 4: startDate: time: found \"yesterday\", "
                         "expected a time such as 2011-03-11T05:46:24.1Z"}));
  EXPECT_EQ(
      parse(stationXml(nowhere)).error(),
      QStringLiteral("in: 1 of 1 station left out, the first on line 4: a station without latitude or longitude"));
}

TEST(StationXml, refusesOtherDocumentsInOneLine) {
  EXPECT_EQ(parse("<quakeml/>").error(), QStringLiteral("in: line 1: found <quakeml>, expected <FDSNStationXML>"));
  EXPECT_EQ(parse(stationXml("")).error(), QStringLiteral("in: holds no stations"));
  EXPECT_EQ(parse("<!DOCTYPE a [<!ENTITY b \"c\">]>\n<FDSNStationXML>&b;</FDSNStationXML>").error(),
            QStringLiteral("in: line 1: the document declares entities, which StationXML has none of"));
  EXPECT_TRUE(parse("<FDSNStationXML>\n<Network>").error().startsWith(QStringLiteral("in: line 2: ")));
  EXPECT_EQ(parse(stationXml(QByteArray("<a>").repeated(200))).error(),
            QStringLiteral("in: line 4: too many elements within each other"));
  QByteArray tag = "<FDSNStationXML ";
  for (int i = 0; i < 501; ++i)
    tag += "a" + QByteArray::number(i) + "='1>' ";
  EXPECT_EQ(parse(tag + "/>").error(), QStringLiteral("in: line 1: found a tag of hundreds of attributes"));
}

TEST(StationXml, tellsADiskErrorFromTheEnd) {
  const TemporaryFiles files;
  EXPECT_EQ(readInventory(files.folder()).error(), files.folder() + ": is a folder, expected a file");
  const auto inventory = readInventory(files.write("a.xml", stationXml(station(kPlace))));
  EXPECT_EQ(inventory->stations.size(), 1U) << inventory.error().toStdString();
  // A file of the system that can be opened but not read where it begins.
  const QString unreadable = QStringLiteral("/proc/self/mem");
  if (!QFile::exists(unreadable)) GTEST_SKIP() << "needs a file whose reading fails";
  EXPECT_TRUE(readInventory(unreadable).error().startsWith("/proc/self/mem: cannot be read: "))
      << readInventory(unreadable).error().toStdString();
}

TEST(StationXml, isAlsoAListOfStationsWithTheirLatestPlace) {
  const auto moved = [](const char* latitude, const char* start) {
    return station(QByteArray("<Latitude>") + latitude + "</Latitude><Longitude>2</Longitude>",
                   QByteArray("code=\"ANMO\" startDate=\"") + start + "\"");
  };
  const auto stations = parseStations(stationXml(moved("1", "2001-01-01") + moved("3", "2010-01-01") +
                                                 moved("2", "2005-01-01") + station(kPlace, "code=\"TLY\"")),
                                      QStringLiteral("in"));
  ASSERT_TRUE(stations) << stations.error().toStdString();
  ASSERT_EQ(stations->size(), 2U);
  EXPECT_EQ(stations->at(0).code, QStringLiteral("ANMO"));
  EXPECT_EQ(stations->at(0).network, QStringLiteral("IU"));
  EXPECT_EQ(stations->at(0).latitudeDeg, 3);
  EXPECT_EQ(stations->at(0).line, 5);
  EXPECT_EQ(stations->at(1).code, QStringLiteral("TLY"));
}

TEST(StationXml, passesOverElementsThatItDoesNotKnow) {
  const QByteArray contents = kPlace + channelElement("BHZ", "locationCode=\"00\"", responseOfThreeStages());
  const auto plain = parse(stationXml(station(contents)));
  const auto inventory = parse(withUnknownElements(stationXml(station(contents))));
  ASSERT_TRUE(inventory) << inventory.error().toStdString();
  EXPECT_TRUE(inventory->notes.isEmpty()) << inventory->notes.join('\n').toStdString();
  ASSERT_EQ(inventory->stations.size(), 1U);
  EXPECT_EQ(inventory->stations[0].site, QStringLiteral("Albuquerque"));
  EXPECT_EQ(inventory->stations[0].latitudeDeg, 34.9);
  ASSERT_EQ(inventory->channels.size(), 1U);
  EXPECT_EQ(inventory->channels[0].sampleRateHz, 20);
  const InstrumentResponse& response = inventory->channels[0].response;
  EXPECT_EQ(response.problem, QString());
  EXPECT_EQ(response.sensitivity->value, 600);
  EXPECT_EQ(response.sensitivity->frequencyHz, 1);
  ASSERT_EQ(response.stages.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    const ResponseStage& known = plain->channels[0].response.stages[i];
    EXPECT_EQ(response.stages[i].number, known.number);
    EXPECT_EQ(response.stages[i].gain, known.gain) << i;
    EXPECT_EQ(response.stages[i].inputUnits, known.inputUnits) << i;
    EXPECT_EQ(response.stages[i].filter.index(), known.filter.index()) << i;
  }
  const auto* const roots = std::get_if<PolesAndZeros>(&response.stages[0].filter);
  ASSERT_TRUE(roots);
  EXPECT_EQ(roots->poles, (std::vector<std::complex<double>>{{-3, 4}, {-3, -4}}));
  EXPECT_EQ(response.stages[2].decimation->factor, 2);
}

TEST(StationXml, givesTheDenominatorsOfRecursiveFilters) {
  const InstrumentResponse response = responseIn(
      "<Response><Stage number=\"1\"><Coefficients><InputUnits><Name>COUNTS</Name></InputUnits>"
      "<OutputUnits><Name>COUNTS</Name></OutputUnits><CfTransferFunctionType>DIGITAL</CfTransferFunctionType>"
      "<Numerator>0.5</Numerator><Numerator>0.25</Numerator><Denominator>1</Denominator>"
      "<Denominator>-0.75</Denominator></Coefficients><StageGain><Value>1</Value><Frequency>0</Frequency>"
      "</StageGain></Stage></Response>");
  EXPECT_EQ(response.problem, QString());
  ASSERT_EQ(response.stages.size(), 1U);
  const auto* const filter = std::get_if<FilterCoefficients>(&response.stages[0].filter);
  ASSERT_TRUE(filter);
  EXPECT_EQ(filter->numerators, (std::vector<double>{0.5, 0.25}));
  EXPECT_EQ(filter->denominators, (std::vector<double>{1, -0.75}));
}

} // namespace
} // namespace xov
