#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramOutline.h"

#include <QIODevice>

#include <optional>
#include <stop_token>

namespace xov {

/// What a miniSEED file holds by the headers of its records; samples are not decoded. An error once `stop` is
/// requested.
Result<SeismogramOutline> outlineMiniSeedDevice(QIODevice& device, const QString& name, std::stop_token stop);

/// From the first sample of a file's first record to the last one of its last record, and the first one's rate, by
/// these two headers alone. Nothing where records are of different lengths, so that the last one is not found, or
/// where what is found there is not of the same channel.
std::optional<ChannelOutline> miniSeedEnds(QIODevice& device);

} // namespace xov
