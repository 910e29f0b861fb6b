#include "XOV_Graphics/seismic/prepare/Placement.h"

#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/arrivals/EarthModel.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <string_view>
#include <utility>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kUpFromHorizontalDeg = 90;

/// What a header says in single precision, and some of it in double.
struct Values {
  SacHeader header;
  SacFooter precise;
};

Values valuesOf(const SeismogramRecord& record) { return {headerOf(record), preciseValuesOf(record)}; }

std::shared_ptr<SeismogramRecord> withValues(std::shared_ptr<SeismogramRecord> record, const Values& values) {
  return changedRecord(std::move(record), {.header = values.header, .precise = values.precise});
}

bool hasStation(const SacFooter& at) { return isGeographicPoint(at.stla, at.stlo); }

bool hasEvent(const SacFooter& at) { return isGeographicPoint(at.evla, at.evlo); }

void setGeometry(Values& values) {
  const SacFooter& at = values.precise;
  SacHeader& header = values.header;
  const GreatCircle way = greatCircle(at.evla, at.evlo, at.stla, at.stlo);
  header.gcarc = float(way.distanceDeg);
  header.dist = float(way.distanceDeg * kKmPerDegree);
  header.az = float(way.azimuthDeg);
  header.baz = float(way.backAzimuthDeg);
  header.lcalda = 1;
}

void setStationPlace(Values& values, double latitudeDeg, double longitudeDeg, std::optional<double> elevationM) {
  values.precise.stla = latitudeDeg;
  values.precise.stlo = longitudeDeg;
  values.header.stel = elevationM ? float(*elevationM) : kUndefinedValue;
}

void setChannel(Values& values, const StationChannel& channel) {
  if (channel.depthM) values.header.stdp = float(*channel.depthM);
  if (channel.azimuthDeg) values.header.cmpaz = float(*channel.azimuthDeg);
  // Below the horizontal there, from straight up here.
  if (channel.dipDeg) values.header.cmpinc = float(*channel.dipDeg + kUpFromHorizontalDeg);
}

// Whether the inventory has a place for the record.
bool setStation(Values& values, const StationInventory& inventory, const SeismogramRecord& record) {
  const Result<const StationChannel*> channel = stationChannelOf(inventory, record);
  if (channel) setChannel(values, **channel);
  if (channel && (*channel)->latitudeDeg && (*channel)->longitudeDeg) {
    setStationPlace(values, *(*channel)->latitudeDeg, *(*channel)->longitudeDeg, (*channel)->elevationM);
    return true;
  }
  const InventoryStation* const station = stationOf(inventory, record);
  if (station == nullptr) return false;
  setStationPlace(values, station->latitudeDeg, station->longitudeDeg, station->elevationM);
  return true;
}

template <std::size_t N>
void setText(SacText<N>& field, const QString& text) {
  const QByteArray bytes = text.toLatin1();
  field = bytes.isEmpty() ? SacText<N>() : SacText<N>(std::string_view(bytes.constData(), std::size_t(bytes.size())));
}

// Nothing of another event stays.
void setEvent(Values& values, const Hypocentre& event) {
  const HypocentreValues& known = event.values();
  SacHeader& header = values.header;
  values.precise.evla = header.evla = known.latitudeDeg;
  values.precise.evlo = header.evlo = known.longitudeDeg;
  values.precise.o = header.o = kUndefinedValue;
  header.evdp = known.depthKm;
  header.evel = kUndefinedValue;
  header.mag = event.magnitude();
  header.gcarc = header.dist = header.az = header.baz = kUndefinedValue;
  header.norid = header.nevid = header.ievreg = header.imagtyp = header.imagsrc = kSacUndefinedInteger;
  header.ko = SacText<8>();
  setText(header.kevnm, known.name);
}

bool setOrigin(Values& values, const QDateTime& origin, const QDateTime& reference) {
  if (!origin.isValid() || !reference.isValid()) return false;
  values.precise.o = double(reference.msecsTo(origin)) / kMillisecondsPerSecond;
  return true;
}

} // namespace

PreparedRecords withStations(SeismogramArray records, const StationInventory& inventory) {
  PreparedRecords placed;
  SeismogramArray lost;
  for (auto& record : records) {
    Values values = valuesOf(*record);
    const bool isFound = setStation(values, inventory, *record);
    if (isFound && hasEvent(values.precise)) setGeometry(values);
    if (isFound) record = withValues(std::move(record), values);
    if (!hasStation(values.precise)) lost.push_back(record);
    placed.records.push_back(std::move(record));
  }
  if (!lost.empty()) placed.notes.append(inventory.name + QStringLiteral(": has no place of ") + stationsText(lost));
  return placed;
}

PreparedRecords withEvent(SeismogramArray records, const Hypocentre& event) {
  PreparedRecords placed;
  SeismogramArray withoutPlace;
  SeismogramArray withoutTime;
  const QDateTime origin = event.oDate();
  for (auto& record : records) {
    Values values = valuesOf(*record);
    setEvent(values, event);
    const bool hasOrigin = setOrigin(values, origin, referenceTimeOf(*record));
    const bool hasPlace = hasStation(values.precise);
    if (hasPlace && hasEvent(values.precise)) setGeometry(values);
    record = withValues(std::move(record), values);
    if (!hasPlace) withoutPlace.push_back(record);
    if (!hasOrigin) withoutTime.push_back(record);
    placed.records.push_back(std::move(record));
  }
  if (!isGeographicPoint(double(event.values().latitudeDeg), double(event.values().longitudeDeg)))
    placed.notes.append(QStringLiteral("the event has no coordinates: distances are not known"));
  else if (!withoutPlace.empty())
    placed.notes.append(QStringLiteral("no coordinates of ") + stationsText(withoutPlace) +
                        QStringLiteral(": their distances are not known"));
  if (!origin.isValid())
    placed.notes.append(QStringLiteral("the event has no origin time"));
  else if (!withoutTime.empty())
    placed.notes.append(QStringLiteral("no reference time of ") + stationsText(withoutTime) +
                        QStringLiteral(": the origin time is not known on their axes"));
  return placed;
}

} // namespace xov
