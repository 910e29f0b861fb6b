#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <cstdint>

namespace xov {

/// How a picture is written.
enum class ImageFormat : std::uint8_t { Tiff, TiffLzw, Jpeg, Png };

/// The bytes of an image file, with the image's resolution in it. Empty, with a line in `error` where one is given,
/// when the image is null or the format's writer is not installed.
XOV_EXPORT QByteArray encodeImage(const QImage& image, ImageFormat format, QString* error = nullptr);

/// The bytes of a JPEG file of that quality, from 0 to 100; as encodeImage(), which takes 92.
XOV_EXPORT QByteArray encodeJpeg(const QImage& image, int quality, QString* error = nullptr);

} // namespace xov
