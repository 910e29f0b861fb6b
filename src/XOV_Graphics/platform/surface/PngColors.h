#pragma once

#include <QImage>

#include <cstdint>
#include <vector>

namespace xov {

/// How the pixels of a PNG file are stored.
struct PngPixels {
  /// The numbers of the file format.
  enum class Kind : std::uint8_t { Grey = 0, Rgb = 2, Palette = 3, Rgba = 6 };

  Kind kind = Kind::Rgb;
  int bits = 8;                ///< of a sample; fewer than 8 for greys and palettes only
  std::vector<QRgb> palette{}; ///< those that are not opaque first

  bool operator==(const PngPixels&) const = default;
};

/// The least that holds every colour of a picture: up to 256 of them as greys or in a palette, else all channels.
/// Takes RGB32, whose colours are opaque, or ARGB32.
PngPixels leastPngPixels(const QImage& image);

/// True when a row, which is not the first, has the same pixels as the one above.
bool isLikeAbove(const QImage& image, int y);

/// Finds the places of colours in a palette, or makes one of the colours that it meets.
class PngPalette {
public:
  static constexpr int kMost = 256;

  PngPalette();
  explicit PngPalette(const std::vector<QRgb>& colors);

  /// False when this is one colour too many.
  bool add(QRgb color);
  const std::vector<QRgb>& colors() const { return colors_; }
  /// The place of a colour that was added.
  std::uint8_t placeOf(QRgb color) const { return std::uint8_t(slots_[slotOf(color)]); }

private:
  std::size_t slotOf(QRgb color) const;

  static constexpr std::size_t kSlots = 1024; // a quarter of them taken, so that few colours meet another's
  static constexpr std::int16_t kFree = -1;
  std::vector<std::int16_t> slots_;
  std::vector<QRgb> colors_;
};

} // namespace xov
