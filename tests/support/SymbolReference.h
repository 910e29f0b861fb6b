#pragma once

#include "XOV_Graphics/platform/Symbols.h"

#include <QImage>
#include <QTransform>

namespace xov::testing {

/// Symbols on white paper, drawn the slow and obvious way: for each symbol in turn, for each pixel, coverage by
/// sampling the pixel densely, first the fill and then the outline, laid over what is there without rounding in
/// between.
QImage referenceSymbols(const Symbols& symbols, const QTransform& viewToDevice, QSize size);

} // namespace xov::testing
