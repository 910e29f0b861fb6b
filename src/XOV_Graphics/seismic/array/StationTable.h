#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/array/ArrayOffsets.h"

#include <QByteArrayView>
#include <QHash>
#include <QString>

namespace xov {

/// The places of stations by their codes: STATION, or NETWORK.STATION where the file names networks.
using StationTable = QHash<QString, StationPlace>;

/// Reads a file of stations in any of the forms that readStations() knows. A station without a code, and a code that
/// stands there twice with different places, are refused with their line number.
XOV_EXPORT Result<StationTable> readStationTable(const QString& path) noexcept;

/// The same from memory; `name` stands for the file in errors.
XOV_EXPORT Result<StationTable> parseStationTable(QByteArrayView text, const QString& name) noexcept;

} // namespace xov
