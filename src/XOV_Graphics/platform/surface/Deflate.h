#pragma once

#include <QByteArray>

namespace xov {

/// Packs bytes as a zlib stream, with libdeflate's levels. Long ones are packed piece by piece on several threads and
/// put together bit by bit: the result depends on the bytes, the level and the length of pieces alone. The beginning
/// of a piece cannot refer to what stood before it, which makes each some kilobytes longer. Throws std::bad_alloc.
QByteArray packedZlib(QByteArrayView bytes, int level, qsizetype piece = qsizetype(1) << 20);

} // namespace xov
