#pragma once

#include "XOV_Graphics/platform/surface/Picture.h"

#include <QByteArray>
#include <QRectF>

namespace xov {

/// A PDF document of one page that shows the part of a view inside `rect`, as large as the rectangle in points. It
/// carries no date, so that the same drawing gives the same bytes. Empty for an empty rectangle. Throws
/// std::bad_alloc, what `draw` throws, and std::runtime_error where the page that Qt made is not whole.
QByteArray pdfPage(const QRectF& rect, const Drawing& draw);

} // namespace xov
