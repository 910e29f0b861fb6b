#pragma once

#include <QColor>
#include <QPainterPath>

class QPainter;

namespace xov {

/// Fills a shape of very many small pieces, such as the bars of a histogram, in upright strips of whole pixels, each
/// with the pieces that reach into it. The pixels are the same as those of one fill, whose time grows with the square
/// of the pieces that lie side by side. False, and nothing drawn, for shapes of few pieces or wide ones.
bool fillInStrips(QPainter& painter, const QPainterPath& shape, const QColor& color);

} // namespace xov
