#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QStringList>

#include <cstdint>

namespace xov {

/// Whose mean is taken away from a record.
enum class MeanOf : std::uint8_t {
  Record,  ///< its own
  Channel, ///< that of all records of its channel, so that no step appears between pieces of a recording
};

/// The records without a mean, for views that draw samples about the middle of a band. Samples that are not finite
/// take no part in a mean, and stay. Others' records stay as they are; those that nobody else holds lend their
/// samples (changedRecord()). Records must not be null.
XOV_EXPORT SeismogramArray withoutMeans(SeismogramArray records, MeanOf mean);

/// The largest absolute sample of all records, which a scale may be divided by: 1 where there is none above 0.
/// Records must not be null.
XOV_EXPORT float largestAmplitude(const SeismogramArray& records);

/// What amplitudes are divided by.
enum class NormalizeBy : std::uint8_t {
  Record,  ///< the largest absolute sample of each record
  Section, ///< that of all records, which keep their heights to each other
};

/// The records with amplitudes from -1 to 1, which then are of no known quantity (SacHeader::idep). Records without a
/// finite sample other than 0 stay. Others' records stay as they are. Records must not be null.
XOV_EXPORT SeismogramArray normalized(SeismogramArray records, NormalizeBy by);

/// The records as if all had been recorded as far from the event as the nearest one, by waves whose amplitudes fall
/// with distance to the power of -`power`: 1 for body waves in a uniform earth, ½ for surface waves. A negative power
/// raises the near ones. Records that do not know their distance (in degrees), or that are at the event, stay, with a
/// note of how many they are. Others' records stay as they are. Records must not be null.
XOV_EXPORT SeismogramArray scaledByDistance(SeismogramArray records, double power, QStringList& notes);

} // namespace xov
