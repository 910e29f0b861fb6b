#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/StationInventory.h"

#include <QByteArrayView>

namespace xov {

/// Reads a StationXML document. One that is not well-formed, has another root than <FDSNStationXML>, declares
/// entities, has a tag of hundreds of attributes, or holds no station that can be used is refused.
Result<StationInventory> parseStationXml(QByteArrayView text, const QString& name);

} // namespace xov
