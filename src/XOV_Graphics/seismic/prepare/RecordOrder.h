#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <cstdint>

namespace xov {

/// How records follow each other in a plot.
enum class RecordOrder : std::uint8_t {
  Given,    ///< as they are
  Distance, ///< from the event, near ones first
  Azimuth,  ///< from the event, clockwise from north
  Name,     ///< network, station, location and component, then the file's name
};

/// Sorts the records; equal ones keep their order, and those without a distance or azimuth come last. Records must
/// not be null.
XOV_EXPORT void sortRecords(SeismogramArray& records, RecordOrder order);

} // namespace xov
