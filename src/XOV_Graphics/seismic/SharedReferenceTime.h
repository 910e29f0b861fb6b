#pragma once

#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/UtcTime.h"

#include <memory>

namespace xov {

/// The reference time of a header. Headers with the same one that come one after the other share it, in all threads:
/// pieces of a recording count from the same moment, and thousands of them would spend most of their time on spelling
/// its date.
std::shared_ptr<UtcTime> sharedReferenceTime(const SacHeader& header);

} // namespace xov
