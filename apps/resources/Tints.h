#pragma once

#include <QImage>

#include <span>
#include <vector>

namespace xov::maker {

struct Relief;

/// A colour with channels from 0 to 1.
struct Rgb {
  float red;
  float green;
  float blue;

  QRgb rounded() const;
};

/// Between two colours: `a` where `part` is 0, `b` where it is 1.
Rgb mixed(const Rgb& a, const Rgb& b, float part);

/// The colour in light of that strength: 1 leaves it as it is.
Rgb lit(const Rgb& colour, float light);

/// How far `value` has come from `from` to `to`, between 0 and 1, with a soft start and end.
float softStep(float from, float to, float value);

/// A colour at an elevation in metres.
struct ColourStop {
  float metres;
  Rgb colour;
};

/// The colour of an elevation between stops, which rise.
Rgb tint(std::span<const ColourStop> stops, float metres);

/// The colours of the land in a picture of the globe from space, without the sea: near coasts, where its pixels are
/// part water, and on the sea, there are those of the land beside it. Lakes have one blue.
class LandColours {
public:
  /// The relief has the size of the picture.
  LandColours(const QImage& globe, const Relief& relief);

  /// The colour at a place, between pixels.
  Rgb at(double longitude, double latitude) const;

private:
  Rgb pixel(int x, int y) const { return colours_[std::size_t(y) * std::size_t(width_) + std::size_t(x)]; }

  int width_;
  int height_;
  std::vector<Rgb> colours_;
};

} // namespace xov::maker
