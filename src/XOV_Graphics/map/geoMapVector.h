#pragma once

#include "XOV_Graphics/map/GeoMapFeature.h"

namespace xov {

/// A vector with its foot at one place of a map: a displacement, a velocity. Every value of a new one is 0, alpha
/// is 1.
class XOV_EXPORT geoMapVector : public GeoMapFeature {
public:
  /// How many view points long a component of 1 is drawn.
  float scaleFactor() const { return scaleFactor_; }
  void setScaleFactor(float scaleFactor) { scaleFactor_ = scaleFactor; }

  /// The components, in whatever unit the scale factor belongs to. Maps do not draw the one downwards.
  float northValue() const { return northValue_; }
  void setNorthValue(float northValue) { northValue_ = northValue; }
  /// Towards east; see northValue().
  float eastValue() const { return eastValue_; }
  void setEastValue(float eastValue) { eastValue_ = eastValue; }
  /// Downwards; see northValue().
  float downValue() const { return downValue_; }
  void setDownValue(float downValue) { downValue_ = downValue; }

private:
  float scaleFactor_ = 0;
  float northValue_ = 0;
  float eastValue_ = 0;
  float downValue_ = 0;
};

} // namespace xov
