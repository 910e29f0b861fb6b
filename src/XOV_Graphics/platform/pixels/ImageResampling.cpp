#include "XOV_Graphics/platform/pixels/ImageResampling.h"

#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/TaskPool.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>
#include <vector>

namespace xov {

namespace {

constexpr std::size_t kChannels = 4;
constexpr double kPointsPerInch = 72;
// A cell on paper is made of pixels of this resolution: a viewer that smooths blurs its edges by no more than that.
constexpr double kCellsPerInch = 300;
// Finer ones show no more on paper: lines between cells a printer's dots, pictures not even these.
constexpr double kFinestCellsPerInch = 600;
constexpr double kFinestPicturePerInch = 300;
// Up to so many pixels a picture is short without any loss.
constexpr int kSmallPicture = 1 << 16;
constexpr double kLargestPaperSide = 4096;
constexpr int kBandRows = 16; // that one thread makes together

/// The image pixels that a row or column of device pixels takes, from `first` on, and the weight of each.
struct Taps {
  int first = 0;
  std::size_t weightsAt = 0;
  int count = 0;
};

/// A stretch of the image on one of the device, in one direction.
struct AxisPlace {
  double sourceFrom;
  double sourceLength;
  int sourcePixels;
  double deviceFrom;
  double deviceLength;
};

/// One direction: for each device pixel from `begin` on, within low … high - 1, its taps.
struct AxisTaps {
  AxisTaps(const AxisPlace& place, int low, int high, CellEdges edges);

