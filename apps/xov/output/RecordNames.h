#pragma once

#include "apps/xov/output/FileTemplate.h"

#include <XOV_Graphics/seismic/SeismogramRecord.h>

namespace xov::cli {

/// The names of the fields that nameFieldsOf() fills, in the order in which they are told of.
QStringList recordFieldNames();

/// What names of files say of these records: network, station, location and channel codes, of several ones up to
/// three joined by '+', and "several" of more; date, time, year and day of the year (UTC) of the earliest sample, and
/// the origin time of the event (event), each "unknown" where it is. Records must not be null.
NameFields nameFieldsOf(const SeismogramArray& records);

} // namespace xov::cli
