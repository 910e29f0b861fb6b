#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramOutline.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

namespace xov {

/// The outline of a record that is one piece and has so many samples, whether it holds them or not.
XOV_EXPORT ChannelOutline outlineOf(const SeismogramRecord& record, std::int64_t sampleCount);

} // namespace xov
