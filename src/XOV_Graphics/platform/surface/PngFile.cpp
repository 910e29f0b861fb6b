#include "XOV_Graphics/platform/surface/PngFile.h"

#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/platform/surface/Deflate.h"
#include "XOV_Graphics/platform/surface/PngColors.h"
#include "XOV_Graphics/platform/surface/PngRows.h"

#include <QtEndian>

#include <algorithm>
#include <libdeflate.h>
#include <memory>
#include <new>
#include <numeric>

namespace xov {

namespace {

constexpr int kBandRows = 32;
constexpr int kOpaque = 255;
// Plots of lines become 5 % smaller at level 5, in a quarter more time. Photographs take more of it for their many
// channels: at the level that Qt writes with, which packs them as well.
constexpr int kLevel = 2;
constexpr int kPhotographLevel = 6;
constexpr qsizetype kLongestData = 1 << 20; // of a chunk; readers may keep one as a whole

void appendNumber(QByteArray& bytes, quint32 number) {
  const quint32 big = qToBigEndian(number);
  bytes.append(reinterpret_cast<const char*>(&big), sizeof big);
}

void appendChunk(QByteArray& file, const char* type, QByteArrayView data) {
  appendNumber(file, quint32(data.size()));
  const qsizetype begin = file.size();
  file.append(type, 4);
  file.append(data);
  appendNumber(file, libdeflate_crc32(0, file.constData() + begin, std::size_t(file.size() - begin)));
}

bool isOpaque(const QImage& image) {
  if (!image.hasAlphaChannel()) return true;
  std::vector<char> opaque(std::size_t((image.height() + kBandRows - 1) / kBandRows), 1);
  runTasks(int(opaque.size()), TaskStart::FirstAlone, [&](int band) {
    const int first = band * kBandRows, end = std::min(first + kBandRows, image.height());
    QRgb all = qRgba(0, 0, 0, kOpaque);
    for (int y = first; y < end; ++y) {
      const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
      all = std::accumulate(line, line + image.width(), all, [](QRgb a, QRgb b) { return a & b; });
    }
    opaque[std::size_t(band)] = qAlpha(all) == kOpaque ? 1 : 0;
  });
  return std::all_of(opaque.begin(), opaque.end(), [](char each) { return each != 0; });
}

QByteArray packedPixels(const QImage& image, const PngPixels& pixels) {
  const std::size_t rowBytes = PngRows(image, pixels).rowBytes();
  const std::size_t size = rowBytes * std::size_t(image.height());
  const auto rows = std::make_unique_for_overwrite<std::uint8_t[]>(size); // each of which is written
  Spares<PngRows> makers([&] { return PngRows(image, pixels); });
  std::vector<int> photographs(std::size_t((image.height() + kBandRows - 1) / kBandRows));
  runTasks(int(photographs.size()), TaskStart::FirstAlone, [&](int band) {
    const int first = band * kBandRows, end = std::min(first + kBandRows, image.height());
    photographs[std::size_t(band)] = makers.take()->write(first, end, rows.get() + rowBytes * std::size_t(first));
  });
  const int all = std::accumulate(photographs.begin(), photographs.end(), 0);
  const QByteArrayView bytes(rows.get(), qsizetype(size));
  return packedZlib(bytes, 2 * all > image.height() ? kPhotographLevel : kLevel);
}

void appendHeader(QByteArray& file, const QImage& image, const PngPixels& pixels) {
  QByteArray header;
  appendNumber(header, quint32(image.width()));
  appendNumber(header, quint32(image.height()));
  header.append(char(pixels.bits));
  header.append(char(pixels.kind));
  header.append(3, '\0'); // packed by deflate, with the five filters, not interlaced
  appendChunk(file, "IHDR", header);
}

void appendResolution(QByteArray& file, const QImage& image) {
  if (image.dotsPerMeterX() <= 0 || image.dotsPerMeterY() <= 0) return;
  QByteArray resolution;
  appendNumber(resolution, quint32(image.dotsPerMeterX()));
  appendNumber(resolution, quint32(image.dotsPerMeterY()));
  resolution.append('\1'); // a metre
  appendChunk(file, "pHYs", resolution);
}

void appendPalette(QByteArray& file, const std::vector<QRgb>& palette) {
  QByteArray colors, alphas;
  for (const QRgb color : palette) {
    colors.append(char(qRed(color))).append(char(qGreen(color))).append(char(qBlue(color)));
    if (qAlpha(color) != kOpaque) alphas.append(char(qAlpha(color)));
  }
  appendChunk(file, "PLTE", colors);
  if (!alphas.isEmpty()) appendChunk(file, "tRNS", alphas);
}

} // namespace

QByteArray pngFile(const QImage& image) {
  // Opaque colours are the same, premultiplied or not, so that they are taken as they stand.
  const bool isPremultiplied = image.format() == QImage::Format_ARGB32_Premultiplied;
  const QImage given = isPremultiplied           ? image
                       : image.hasAlphaChannel() ? image.convertToFormat(QImage::Format_ARGB32)
                                                 : image.convertToFormat(QImage::Format_RGB32);
  const QImage plain = !given.isNull() && isOpaque(given) ? QImage(given.constBits(), given.width(), given.height(),
                                                                   given.bytesPerLine(), QImage::Format_RGB32)
                                                          : given.convertToFormat(QImage::Format_ARGB32);
  if (plain.isNull()) throw std::bad_alloc();
  const PngPixels pixels = leastPngPixels(plain);
  const QByteArray data = packedPixels(plain, pixels);
  QByteArray file = QByteArrayLiteral("\x89PNG\r\n\x1a\n");
  constexpr qsizetype kRest = 2048; // more than everything but the pixels takes
  file.reserve(data.size() + data.size() / kLongestData * 16 + kRest);
  appendHeader(file, plain, pixels);
  if (!pixels.palette.empty()) appendPalette(file, pixels.palette);
  appendResolution(file, image);
  for (qsizetype at = 0; at < data.size(); at += kLongestData)
    appendChunk(file, "IDAT", QByteArrayView(data).sliced(at, std::min(kLongestData, data.size() - at)));
  appendChunk(file, "IEND", {});
  return file;
}

} // namespace xov
