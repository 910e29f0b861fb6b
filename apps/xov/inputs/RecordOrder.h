#pragma once

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <cstdint>

namespace xov::cli {

/// How records follow each other in a plot.
enum class RecordOrder : std::uint8_t {
  Given,    ///< as on the command line
  Distance, ///< from the event, near ones first
  Azimuth,  ///< from the event, clockwise from north
  Name,     ///< network, station, location and component, then the file's name
};

/// Sorts the records; equal ones keep their order, and those without a distance or azimuth come last. Records must
/// not be null.
void sortRecords(SeismogramArray& records, RecordOrder order);

} // namespace xov::cli
