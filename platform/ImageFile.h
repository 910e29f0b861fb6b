#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <cstdint>
#include <functional>

class QIODevice;

namespace xov {

/// How a picture is written.
enum class ImageFormat : std::uint8_t { Tiff, TiffLzw, Jpeg, Png };

/// The bytes of an image file, with the image's resolution in it. Empty, with a line in `error` where one is given,
/// when the image is null or the format's writer is not installed.
XOV_EXPORT QByteArray encodeImage(const QImage& image, ImageFormat format, QString* error = nullptr);

/// The bytes of a JPEG file of that quality, from 0 to 100; as encodeImage(), which takes 92.
XOV_EXPORT QByteArray encodeJpeg(const QImage& image, int quality, QString* error = nullptr);

/// Writes a whole file or nothing: the bytes go to a temporary file beside it that then takes its place. False, with
/// one line in `error` that names the file, when that fails; a file that stood there stays as it was. Devices and
/// pipes are written to as they are.
XOV_EXPORT bool writeFileAtomically(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// Writes what a file will hold to a device; false when the device does not take it.
using FileContents = std::function<bool(QIODevice&)>;

/// The same for contents too large to be made first. They are asked for only when the file could be opened.
XOV_EXPORT bool writeFileAtomically(const QString& path, const FileContents& contents, QString* error = nullptr);

} // namespace xov
