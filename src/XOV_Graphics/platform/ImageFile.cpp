#include "XOV_Graphics/platform/ImageFile.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/platform/surface/PictureCheck.h"
#include "XOV_Graphics/platform/surface/PngFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <new>

namespace xov {

namespace {

// The compression numbers of Qt's TIFF writer.
constexpr int kTiffUncompressed = 0;
constexpr int kTiffLzw = 1;
// Lines of a seismogram are thin and sharp; lower qualities smear them.
constexpr int kJpegQuality = 92;

const char* formatName(ImageFormat format) {
  switch (format) {
  case ImageFormat::Tiff:
  case ImageFormat::TiffLzw:
    return "tiff";
  case ImageFormat::Jpeg:
    return "jpeg";
  case ImageFormat::Png:
    break;
  }
  return "png";
}

bool isOpaque(const QImage& image) {
  if (!image.hasAlphaChannel()) return true;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(line[x]) != 255) return false;
    }
  }
  return true;
}

// Drops a transparency that is not there; JPEG has none at all, so it gets white paper.
QImage prepared(const QImage& image, ImageFormat format) {
  if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_RGB888);
  const QImage argb = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (isOpaque(argb)) return argb.convertToFormat(QImage::Format_RGB888);
  if (format != ImageFormat::Jpeg) return argb.convertToFormat(QImage::Format_ARGB32);
  QImage paper = argb;
  for (int y = 0; y < paper.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(paper.scanLine(y));
    for (int x = 0; x < paper.width(); ++x) {
      const int white = 255 - qAlpha(line[x]);
      line[x] = qRgb(qRed(line[x]) + white, qGreen(line[x]) + white, qBlue(line[x]) + white);
    }
  }
  return paper.convertToFormat(QImage::Format_RGB888);
}

void report(QString* error, const QString& text) {
  if (error != nullptr) *error = text;
}

// Texts and colour spaces, which views do not give a picture, are left to Qt's writer.
bool isPlain(const QImage& image) { return image.textKeys().isEmpty() && !image.colorSpace().isValid(); }

// With Qt's writer of the format.
Result<QByteArray> written(const QImage& image, ImageFormat format, int jpegQuality) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, formatName(format));
  if (format == ImageFormat::Tiff) writer.setCompression(kTiffUncompressed);
  if (format == ImageFormat::TiffLzw) writer.setCompression(kTiffLzw);
  if (format == ImageFormat::Jpeg) writer.setQuality(jpegQuality);
  QImage file = prepared(image, format);
  if (file.isNull()) throw std::bad_alloc();
  file.setDotsPerMeterX(image.dotsPerMeterX());
  file.setDotsPerMeterY(image.dotsPerMeterY());
  if (writer.write(file)) return bytes;
  // Into memory, formats fail without a word where that is short.
  const bool isKnown = writer.error() != QImageWriter::UnknownError;
  return Error{isKnown ? writer.errorString() : QStringLiteral("it could not be made, maybe for want of memory")};
}

// Writers of formats have their own ways to go on without memory.
Result<QByteArray> writtenWhole(const QImage& image, ImageFormat format, int jpegQuality) {
  const bool isOurs = format == ImageFormat::Png && isPlain(image);
  Result<QByteArray> file = isOurs ? pngFile(image) : written(image, format, jpegQuality);
  if (file && !isWholePicture(*file, image.size()))
    return Error{QStringLiteral("the file came out incomplete, maybe for want of memory")};
  return file;
}

QByteArray encode(const QImage& image, ImageFormat format, int jpegQuality, QString* error) {
  if (image.isNull()) {
    report(error, QStringLiteral("there is no picture to write: the view is empty or too large"));
    return {};
  }
  const QString name = QStringLiteral("cannot write ") + QLatin1String(formatName(format));
  const Result<QByteArray> file = guarded({}, [&] { return writtenWhole(image, format, jpegQuality); });
  if (!file) report(error, name + QStringLiteral(": ") + file.error());
  return *file;
}

} // namespace

QByteArray encodeImage(const QImage& image, ImageFormat format, QString* error) {
  return encode(image, format, kJpegQuality, error);
}

QByteArray encodeJpeg(const QImage& image, int quality, QString* error) {
  return encode(image, ImageFormat::Jpeg, quality, error);
}

} // namespace xov
