#include "XOV_Graphics/seismic/io/stations/StationXml.h"

#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/seismic/io/stations/StationXmlResponse.h"
#include "XOV_Graphics/seismic/io/stations/StationXmlValues.h"

namespace xov {

namespace {

constexpr double kMostLatitude = 90;
constexpr double kMostLongitude = 360;

class StationXmlParser {
public:
  StationXmlParser(QByteArrayView text, const QString& name)
      : xml_(text),
        name_(name),
        stationsLeftOut_(name, "station"),
        channelsLeftOut_(name, "channel") {
    inventory_.name = name;
  }

  Result<StationInventory> run() {
    xml_.readRoot("FDSNStationXML", "StationXML", [&] { xml_.readChildren("Network", [&] { readNetwork(); }); });
    if (xml_.hasError()) return Error{name_ + ": " + xml_.faultText()};
    if (stationsLeftOut_.isAll()) return stationsLeftOut_.error();
    if (inventory_.stations.empty()) return Error{name_ + ": holds no stations"};
    inventory_.notes = stationsLeftOut_.notes() + channelsLeftOut_.notes();
    return std::move(inventory_);
  }

private:
  Epoch epoch(XmlProblem& problem) {
    return {takeTimeAttribute(xml_, "startDate", problem), takeTimeAttribute(xml_, "endDate", problem)};
  }

  /// Codes are those of records: without the blanks that fixed columns pad them with.
  QString code(const char* attribute) const { return xml_.attribute(attribute).trimmed(); }

  void readNetwork() {
    const QString network = code("code");
    xml_.readChildren("Station", [&] { readStation(network); });
  }

  void readStation(const QString& network) {
    InventoryStation station;
    XmlProblem problem;
    station.line = xml_.lineNumber();
    station.network = network;
    station.code = code("code");
    station.epoch = epoch(problem);
    if (station.code.isEmpty()) problem.note(station.line, QStringLiteral("a station without a code"));
    std::optional<double> latitude;
    std::optional<double> longitude;
    std::vector<StationChannel> channels;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("Latitude")) {
        latitude = takeNumberWithin(xml_, -kMostLatitude, kMostLatitude, problem);
      } else if (element == QLatin1String("Longitude")) {
        longitude = takeNumberWithin(xml_, -kMostLongitude, kMostLongitude, problem);
      } else if (element == QLatin1String("Elevation")) {
        station.elevationM = takeNumber(xml_, problem);
      } else if (element == QLatin1String("Site")) {
        xml_.readChildren("Name", [&] { station.site = xml_.elementText(); });
      } else if (element == QLatin1String("Channel")) {
        readChannel(station, channels);
      } else {
        return false;
      }
      return true;
    });
    if (xml_.hasError()) return;
    if (!latitude || !longitude)
      problem.note(station.line, QStringLiteral("a station without latitude or longitude"));
    stationsLeftOut_.count(problem.line, problem.text);
    if (!problem.text.isEmpty()) return;
    station.latitudeDeg = *latitude;
    station.longitudeDeg = *longitude;
    inventory_.stations.push_back(std::move(station));
    std::ranges::move(channels, std::back_inserter(inventory_.channels));
  }

  void readChannel(const InventoryStation& station, std::vector<StationChannel>& channels) {
    StationChannel channel;
    XmlProblem problem;
    channel.line = xml_.lineNumber();
    channel.codes = {station.network, station.code, code("locationCode"), code("code")};
    channel.epoch = epoch(problem);
    if (channel.codes.back().isEmpty()) problem.note(channel.line, QStringLiteral("a channel without a code"));
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("Response")) {
        channel.response = readResponseElement(xml_, name_);
        return true;
      }
      return readPlaceOrRate(element, channel, problem);
    });
    if (xml_.hasError()) return;
    channelsLeftOut_.count(problem.line, problem.text);
    if (problem.text.isEmpty()) channels.push_back(std::move(channel));
  }

  bool readPlaceOrRate(QStringView element, StationChannel& channel, XmlProblem& problem) {
    if (element == QLatin1String("Latitude")) {
      channel.latitudeDeg = takeNumberWithin(xml_, -kMostLatitude, kMostLatitude, problem);
    } else if (element == QLatin1String("Longitude")) {
      channel.longitudeDeg = takeNumberWithin(xml_, -kMostLongitude, kMostLongitude, problem);
    } else if (element == QLatin1String("Elevation")) {
      channel.elevationM = takeNumber(xml_, problem);
    } else if (element == QLatin1String("Depth")) {
      channel.depthM = takeNumber(xml_, problem);
    } else if (element == QLatin1String("Azimuth")) {
      channel.azimuthDeg = takeNumber(xml_, problem);
    } else if (element == QLatin1String("Dip")) {
      channel.dipDeg = takeNumber(xml_, problem);
    } else if (element == QLatin1String("SampleRate")) {
      channel.sampleRateHz = takeNumber(xml_, problem);
    } else {
      return false;
    }
    return true;
  }

  XmlElements xml_;
  QString name_;
  LeftOut stationsLeftOut_;
  LeftOut channelsLeftOut_;
  StationInventory inventory_;
};

} // namespace

Result<StationInventory> parseStationXml(QByteArrayView text, const QString& name) {
  return StationXmlParser(text, name).run();
}

} // namespace xov
