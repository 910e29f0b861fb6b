#include "apps/resources/Pictures.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace xov::maker {

namespace {

constexpr int kBytes = 3; // a pixel of QImage::Format_RGB888

constexpr ColourStop kSoftSea[] = {{-10000, {0.10F, 0.20F, 0.38F}}, {-6500, {0.16F, 0.31F, 0.51F}},
                                   {-4500, {0.24F, 0.42F, 0.62F}},  {-2500, {0.36F, 0.55F, 0.71F}},
                                   {-800, {0.48F, 0.66F, 0.78F}},   {-150, {0.60F, 0.76F, 0.84F}},
                                   {0, {0.70F, 0.83F, 0.88F}}};
constexpr ColourStop kSoftLand[] = {{0, {0.62F, 0.70F, 0.52F}},    {300, {0.74F, 0.76F, 0.58F}},
                                    {1000, {0.82F, 0.77F, 0.62F}}, {2200, {0.78F, 0.69F, 0.57F}},
                                    {3800, {0.80F, 0.75F, 0.70F}}, {5500, {0.96F, 0.96F, 0.96F}}};
constexpr ColourStop kDarkSea[] = {{-9000, {0.005F, 0.02F, 0.10F}}, {-5500, {0.02F, 0.07F, 0.21F}},
                                   {-3000, {0.04F, 0.13F, 0.31F}},  {-400, {0.07F, 0.25F, 0.44F}},
                                   {-80, {0.11F, 0.36F, 0.53F}},    {0, {0.18F, 0.47F, 0.60F}}};
constexpr ColourStop kDeepBlues[] = {{-10500, {0.04F, 0.03F, 0.20F}}, {-7500, {0.07F, 0.09F, 0.36F}},
                                     {-5500, {0.11F, 0.22F, 0.54F}},  {-4000, {0.17F, 0.36F, 0.68F}},
                                     {-2500, {0.28F, 0.53F, 0.80F}},  {-1000, {0.43F, 0.69F, 0.88F}},
                                     {-200, {0.60F, 0.82F, 0.92F}},   {0, {0.76F, 0.91F, 0.95F}}};
constexpr ColourStop kGreensAndBrowns[] = {{0, {0.27F, 0.50F, 0.32F}},    {120, {0.38F, 0.60F, 0.36F}},
                                           {350, {0.58F, 0.70F, 0.42F}},  {700, {0.78F, 0.77F, 0.51F}},
                                           {1200, {0.82F, 0.70F, 0.45F}}, {2000, {0.72F, 0.55F, 0.36F}},
                                           {3000, {0.60F, 0.45F, 0.35F}}, {4200, {0.70F, 0.63F, 0.60F}},
                                           {5200, {0.90F, 0.90F, 0.91F}}, {6500, {1, 1, 1}}};
constexpr Rgb kIce{0.93F, 0.95F, 0.97F};

/// How much of a land colour from space is ice: bright, and far enough from the equator to be no sand or salt.
float iceShare(const Rgb& land, double latitude) {
  return softStep(0.62F, 0.80F, land.blue) * softStep(54, 62, float(std::abs(latitude)));
}

Rgb brightened(const Rgb& c, float exponent) {
  return {std::pow(c.red, exponent), std::pow(c.green, exponent), std::pow(c.blue, exponent)};
}

/// Light with its contrast changed.
float contrasted(float light, float strength) { return std::max(0.0F, 1 + strength * (light - 1)); }

/// Slopes flatten as pixels grow, so that the same relief needs more exaggeration.
double exaggeration(const Relief& relief, double forTwentyPixelsADegree) {
  const double pixelsADegree = relief.width / (relief.window.east - relief.window.west);
  return forTwentyPixelsADegree * std::pow(20 / pixelsADegree, 0.6);
}

/// A sea as on paper, where slopes are lit less on the shelf than at depth.
float seaLight(float light, float metres, float strength) {
  return contrasted(light, strength * (0.4F + 0.6F * softStep(0, 1500, -metres)));
}

/// The colour of a place, with the colour of the land from space there, how much of it is ice, and the light on it.
Rgb colourOf(Scheme scheme, float metres, const Rgb& land, float ice, float light) {
  // Ice is smooth, and what is left of the steps between grey values would show on it most.
  const float onLand = 1 - 0.75F * ice;
  switch (scheme) {
  case Scheme::Natural:
    if (metres < 0) return lit(tint(kSoftSea, metres), seaLight(light, metres, 0.55F));
    return lit(mixed(mixed(brightened(land, 0.70F), tint(kSoftLand, metres), 0.35F), kIce, 0.6F * ice),
               contrasted(light, 0.75F * onLand));
  case Scheme::LivingEarth:
    if (metres < 0) return lit(tint(kDarkSea, metres), seaLight(light, metres, 0.8F));
    return lit(brightened(land, 0.88F), contrasted(light, 0.8F * onLand));
  case Scheme::Elevation:
    break;
  }
  if (metres < 0) return lit(tint(kDeepBlues, metres), seaLight(light, metres, 0.9F));
  return lit(mixed(tint(kGreensAndBrowns, metres), kIce, ice), contrasted(light, 0.9F * onLand));
}

} // namespace

