#pragma once

#include <QByteArray>

namespace xov {

/// Packs bytes as a zlib stream, with libdeflate's levels. Long ones are packed piece by piece on several threads and
/// put together bit by bit: the result depends on the bytes and the level alone. Throws std::bad_alloc.
QByteArray packedZlib(QByteArrayView bytes, int level);

} // namespace xov
