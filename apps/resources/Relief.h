#pragma once

#include "apps/resources/ElevationGrid.h"

#include <QImage>

#include <XOV_Graphics/base/Result.h>
#include <array>
#include <vector>

namespace xov::maker {

/// A picture of a file; a null one where it holds none, an error where it cannot be read.
Result<QImage> readPicture(const QString& path);

/// A picture of the globe whose grey values rise with elevation, put together from tiles of a map program: 8 rows of
/// 16 square pictures of equal size, <folder>/RRRRRR/RRRRRR_CCCCCC.jpg, from 90 N and 180 W on.
Result<QImage> readReliefTiles(const QString& folder);

/// The elevation in metres of each grey value.
using ElevationTable = std::array<float, 256>;

/// Finds the elevations of the grey values of a picture of the globe: the median of the elevations that the grid has
/// at pixels of that value, made to rise with the value (pool adjacent violators; Barlow, R., and others, 1972:
/// Statistical Inference under Order Restrictions). Values that the picture lacks are interpolated.
ElevationTable fittedElevations(const QImage& greys, const ElevationGrid& grid);

/// A window on the globe in degrees.
struct GeoWindow {
  double west;
  double east;
  double south;
  double north;
};

inline constexpr GeoWindow kWholeGlobe{-180, 180, -90, 90};

/// Elevations in metres of the pixels of a map.
struct Relief {
  GeoWindow window;
  int width;
  int height;
  std::vector<float> metres; ///< rows from the north

  double longitude(int x) const { return window.west + (x + 0.5) * (window.east - window.west) / width; }
  double latitude(int y) const { return window.north - (y + 0.5) * (window.north - window.south) / height; }
  float at(int x, int y) const { return metres[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }
};

/// The relief of a window, of no finer pixels than the picture of greys, as means over each pixel. Where the picture
/// has few greys, on the sea floor and along flat coasts, the grid has the greater part in it. Shelf ice counts as
/// land.
Relief sampledRelief(const QImage& greys, const ElevationTable& table, const ElevationGrid& grid,
                     const GeoWindow& window, int width, int height);

/// Light from the north-west on a relief, as on printed maps: 1 on flat ground, towards 0 on slopes that look away
/// from it, more than 1 on those that face it.
class Hillshade {
public:
  /// Slopes are enlarged by the factors, those below sea level and those above it. The relief must outlive this.
  Hillshade(const Relief& relief, double seaFactor, double landFactor);

  float at(int x, int y) const;

private:
  const Relief& relief_;
  double seaFactor_;
  double landFactor_;
  bool wraps_;
};

} // namespace xov::maker