QImage oneAndAHalfTimes(const QImage& globe) {
  const QImage source = globe.convertToFormat(QImage::Format_RGB888);
  const int width = source.width();
  QImage wide(width + width / 2, source.height(), QImage::Format_RGB888);
  for (int y = 0; y < wide.height(); ++y) {
    uchar* line = wide.scanLine(y);
    std::memcpy(line, source.constScanLine(y), std::size_t(width) * kBytes);
    std::memcpy(line + std::size_t(width) * kBytes, line, std::size_t(width / 2) * kBytes);
  }
  return wide;
}

MapPainter::MapPainter(QImage greys, ElevationGrid grid, const QImage& fromSpace)
    : greys_(std::move(greys)),
      grid_(std::move(grid)),
      table_(fittedElevations(greys_, grid_)),
      fromSpace_(fromSpace.convertToFormat(QImage::Format_RGB32)),
      land_(fromSpace_, sampledRelief(greys_, table_, grid_, kWholeGlobe, fromSpace_.width(), fromSpace_.height())) {}

QImage MapPainter::fromSpace(int width, int height) const {
  return oneAndAHalfTimes(fromSpace_.scaled(width / 3 * 2, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

QImage MapPainter::globe(Scheme scheme, int width, int height) const {
  const int globeWidth = width / 3 * 2;
  const Relief relief = sampledRelief(greys_, table_, grid_, kWholeGlobe, globeWidth, height);
  const Hillshade shade(relief, exaggeration(relief, 9), exaggeration(relief, 11));
  QImage picture(globeWidth + globeWidth / 2, height, QImage::Format_RGB888);
  for (int y = 0; y < height; ++y) {
    uchar* line = picture.scanLine(y);
    for (int x = 0; x < globeWidth; ++x) {
      const Rgb land = land_.at(relief.longitude(x), relief.latitude(y));
      const float ice = iceShare(land, relief.latitude(y));
      const QRgb pixel = colourOf(scheme, relief.at(x, y), land, ice, shade.at(x, y)).rounded();
      uchar* bytes = line + x * kBytes;
      bytes[0] = uchar(qRed(pixel));
      bytes[1] = uchar(qGreen(pixel));
      bytes[2] = uchar(qBlue(pixel));
    }
    std::memcpy(line + std::size_t(globeWidth) * kBytes, line, std::size_t(globeWidth / 2) * kBytes);
  }
  return picture;
}

QImage MapPainter::greyRelief(const GeoWindow& window, int width, int height) const {
  const Relief relief = sampledRelief(greys_, table_, grid_, window, width, height);
  const Hillshade shade(relief, exaggeration(relief, 6), exaggeration(relief, 7));
  constexpr ColourStop kGreys[] = {{-5000, {0.42F, 0.42F, 0.42F}}, {-200, {0.58F, 0.58F, 0.58F}},
                                   {-1, {0.64F, 0.64F, 0.64F}},    {0, {0.80F, 0.80F, 0.80F}},
                                   {1500, {0.86F, 0.86F, 0.86F}},  {3500, {0.95F, 0.95F, 0.95F}}};
  QImage picture(width, height, QImage::Format_Grayscale8);
  for (int y = 0; y < height; ++y) {
    uchar* line = picture.scanLine(y);
    for (int x = 0; x < width; ++x) {
      const float light = contrasted(shade.at(x, y), relief.at(x, y) < 0 ? 0.5F : 0.85F);
      const Rgb grey = tint(kGreys, relief.at(x, y));
      line[x] = uchar(qRed(Rgb(mixed({0, 0, 0}, grey, std::min(light, 1.2F))).rounded()));
    }
  }
  return picture;
}

} // namespace xov::maker
