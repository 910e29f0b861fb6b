#pragma once

#include "XOV_Graphics/map/GeoMapFeature.h"

namespace xov {

/// A symbol at one place of a map: an epicentre, a station. Every value of a new one is 0, alpha is 1.
class XOV_EXPORT geoMapPoint : public GeoMapFeature {
public:
  /// The map view draws a circle whose radius is twelve times this, in view points.
  float symbolSize() const { return symbolSize_; }
  void setSymbolSize(float symbolSize) { symbolSize_ = symbolSize; }

private:
  float symbolSize_ = 0;
};

} // namespace xov
