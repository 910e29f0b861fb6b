#include "XOV_Graphics/platform/surface/PngColors.h"

#include "XOV_Graphics/base/TaskPool.h"

#include <algorithm>
#include <cstring>

namespace xov {

namespace {

constexpr int kBandRows = 64;
constexpr int kFullByte = 255;
constexpr int kOpaque = 255;

const QRgb* lineOf(const QImage& image, int y) { return reinterpret_cast<const QRgb*>(image.constScanLine(y)); }

/// False when there are too many colours.
bool addColors(const QImage& image, int firstRow, int endRow, QRgb mask, PngPalette& palette) {
  QRgb last = 0;
  bool isFirst = true;
  const int width = image.width();
  for (int y = firstRow; y < endRow; ++y) {
    if (y > firstRow && isLikeAbove(image, y)) continue;
    const QRgb* const line = lineOf(image, y);
    for (int x = 0; x < width; ++x) {
      const QRgb color = line[x] | mask;
      if (color == last && !isFirst) continue;
      if (!palette.add(color)) return false;
      last = color;
      isFirst = false;
    }
  }
  return true;
}

/// The colours of a picture in the order in which they appear; none when there are too many.
std::vector<QRgb> fewColors(const QImage& image) {
  const QRgb mask = image.hasAlphaChannel() ? 0 : qRgba(0, 0, 0, kOpaque);
  const int bands = (image.height() + kBandRows - 1) / kBandRows;
  std::vector<PngPalette> palettes(std::size_t(std::max(bands, 1)));
  std::vector<char> fits(palettes.size(), 1);
  // Where the first band already has too many, the others need no look.
  runTasks(bands, TaskStart::FirstAlone, [&](int band) {
    const int first = band * kBandRows, end = std::min(first + kBandRows, image.height());
    const auto k = std::size_t(band);
    fits[k] = fits[0] != 0 && addColors(image, first, end, mask, palettes[k]) ? 1 : 0;
  });
  PngPalette all;
  for (std::size_t k = 0; k < palettes.size(); ++k) {
    if (fits[k] == 0) return {};
    for (const QRgb color : palettes[k].colors()) {
      if (!all.add(color)) return {};
    }
  }
  return all.colors();
}

int bitsForCount(std::size_t colors) { return colors <= 2 ? 1 : colors <= 4 ? 2 : colors <= 16 ? 4 : 8; }

/// Of greys, whose samples are whole parts of white.
int bitsForGreys(const std::vector<QRgb>& colors) {
  for (const int bits : {1, 2, 4}) {
    const int step = kFullByte / ((1 << bits) - 1);
    if (std::all_of(colors.begin(), colors.end(), [step](QRgb color) { return qRed(color) % step == 0; }))
      return bits;
  }
  return 8;
}

bool isOpaqueGrey(QRgb color) {
  return qRed(color) == qGreen(color) && qGreen(color) == qBlue(color) && qAlpha(color) == kOpaque;
}

} // namespace

PngPalette::PngPalette() : slots_(kSlots, kFree) {}

PngPalette::PngPalette(const std::vector<QRgb>& colors) : PngPalette() {
  for (const QRgb color : colors)
    add(color);
}

std::size_t PngPalette::slotOf(QRgb color) const {
  constexpr std::uint32_t kSpread = 2654435769U; // 2^32 / golden ratio
  constexpr int kShift = 22;                     // leaves the bits of a slot's number
  std::size_t slot = (color * kSpread) >> kShift;
  while (slots_[slot] != kFree && colors_[std::size_t(slots_[slot])] != color)
    slot = (slot + 1) % kSlots;
  return slot;
}

bool PngPalette::add(QRgb color) {
  const std::size_t slot = slotOf(color);
  if (slots_[slot] != kFree) return true;
  if (colors_.size() == std::size_t(kMost)) return false;
  slots_[slot] = std::int16_t(colors_.size());
  colors_.push_back(color);
  return true;
}

bool isLikeAbove(const QImage& image, int y) {
  return std::memcmp(lineOf(image, y), lineOf(image, y - 1), std::size_t(image.width()) * sizeof(QRgb)) == 0;
}

PngPixels leastPngPixels(const QImage& image) {
  using Kind = PngPixels::Kind;
  std::vector<QRgb> colors = fewColors(image);
  if (colors.empty()) return {image.hasAlphaChannel() ? Kind::Rgba : Kind::Rgb, 8, {}};
  const int bits = bitsForCount(colors.size());
  if (std::all_of(colors.begin(), colors.end(), isOpaqueGrey)) {
    const int greyBits = bitsForGreys(colors);
    if (greyBits <= bits) return {Kind::Grey, greyBits, {}};
  }
  std::stable_partition(colors.begin(), colors.end(), [](QRgb color) { return qAlpha(color) != kOpaque; });
  return {Kind::Palette, bits, std::move(colors)};
}

} // namespace xov
