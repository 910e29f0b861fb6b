#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QByteArrayView>
#include <QString>

#include <vector>

namespace xov {

/// A station of a file.
struct XOV_EXPORT Station {
  QString network;         ///< empty where the file names none
  QString code;            ///< empty where the file holds places only
  double latitudeDeg = 0;  ///< north positive
  double longitudeDeg = 0; ///< -360 to 360, as written
  qint64 line = 0;         ///< where it stands in the file, from 1 on
};

/// Reads the stations of a text file, one a line, in the order of the file. Latitudes and longitudes are degrees,
/// north and east positive. Fields stand between bars, semicolons, commas, tabulators, or blanks, in double quotes
/// where they hold these. The lines are one of:
///
///     TLY 51.68 103.64 ...          station code, latitude, longitude
///     II,TLY,51.68,103.64 ...       network code first; recognised by a station code that is no number, in one line
///     103.64 51.68                  longitude and latitude alone
///     #Network | Station | ...      the text that FDSN web services give, with or without this line
///     net,sta,lon,lat,...           any columns in any order below a line that names latitude and longitude
///
/// What follows on a line does not count, nor do empty lines and lines that start with #, nor a first line that
/// neither names columns nor holds a place. Any other line that is no station, and a place off the globe, is refused
/// with its number, and so is a file without stations or of more than 16 MiB.
///
/// Stations also come out of the other files that readInventory() knows: each once, with its latest place.
XOV_EXPORT Result<std::vector<Station>> readStations(const QString& path) noexcept;

/// The same from memory; `name` stands for the file in errors.
XOV_EXPORT Result<std::vector<Station>> parseStations(QByteArrayView text, const QString& name) noexcept;

} // namespace xov
