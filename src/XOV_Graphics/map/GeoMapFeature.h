#pragma once

#include "XOV_Graphics/base/Export.h"

namespace xov {

/// What every symbol on a map has: a place and a look. Values are kept as they are given, whatever they are.
class XOV_EXPORT GeoMapFeature {
public:
  /// Degrees, north is positive.
  float lat() const { return lat_; }
  void setLat(float lat) { lat_ = lat; }
  /// Degrees, east is positive.
  float lon() const { return lon_; }
  void setLon(float lon) { lon_ = lon; }
  /// Kilometres below sea level, for hypocentres. Maps do not draw it.
  float depth() const { return depth_; }
  void setDepth(float depth) { depth_ = depth; }
  /// Sets all three at once: degrees, north and east positive, and kilometres.
  void setLatLonDepth(float lat, float lon, float depth) {
    lat_ = lat;
    lon_ = lon;
    depth_ = depth;
  }

  /// A style, for hosts that tell several apart; the map view draws only one.
  int symbolType() const { return symbolType_; }
  void setSymbolType(int symbolType) { symbolType_ = symbolType; }
  /// Index into the map view's array of colours; a negative one means no colour.
  int colorIndex() const { return colorIndex_; }
  void setColorIndex(int colorIndex) { colorIndex_ = colorIndex; }
  /// Opacity, 0..1; 1 in a new object.
  float alpha() const { return alpha_; }
  void setAlpha(float alpha) { alpha_ = alpha; }

private:
  float lat_ = 0;
  float lon_ = 0;
  float depth_ = 0;
  int symbolType_ = 0;
  int colorIndex_ = 0;
  float alpha_ = 1;
};

} // namespace xov
