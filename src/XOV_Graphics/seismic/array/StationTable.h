#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/array/ArrayOffsets.h"

#include <QByteArrayView>
#include <QHash>
#include <QString>

namespace xov {

/// The places of stations by their codes.
using StationTable = QHash<QString, StationPlace>;

/// Reads lines of a station code, a latitude and a longitude in degrees, north and east positive, between blanks,
/// tabulators, commas, semicolons or bars; what follows on a line does not count, nor do empty lines and lines that
/// start with #. The first line may be a heading. Any other line, a place off the globe and a code that stands there
/// twice with different places are refused with their line number.
XOV_EXPORT Result<StationTable> readStationTable(const QString& path) noexcept;

/// The same from memory; `name` stands for the file in errors.
XOV_EXPORT Result<StationTable> parseStationTable(QByteArrayView text, const QString& name) noexcept;

} // namespace xov
