#pragma once

#include <cstdint>
#include <span>

namespace xov::maker {

/// What a resource is.
enum class ResourceKind : std::uint8_t {
  Grid,              ///< headerless 16-bit elevations
  Picture,           ///< a base picture of a map
  BoundariesByType,  ///< a text of plate boundaries of one type
  BoundariesOfModel, ///< the text of the model PB2002, or what stands in for it
};

/// A resource that is made at set-up time.
struct Resource {
  const char* name; ///< of its file
  ResourceKind kind;
  int width;      ///< pixels or columns of the full size; 0 for texts
  int height;     ///< pixels or rows
  int smallWidth; ///< the same of the version that comes with the library
  int smallHeight;
};

inline constexpr char kGridName[] = "etopo5.i2";
/// The small grid has another name, because a grid does not tell its size.
inline constexpr char kSmallGridName[] = "etopo30.i2";
/// The folder of the grid below the data root.
inline constexpr char kGridFolder[] = "DATA/Grids";

inline constexpr Resource kResources[] = {
    {kGridName, ResourceKind::Grid, 4320, 2160, 720, 360},
    {"nasa_satellite_wide.tif", ResourceKind::Picture, 3072, 1024, 1620, 540},
    {"natural_wide.jpg", ResourceKind::Picture, 8100, 2700, 1620, 540},
    {"noaa_image_wide.jpg", ResourceKind::Picture, 10800, 3600, 1620, 540},
    {"living_earth_wide.jpg", ResourceKind::Picture, 3600, 1200, 1620, 540},
    {"wusGray.tif", ResourceKind::Picture, 613, 540, 613, 540},
    {"trench.txt", ResourceKind::BoundariesByType, 0, 0, 0, 0},
    {"ridge.txt", ResourceKind::BoundariesByType, 0, 0, 0, 0},
    {"transform.txt", ResourceKind::BoundariesByType, 0, 0, 0, 0},
    {"PB2002_boundaries.txt", ResourceKind::BoundariesOfModel, 0, 0, 0, 0},
};

inline constexpr char kModelName[] = "PB2002_boundaries.txt";

} // namespace xov::maker
