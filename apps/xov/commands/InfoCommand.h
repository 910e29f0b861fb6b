#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/Records.h"

#include <QStringList>

namespace xov::cli {

/// `xov info`: a table of what seismogram files hold, one line a record.
class InfoCommand : public Command {
public:
  void addOptions(CLI::App& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
};

/// The cells of a record: network, station, location, channel, UTC time of the first sample, number of samples,
/// interval and duration in seconds, smallest and largest sample, distance and azimuth in degrees, picks. What is not
/// known is empty.
QStringList infoCells(const SeismogramRecord& record);

/// The picks of a record as "o=-66.3334,a=301.506(P),t1=802.857(S)": times in seconds on the trace's axis, labels in
/// brackets.
QString picksText(const SeismogramRecord& record);

/// The text of the whole table. `files` names the file of each record.
QString infoTable(const SeismogramArray& records, const QStringList& files);

} // namespace xov::cli
