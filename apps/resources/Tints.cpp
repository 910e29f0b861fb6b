#include "apps/resources/Tints.h"

#include "apps/resources/Relief.h"

#include <algorithm>
#include <cmath>

namespace xov::maker {

namespace {

constexpr float kFull = 255;
constexpr float kGlare = 0.5F; // how much of the light beyond 1 turns a colour towards white

Rgb colourOf(QRgb pixel) {
  return {float(qRed(pixel)) / kFull, float(qGreen(pixel)) / kFull, float(qBlue(pixel)) / kFull};
}

constexpr Rgb kLake{0.16F, 0.33F, 0.50F};

constexpr float kPale = 0.7F; // ice is at least as bright

/// Blue, or the bright green of shallow lakes.
bool isWater(const Rgb& colour) {
  return colour.red < kPale && (colour.blue > colour.red + 0.06F || colour.green > colour.red + 0.22F);
}

/// Whether the sea is within a few pixels.
bool isCoastal(const Relief& relief, int x, int y) {
  constexpr int kNear = 3;
  for (int j = std::max(y - kNear, 0); j <= std::min(y + kNear, relief.height - 1); ++j) {
    for (int i = x - kNear; i <= x + kNear; ++i) {
      if (relief.at((i + relief.width) % relief.width, j) < 0) return true;
    }
  }
  return false;
}

/// The mean of the known pixels around one; false when there is none.
bool meanAround(const std::vector<Rgb>& colours, const std::vector<bool>& known, int width, int height, int x, int y,
                Rgb& mean) {
  Rgb sum{0, 0, 0};
  int count = 0;
  for (int j = std::max(y - 1, 0); j <= std::min(y + 1, height - 1); ++j) {
    for (int i = x - 1; i <= x + 1; ++i) {
      const std::size_t at = std::size_t(j) * std::size_t(width) + std::size_t((i + width) % width);
      if (!known[at]) continue;
      sum = {sum.red + colours[at].red, sum.green + colours[at].green, sum.blue + colours[at].blue};
      ++count;
    }
  }
  if (count == 0) return false;
  const float share = 1 / float(count);
  mean = {sum.red * share, sum.green * share, sum.blue * share};
  return true;
}

} // namespace

QRgb Rgb::rounded() const {
  const auto level = [](float channel) { return int(std::lround(std::clamp(channel, 0.0F, 1.0F) * kFull)); };
  return qRgb(level(red), level(green), level(blue));
}

Rgb mixed(const Rgb& a, const Rgb& b, float part) {
  return {a.red + part * (b.red - a.red), a.green + part * (b.green - a.green), a.blue + part * (b.blue - a.blue)};
}

Rgb lit(const Rgb& colour, float light) {
  if (light > 1) return mixed(colour, {1, 1, 1}, kGlare * (light - 1));
  // Shadows keep some blue, as under an open sky.
  constexpr float kSky = 0.12F;
  return {colour.red * light, colour.green * light, colour.blue * (light + kSky * (1 - light))};
}

float softStep(float from, float to, float value) {
  const float part = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
  return part * part * (3 - 2 * part);
}

Rgb tint(std::span<const ColourStop> stops, float metres) {
  const auto above =
      std::find_if(stops.begin(), stops.end(), [&](const ColourStop& s) { return s.metres >= metres; });
  if (above == stops.begin()) return stops.front().colour;
  if (above == stops.end()) return stops.back().colour;
  const ColourStop& below = *(above - 1);
  return mixed(below.colour, above->colour, (metres - below.metres) / (above->metres - below.metres));
}

LandColours::LandColours(const QImage& globe, const Relief& relief) : width_(globe.width()), height_(globe.height()) {
  constexpr int kReach = 12; // pixels that land colours spread over water
  const std::size_t pixels = std::size_t(width_) * std::size_t(height_);
  colours_.resize(pixels);
  std::vector<bool> known(pixels);
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const std::size_t at = std::size_t(y) * std::size_t(width_) + std::size_t(x);
      colours_[at] = colourOf(globe.pixel(x, y));
      known[at] = relief.at(x, y) > 0;
      if (!known[at] || !isWater(colours_[at])) continue;
      known[at] = !isCoastal(relief, x, y);
      colours_[at] = kLake;
    }
  }
  for (int pass = 0; pass < kReach; ++pass) {
    const std::vector<bool> before = known;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        const std::size_t at = std::size_t(y) * std::size_t(width_) + std::size_t(x);
        if (!before[at]) known[at] = meanAround(colours_, before, width_, height_, x, y, colours_[at]);
      }
    }
  }
}

Rgb LandColours::at(double longitude, double latitude) const {
  const double x = (longitude + 180) * width_ / 360 - 0.5;
  const double y = std::clamp((90 - latitude) * height_ / 180 - 0.5, 0.0, height_ - 1.0);
  const int column = int(std::floor(x));
  const int left = (column + width_) % width_;
  const int right = (column + 1) % width_;
  const int top = int(y);
  const int bottom = std::min(top + 1, height_ - 1);
  const auto u = float(x - column);
  const auto v = float(y - top);
  return mixed(mixed(pixel(left, top), pixel(right, top), u), mixed(pixel(left, bottom), pixel(right, bottom), u), v);
}

} // namespace xov::maker
