#pragma once

#include <QByteArray>
#include <QImage>

#include <XOV_Graphics/base/Result.h>

namespace xov::maker {

/// A TIFF file with one strip that is compressed as JPEG of that quality, from 0 to 100 (Adobe Systems, 2002: Adobe
/// Photoshop TIFF Technical Notes, "TIFF Technical Note #2", compression 7). Qt itself writes TIFF without loss only,
/// which for a picture of the Earth is ten times as large.
Result<QByteArray> jpegTiff(const QImage& image, int quality);

} // namespace xov::maker
