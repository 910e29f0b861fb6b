#pragma once

#include <QByteArrayView>

#include <cstdint>

namespace xov {

/// The check value CRC-32C (Castagnoli, reflected polynomial 0x82F63B78) of bytes that go on where those of the check
/// value `before` end; 0 of none.
std::uint32_t crc32c(QByteArrayView bytes, std::uint32_t before = 0);

} // namespace xov
