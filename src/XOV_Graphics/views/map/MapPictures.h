#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QImage>
#include <QString>

namespace xov {

/// A map picture that is kept among the resources.
struct MapPicture {
  int index;        ///< what hosts ask for it by
  const char* file; ///< name of the resource
  int rows;         ///< what cell positions are reckoned in, whatever the size of the file
  int columns;
  PlotLimits extent; ///< degrees
  float dx;          ///< degrees a column; negative where positions are not to be reckoned
  float dy;          ///< degrees a row
};

/// The picture of an index; null where there is none.
const MapPicture* mapPicture(int index);

/// Reads a picture from the resources, whatever its size up to a gigabyte of pixels. Refuses one that is not there,
/// cannot be read, or ends before its time.
Result<QImage> readMapPicture(const MapPicture& picture);

} // namespace xov
