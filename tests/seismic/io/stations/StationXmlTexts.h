#pragma once

#include <QByteArray>

namespace xov::test {

/// A StationXML document around networks.
inline QByteArray stationXml(const QByteArray& networks) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<FDSNStationXML xmlns=\"http://www.fdsn.org/xml/station/1\" schemaVersion=\"1.2\">\n"
         "<Source>test</Source><Created>2020-01-01T00:00:00Z</Created>\n" +
         networks + "</FDSNStationXML>\n";
}

/// The response of a seismometer of two zeros and poles, a digitizer and a symmetric filter that halves 40 Hz.
inline QByteArray responseOfThreeStages() {
  return "<Response>\n"
         "<InstrumentSensitivity><Value>600</Value><Frequency>1</Frequency>"
         "<InputUnits><Name>M/S</Name></InputUnits><OutputUnits><Name>COUNTS</Name></OutputUnits>"
         "</InstrumentSensitivity>\n"
         "<Stage number=\"1\"><PolesZeros><InputUnits><Name>M/S</Name></InputUnits>"
         "<OutputUnits><Name>V</Name></OutputUnits>"
         "<PzTransferFunctionType>LAPLACE (RADIANS/SECOND)</PzTransferFunctionType>"
         "<NormalizationFactor>2.5</NormalizationFactor><NormalizationFrequency>1</NormalizationFrequency>"
         "<Zero number=\"0\"><Real>0</Real><Imaginary>0</Imaginary></Zero>"
         "<Zero number=\"1\"><Real minusError=\"1\">-0.5</Real><Imaginary>0</Imaginary></Zero>"
         "<Pole number=\"0\"><Real>-3</Real><Imaginary>4</Imaginary></Pole>"
         "<Pole number=\"1\"><Real>-3</Real><Imaginary>-4e0</Imaginary></Pole></PolesZeros>"
         "<StageGain><Value>1500</Value><Frequency>1</Frequency></StageGain></Stage>\n"
         // Not in their order.
         "<Stage number=\"3\"><FIR><InputUnits><Name>COUNTS</Name></InputUnits>"
         "<OutputUnits><Name>COUNTS</Name></OutputUnits><Symmetry>ODD</Symmetry>"
         "<NumeratorCoefficient i=\"0\">0.25</NumeratorCoefficient>"
         "<NumeratorCoefficient i=\"1\">0.5</NumeratorCoefficient></FIR>"
         "<Decimation><InputSampleRate>40</InputSampleRate><Factor>2</Factor><Offset>1</Offset>"
         "<Delay>0.025</Delay><Correction>0.0125</Correction></Decimation>"
         "<StageGain><Value>1</Value><Frequency>0</Frequency></StageGain></Stage>\n"
         "<Stage number=\"2\"><Coefficients><InputUnits><Name>V</Name></InputUnits>"
         "<OutputUnits><Name>COUNTS</Name></OutputUnits><CfTransferFunctionType>DIGITAL</CfTransferFunctionType>"
         "</Coefficients><StageGain><Value>0.4</Value><Frequency>0</Frequency></StageGain></Stage>\n"
         "</Response>\n";
}

/// A channel with that code, attributes and contents.
inline QByteArray channelElement(const QByteArray& code, const QByteArray& attributes, const QByteArray& contents) {
  return "<Channel code=\"" + code + "\" " + attributes +
         "><Latitude>34.5</Latitude><Longitude>-106.5</Longitude><Elevation>1820</Elevation><Depth>100</Depth>"
         "<Azimuth>90</Azimuth><Dip>-90</Dip><SampleRate>20</SampleRate>" +
         contents + "</Channel>\n";
}

} // namespace xov::test
