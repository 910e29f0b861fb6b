#include "platform/ImageFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <cerrno>

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

QByteArray encode(const QImage& image, ImageFormat format, int jpegQuality, QString* error) {
  if (image.isNull()) {
    report(error, QStringLiteral("there is no picture to write: the view is empty or too large"));
    return {};
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, formatName(format));
  if (format == ImageFormat::Tiff) writer.setCompression(kTiffUncompressed);
  if (format == ImageFormat::TiffLzw) writer.setCompression(kTiffLzw);
  if (format == ImageFormat::Jpeg) writer.setQuality(jpegQuality);
  QImage file = prepared(image, format);
  file.setDotsPerMeterX(image.dotsPerMeterX());
  file.setDotsPerMeterY(image.dotsPerMeterY());
  if (writer.write(file)) return bytes;
  report(error, QStringLiteral("cannot write %1: %2").arg(QLatin1String(formatName(format)), writer.errorString()));
  return {};
}

// Why writing failed. A flush that fails leaves the reason with the system only.
QString reasonOf(const QFileDevice& file) {
  const QString system = qt_error_string(errno);
  return file.error() == QFileDevice::NoError || file.error() == QFileDevice::UnspecifiedError ? system
                                                                                               : file.errorString();
}

// A device or a pipe is written to and never replaced.
bool writeInPlace(QFile& file, const FileContents& contents) {
  return file.open(QIODevice::WriteOnly) && contents(file) && file.flush();
}

bool isSpecialFile(const QString& path) {
  const QFileInfo info(path);
  return info.exists() && !info.isFile() && !info.isDir();
}

} // namespace

QByteArray encodeImage(const QImage& image, ImageFormat format, QString* error) {
  return encode(image, format, kJpegQuality, error);
}

QByteArray encodeJpeg(const QImage& image, int quality, QString* error) {
  return encode(image, ImageFormat::Jpeg, quality, error);
}

bool writeFileAtomically(const QString& path, const QByteArray& bytes, QString* error) {
  return writeFileAtomically(
      path, [&bytes](QIODevice& device) { return device.write(bytes) == bytes.size(); }, error);
}

bool writeFileAtomically(const QString& path, const FileContents& contents, QString* error) {
  if (isSpecialFile(path)) {
    QFile device(path);
    if (writeInPlace(device, contents)) return true;
    report(error, QStringLiteral("%1: %2").arg(path, reasonOf(device)));
    return false;
  }
  // The flush comes before the commit: what a full disk leaves in the buffer would otherwise be lost in silence while
  // the file takes its place.
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && contents(file) && file.flush() && file.commit()) return true;
  report(error, QStringLiteral("%1: %2").arg(path, reasonOf(file)));
  return false;
}

} // namespace xov
