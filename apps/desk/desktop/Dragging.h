#pragma once

#include <QMimeData>

#include <XOV_Graphics/platform/Drag.h>
#include <memory>

namespace xov::desk {

/// What a dragged plot gives, with the same as PDF: as data, and as a file behind that of the picture. The file lies
/// in a temporary folder that goes with the program.
std::unique_ptr<QMimeData> mimeDataWithPdf(const PictureDrag& drag);

/// From now on plots that are dragged out of views give PDF, too.
void dragPlotsAsPdf();

} // namespace xov::desk
