#pragma once

#include <QByteArray>

#include <optional>

namespace xov {

/// What a zlib stream holds; nothing when it is damaged or goes on behind its end. Throws std::bad_alloc.
std::optional<QByteArray> unpackedZlib(QByteArrayView stream);

} // namespace xov
