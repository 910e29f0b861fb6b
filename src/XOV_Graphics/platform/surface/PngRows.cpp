#include "XOV_Graphics/platform/surface/PngRows.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace xov {

namespace {

using Byte = std::uint8_t;

// The numbers of the file format.
enum Filter : std::uint8_t { kNone, kSub, kUp, kAverage, kFilters };

constexpr double kFewBreaks = 0.35; // of a row's bytes
constexpr std::size_t kSumLanes = 64;
constexpr std::size_t kMostRounds = 255; // that a byte can count

void subtractLeft(const Byte* row, std::size_t count, std::size_t step, Byte* out) {
  std::copy_n(row, std::min(step, count), out);
  for (std::size_t i = step; i < count; ++i)
    out[i] = Byte(row[i] - row[i - step]);
}

void subtractAbove(const Byte* row, const Byte* above, std::size_t count, Byte* out) {
  for (std::size_t i = 0; i < count; ++i)
    out[i] = Byte(row[i] - above[i]);
}

void subtractMean(const Byte* row, const Byte* above, std::size_t count, std::size_t step, Byte* out) {
  for (std::size_t i = 0; i < std::min(step, count); ++i)
    out[i] = Byte(row[i] - above[i] / 2);
  for (std::size_t i = step; i < count; ++i)
    out[i] = Byte(row[i] - (row[i - step] + above[i]) / 2);
}

/// Counts side by side, in bytes as long as these can hold it.
template <class Count>
std::size_t countBytes(std::size_t count, const Count& countAt) {
  std::size_t sum = 0, at = 0;
  while (at + kSumLanes <= count) {
    std::array<Byte, kSumLanes> lanes{};
    const std::size_t rounds = std::min((count - at) / kSumLanes, kMostRounds);
    for (std::size_t round = 0; round < rounds; ++round, at += kSumLanes) {
      for (std::size_t i = 0; i < kSumLanes; ++i)
        lanes[i] = Byte(lanes[i] + countAt(at + i));
    }
    for (const Byte lane : lanes)
      sum += lane;
  }
  for (; at < count; ++at)
    sum += countAt(at);
  return sum;
}

/// Bytes that differ from those of the pixel on the left.
std::size_t breaks(const Byte* row, std::size_t count, std::size_t step) {
  if (count <= step) return 0;
  return countBytes(count - step, [=](std::size_t i) { return Byte(row[i] != row[i + step]); });
}

/// The sum of bytes as numbers from -128 to 127 without their signs.
std::size_t size(const Byte* row, std::size_t count) {
  std::size_t sum = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned value = row[i];
    sum += std::min(value, 256U - value);
  }
  return sum;
}

} // namespace

PngRows::PngRows(const QImage& image, const PngPixels& pixels)
    : image_(image),
      pixels_(pixels),
      palette_(pixels.palette),
      isWide_(pixels.kind == PngPixels::Kind::Rgb || pixels.kind == PngPixels::Kind::Rgba),
      step_(isWide_ ? sizeof(QRgb) : 1) {
  const std::size_t bytes = isWide_ ? std::size_t(image.width()) * sizeof(QRgb) : sampleBytes();
  row_.resize(bytes);
  above_.resize(bytes);
  filtered_.assign(kFilters, Row(bytes));
}

std::size_t PngRows::sampleBytes() const {
  const auto width = std::size_t(image_.width());
  if (pixels_.kind == PngPixels::Kind::Rgb) return 3 * width;
  if (pixels_.kind == PngPixels::Kind::Rgba) return 4 * width;
  return (width * std::size_t(pixels_.bits) + 7) / 8;
}

