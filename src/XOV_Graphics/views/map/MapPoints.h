#pragma once

#include "XOV_Graphics/map/geoMapPoint.h"
#include "XOV_Graphics/platform/Symbols.h"
#include "XOV_Graphics/views/map/MapProjection.h"

#include <QColor>

#include <memory>
#include <span>
#include <vector>

namespace xov {

/// The points of a map as symbols that can be drawn at once.
class MapPoints {
public:
  /// `outlineAll` outlines each point, whatever its colour index.
  MapPoints(std::span<const std::shared_ptr<geoMapPoint>> points, std::span<const QColor> colors, bool outlineAll,
            const MapProjection& projection);

  /// Borrows what this object holds.
  Symbols symbols(const MapProjection& projection) const;

private:
  std::vector<float> lons_;
  std::vector<float> lats_;
  std::vector<SymbolLook> looks_;
};

/// How a point looks: a radius of 12 · symbolSize; with a colour index, where there are colours, a fill of the
/// point's opacity, unless the index is beyond the colours, and an outline; another outline where all are outlined.
SymbolLook mapPointLook(const geoMapPoint& point, std::span<const QColor> colors, bool outlineAll);

} // namespace xov
