#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QStringList>

#include <cstdint>
#include <vector>

namespace xov {

/// What records have in common that belong together.
enum class GroupBy : std::uint8_t {
  Trace,     ///< channel and file: the pieces that a recording in one file falls into
  Component, ///< the direction, which is the last letter of a code of three ("Z" of "BHZ"), else the whole code
  Station,   ///< network and station
  Network,   ///< its code
  File,      ///< the path
};

/// Records in groups.
struct XOV_EXPORT RecordGroups {
  QStringList names;                ///< in the order in which they come first; "?" where the records do not say
  std::vector<std::size_t> groupOf; ///< for each record
};

/// Sorts records into groups. Traces are called by their channel, or by their file where another file has that
/// channel, too; files by their name without folders. Records must not be null.
XOV_EXPORT RecordGroups groupsOf(const SeismogramArray& records, GroupBy by);

} // namespace xov
