#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/prepare/Preparation.h"
#include "apps/xov/terminal/TextTable.h"

#include <QStringList>

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/seismic/SeismogramSummary.h>
#include <XOV_Graphics/seismic/arrivals/Arrivals.h>
#include <string>

namespace xov::cli {

/// `xov info`: a table of what seismogram files hold, one line a record, and one of the events of event files; or a
/// table of the phases that arrive at the records; or of what a SeedLink server has.
class InfoCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  template <typename Table>
  ExitCode fill(Table& table) const;
  ExitCode printArrivals() const;
  ExitCode printStreams() const;

  RecordInputs inputs_;
  bool arrivals_ = false;
  std::string seedLink_;
  Preparation preparation_;
};

/// The cells of a record: network, station, location, channel, UTC time of the first sample, number of samples,
/// interval and duration in seconds, smallest and largest sample, distance and azimuth in degrees, mean of the
/// samples, latitude and longitude of the station, latitude, longitude and depth of the event, picks. What is not
/// known is empty.
QStringList infoCells(const SeismogramSummary& summary);

/// The cells of an event: UTC time, latitude, longitude, depth in km, magnitude, its type, and a name. What is not
/// known is empty.
QStringList eventCells(const Hypocentre& event);

/// The cells of a phase at a record: network, station, location, channel, distance in degrees, depth of the event in
/// km, phase, UTC time, seconds after the origin time, ray parameter in seconds a degree, take-off angle and angle of
/// incidence in degrees. What is not known is empty.
QStringList arrivalCells(const SeismogramRecord& record, const PhaseArrival& arrival);

/// The table that a row of infoCells(), and then the name of the file, goes into; that of eventCells() and
/// arrivalCells() likewise.
TextTable infoTable();
TextTable eventTable();
TextTable arrivalTable();

/// The picks of a record as "o=-66.3334,a=301.506(P),t1=802.857(S)": times in seconds on the trace's axis, labels in
/// brackets.
QString picksText(const SeismogramRecord& record);

} // namespace xov::cli