/// Loads the pixels of a row: as they stand, or as greys or places in the palette, packed into bytes.
void PngRows::load(int y, Row& row) const {
  const auto* const line = reinterpret_cast<const QRgb*>(image_.constScanLine(y));
  const int width = image_.width();
  if (isWide_) {
    // What is not stored must not have a say in what is.
    const QRgb mask = pixels_.kind == PngPixels::Kind::Rgb ? qRgba(255, 255, 255, 0) : ~QRgb(0);
    for (std::size_t x = 0; x < std::size_t(width); ++x) {
      const QRgb pixel = line[x] & mask;
      std::memcpy(row.data() + x * sizeof pixel, &pixel, sizeof pixel);
    }
    return;
  }
  const bool isGrey = pixels_.kind == PngPixels::Kind::Grey;
  const int bits = pixels_.bits;
  if (isGrey && bits == 8) {
    for (int x = 0; x < width; ++x)
      row[std::size_t(x)] = Byte(line[x]);
    return;
  }
  const QRgb mask = image_.hasAlphaChannel() ? 0 : qRgba(0, 0, 0, 255);
  std::fill(row.begin(), row.end(), Byte(0));
  QRgb last = line[0] | mask;
  const auto sampleOf = [&](QRgb color) {
    return isGrey ? unsigned(qRed(color)) >> (8 - bits) : unsigned(palette_.placeOf(color));
  };
  unsigned sample = sampleOf(last);
  const int perByte = 8 / bits;
  for (int x = 0; x < width; ++x) {
    const QRgb color = line[x] | mask;
    if (color != last) {
      sample = sampleOf(color);
      last = color;
    }
    Byte& byte = row[std::size_t(x / perByte)];
    byte = Byte(byte | (sample << (8 - bits * (1 + x % perByte)))); // the leftmost pixel in the highest bits
  }
}

std::uint8_t PngRows::chooseFilter(bool& isPhotograph) {
  isPhotograph = false;
  const std::size_t count = row_.size();
  filtered_[kNone] = row_;
  subtractAbove(row_.data(), above_.data(), count, filtered_[kUp].data());
  const std::size_t plain = breaks(row_.data(), count, step_), up = breaks(filtered_[kUp].data(), count, step_);
  std::uint8_t best = up < plain ? kUp : kNone;
  // Places in a palette and parts of bytes are no quantities.
  if (pixels_.kind == PngPixels::Kind::Palette || pixels_.bits < 8) return best;
  if (double(std::min(plain, up)) < kFewBreaks * double(count)) return best;
  isPhotograph = true;
  subtractLeft(row_.data(), count, step_, filtered_[kSub].data());
  subtractMean(row_.data(), above_.data(), count, step_, filtered_[kAverage].data());
  std::array<std::size_t, kFilters> sizes{};
  for (std::size_t filter = 0; filter < kFilters; ++filter)
    sizes[filter] = size(filtered_[filter].data(), count);
  best = std::uint8_t(std::min_element(sizes.begin(), sizes.end()) - sizes.begin());
  return best;
}

void PngRows::store(const Row& row, std::uint8_t* out) const {
  if (!isWide_) {
    std::memcpy(out, row.data(), row.size());
    return;
  }
  const bool hasAlpha = pixels_.kind == PngPixels::Kind::Rgba;
  for (std::size_t i = 0; i < row.size(); i += sizeof(QRgb)) {
    QRgb pixel = 0; // of filtered channels
    std::memcpy(&pixel, row.data() + i, sizeof pixel);
    *out++ = Byte(qRed(pixel));
    *out++ = Byte(qGreen(pixel));
    *out++ = Byte(qBlue(pixel));
    if (hasAlpha) *out++ = Byte(qAlpha(pixel));
  }
}

int PngRows::write(int first, int end, std::uint8_t* out) {
  if (first > 0)
    load(first - 1, row_);
  else
    std::fill(row_.begin(), row_.end(), Byte(0));
  int photographs = 0;
  const std::size_t bytes = rowBytes();
  for (int y = first; y < end; ++y, out += bytes) {
    if (y > 0 && isLikeAbove(image_, y)) {
      *out = kUp;
      std::fill_n(out + 1, bytes - 1, Byte(0));
      continue;
    }
    std::swap(row_, above_);
    load(y, row_);
    bool isPhotograph = false;
    *out = chooseFilter(isPhotograph);
    photographs += isPhotograph ? 1 : 0;
    store(filtered_[*out], out + 1);
  }
  return photographs;
}

} // namespace xov
