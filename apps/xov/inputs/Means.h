#pragma once

#include <XOV_Graphics/seismic/SeismogramRecord.h>

namespace xov::cli {

/// The records without the mean of their channel, for views that draw samples about the middle of a band. The mean is
/// that of all pieces, so that no step appears between them. Records must not be null.
SeismogramArray withoutMeans(const SeismogramArray& records);

} // namespace xov::cli