  int begin = 0;
  std::vector<Taps> taps;
  std::vector<float> weights;

private:
  void addAverage(double from, double to, double perPixel, int pixels);
};

AxisTaps::AxisTaps(const AxisPlace& place, int low, int high, CellEdges edges)
    : begin(int(std::clamp(std::floor(place.deviceFrom), double(low), double(high)))) {
  const auto [sourceFrom, sourceLength, sourcePixels, deviceFrom, deviceLength] = place;
  const double deviceTo = deviceFrom + deviceLength;
  const int end = int(std::clamp(std::ceil(deviceTo), double(begin), double(high)));
  const double perPixel = sourceLength / deviceLength;
  for (int pixel = begin; pixel < end; ++pixel) {
    const double from = std::max(double(pixel), deviceFrom);
    const double to = std::min(double(pixel) + 1, deviceTo);
    if (perPixel > 1 || edges == CellEdges::Shared) {
      addAverage(sourceFrom + (from - deviceFrom) * perPixel, sourceFrom + (to - deviceFrom) * perPixel, perPixel,
                 sourcePixels);
      continue;
    }
    const double middle = std::clamp(pixel + 0.5, from, to);
    const double shown = std::floor(sourceFrom + (middle - deviceFrom) * perPixel);
    taps.push_back({int(std::clamp(shown, 0.0, double(sourcePixels - 1))), weights.size(), 1});
    weights.push_back(float(to - from));
  }
}

void AxisTaps::addAverage(double from, double to, double perPixel, int pixels) {
  const int first = int(std::clamp(std::floor(from), 0.0, double(pixels - 1)));
  const int last = int(std::clamp(std::ceil(to), double(first) + 1, double(pixels)));
  taps.push_back({first, weights.size(), last - first});
  for (int pixel = first; pixel < last; ++pixel) {
    const double overlap = std::min(to, pixel + 1.0) - std::max(from, double(pixel));
    weights.push_back(float(std::max(0.0, overlap) / perPixel));
  }
}

using Sums = std::vector<std::array<float, kChannels>>;

void addRow(const QRgb* pixels, float weight, Sums& sums) {
  for (std::size_t x = 0; x < sums.size(); ++x) {
    for (std::size_t channel = 0; channel < kChannels; ++channel)
      sums[x][channel] += weight * float((pixels[x] >> (8 * channel)) & 0xff);
  }
}

QRgb average(const Sums& sums, const Taps& taps, const float* weights) {
  std::array<float, kChannels> total{};
  for (int i = 0; i < taps.count; ++i) {
    for (std::size_t channel = 0; channel < kChannels; ++channel)
      total[channel] += weights[i] * sums[std::size_t(taps.first + i)][channel];
  }
  QRgb pixel = 0;
  for (std::size_t channel = 0; channel < kChannels; ++channel)
    pixel |= QRgb(std::min(255.0F, total[channel] + 0.5F)) << (8 * channel);
  return pixel;
}

bool isFourBytes(const QImage& image) {
  return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
}

// The taps of a direction, counted from the first image pixel that any of them uses.
int shiftToFirst(AxisTaps& axis, int& pixels) {
  int first = pixels;
  int last = 0;
  for (const Taps& taps : axis.taps) {
    first = std::min(first, taps.first);
    last = std::max(last, taps.first + taps.count);
  }
  for (Taps& taps : axis.taps)
    taps.first -= first;
  pixels = last - first;
  return first;
}

void fillRow(const QImage& pixels, const AxisTaps& x, const AxisTaps& y, int row, Sums& sums, QRgb* out) {
  std::fill(sums.begin(), sums.end(), std::array<float, kChannels>{});
  const Taps& rows = y.taps[std::size_t(row)];
  for (int i = 0; i < rows.count; ++i)
    addRow(reinterpret_cast<const QRgb*>(pixels.constScanLine(rows.first + i)),
           y.weights[rows.weightsAt + std::size_t(i)], sums);
  for (std::size_t column = 0; column < x.taps.size(); ++column)
    out[column] = average(sums, x.taps[column], &x.weights[x.taps[column].weightsAt]);
}

// Rows that show the same image row need no second reckoning.
bool sameRow(const AxisTaps& y, int row) {
  const Taps& now = y.taps[std::size_t(row)];
  const Taps& before = y.taps[std::size_t(row) - 1];
  return now.count == 1 && before.count == 1 && now.first == before.first &&
         y.weights[now.weightsAt] == y.weights[before.weightsAt];
}

} // namespace

ResampledImage resampleImage(const QImage& image, const QRectF& source, const QRectF& device, const QRect& visible,
                             CellEdges edges) {
  if (image.isNull() || source.isEmpty() || device.isEmpty() || visible.isEmpty()) return {};
  AxisTaps x({source.x(), source.width(), image.width(), device.x(), device.width()}, visible.left(),
             visible.right() + 1, edges);
  AxisTaps y({source.y(), source.height(), image.height(), device.y(), device.height()}, visible.top(),
             visible.bottom() + 1, edges);
  if (x.taps.empty() || y.taps.empty()) return {};
  QSize used = image.size();
  const int left = shiftToFirst(x, used.rwidth());
  const int top = shiftToFirst(y, used.rheight());
  QImage pixels = left == 0 && top == 0 && used == image.size() ? image : image.copy(QRect(QPoint(left, top), used));
  if (!isFourBytes(pixels)) pixels = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QImage out(int(x.taps.size()), int(y.taps.size()), QImage::Format_ARGB32_Premultiplied);
  if (pixels.isNull() || out.isNull()) throw std::bad_alloc();
  uchar* const bits = out.bits();
  const qsizetype bytesPerLine = out.bytesPerLine();
  const int width = out.width(), height = out.height();
  Spares<Sums> spareSums([&used] { return Sums(std::size_t(used.width())); });
  runTasks((height + kBandRows - 1) / kBandRows, TaskStart::FirstAlone, [&](int band) {
    const auto sums = spareSums.take();
    const int first = band * kBandRows, end = std::min(first + kBandRows, height);
    for (int row = first; row < end; ++row) {
      uchar* const line = bits + row * bytesPerLine;
      if (row > first && sameRow(y, row)) {
        std::copy_n(line - bytesPerLine, std::size_t(width) * sizeof(QRgb), line);
      } else {
        fillRow(pixels, x, y, row, *sums, reinterpret_cast<QRgb*>(line));
      }
    }
  });
  return {out, QPoint(x.begin, y.begin)};
}

QImage imageForPaper(const QImage& image, const QRectF& source, const QSizeF& size, ImageKind kind) {
  const double finestPerInch = kind == ImageKind::Cells ? kFinestCellsPerInch : kFinestPicturePerInch;
  const auto side = [finestPerInch](double pixels, double points) {
    const double finest = std::ceil(points * finestPerInch / kPointsPerInch);
    if (pixels > finest) return std::max(1.0, finest);
    const double perPixel = std::floor(points * kCellsPerInch / kPointsPerInch / pixels);
    const double most = std::floor(kLargestPaperSide / pixels);
    return std::max(1.0, std::round(pixels * std::max(1.0, std::min(perPixel, most))));
  };
  const QSizeF pixels(side(source.width(), size.width()), side(source.height(), size.height()));
  const CellEdges edges = kind == ImageKind::ExactPicture ? CellEdges::Shared : CellEdges::Sharp;
  return resampleImage(image, source, QRectF(QPointF(), pixels), QRect(QPoint(), pixels.toSize()), edges).image;
}

bool isJpegOnPaper(const QImage& page, bool isOpaque, ImageKind kind) {
  return kind != ImageKind::Cells && isOpaque && page.width() * page.height() > kSmallPicture;
}

} // namespace xov
