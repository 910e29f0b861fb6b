#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QStringList>

namespace xov {

/// What to read of a seismogram file; everything by default.
struct XOV_EXPORT SeismogramReadOptions {
  /// The channels to read, as patterns NETWORK.STATION.LOCATION.CHANNEL: * stands for any characters, ? for one,
  /// [...] for one of a set; case does not matter. Fewer parts are the last ones ("BH?", "00.BHZ"). The part -- is an
  /// empty location code. Without patterns all channels are read.
  QStringList channels;
};

/// What a seismogram file holds.
struct XOV_EXPORT SeismogramFile {
  SeismogramArray records; ///< one a trace, in the order of the file
  /// What the user should know about the reading, such as damaged parts that were left out: one line each, which
  /// names the file.
  QStringList notes;
};

} // namespace xov
