#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/terminal/TextTable.h"

#include <QStringList>

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/seismic/SeismogramSummary.h>

namespace xov::cli {

/// `xov info`: a table of what seismogram files hold, one line a record, and one of the events of event files.
class InfoCommand : public Command {
public:
  void addOptions(CLI::App& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
};

/// The cells of a record: network, station, location, channel, UTC time of the first sample, number of samples,
/// interval and duration in seconds, smallest and largest sample, distance and azimuth in degrees, mean of the
/// samples, latitude and longitude of the station, latitude, longitude and depth of the event, picks. What is not
/// known is empty.
QStringList infoCells(const SeismogramSummary& summary);

/// The cells of an event: UTC time, latitude, longitude, depth in km, magnitude, its type, and a name. What is not
/// known is empty.
QStringList eventCells(const Hypocentre& event);

/// The table that a row of infoCells(), and then the name of the file, goes into; that of eventCells() likewise.
TextTable infoTable();
TextTable eventTable();

/// The picks of a record as "o=-66.3334,a=301.506(P),t1=802.857(S)": times in seconds on the trace's axis, labels in
/// brackets.
QString picksText(const SeismogramRecord& record);

} // namespace xov::cli
