#pragma once

#include "apps/resources/Relief.h"
#include "apps/resources/Tints.h"

#include <QImage>

#include <cstdint>

namespace xov::maker {

/// How a picture of the globe is coloured.
enum class Scheme : std::uint8_t {
  Natural,     ///< the land as seen from space but softened by elevation tints, and a light blue sea
  Elevation,   ///< greens, browns and white by elevation, blues by depth, with strong relief on land and sea floor
  LivingEarth, ///< the land as seen from space, in full colours and with relief, and a dark sea
};

/// A globe from 180 W on, and its western half once more: 540 degrees of longitude without a seam.
QImage oneAndAHalfTimes(const QImage& globe);

/// Draws base maps from the relief of the globe and its picture from space.
class MapPainter {
public:
  /// The greys and the picture show the globe from 180 W and 90 N on.
  MapPainter(QImage greys, ElevationGrid grid, const QImage& fromSpace);

  /// The picture from space, one and a half globes wide, in a size whose width is a multiple of 3.
  QImage fromSpace(int width, int height) const;
  /// The globe in that scheme, one and a half times.
  QImage globe(Scheme scheme, int width, int height) const;
  /// A window as a grey relief.
  QImage greyRelief(const GeoWindow& window, int width, int height) const;

private:
  QImage greys_;
  ElevationGrid grid_;
  ElevationTable table_;
  QImage fromSpace_;
  LandColours land_;
};

} // namespace xov::maker
