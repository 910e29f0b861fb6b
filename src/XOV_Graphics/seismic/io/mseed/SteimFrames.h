#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// Compressed samples come in frames of 64 bytes, 16 words of four. The first word of a frame has two bits a word
/// that say what the word holds: no differences (0), four of 8 bits (1), and otherwise, in Steim1, two of 16 bits (2)
/// or one of 32 bits (3); in Steim2 the two highest bits of the word itself tell further:
///
///     2: 1 one of 30 bits, 2 two of 15, 3 three of 10          3: 0 five of 6 bits, 1 six of 5, 2 seven of 4
///
/// the last difference of a word in its lowest bits. The next two words of the first frame are the first and the last
/// sample. The first difference, which leads to the first sample from the record before, is passed over.
///
/// Source: SEED Reference Manual, version 2.4 (FDSN, 2012), appendix B.
enum class SteimVersion : std::uint8_t { Steim1, Steim2 };

/// Decodes as many samples as there is room for, and gives the last one; nothing when the frames hold fewer, or a
/// difference of a kind that does not exist. Sums beyond 32 bits go round. Where numbers are little-endian, so are
/// the words, and in Steim1 each of a word's differences by itself.
std::optional<std::int32_t> decodeSteim(SteimVersion version, bool isBigEndian, QByteArrayView frames,
                                        std::span<float> samples);

} // namespace xov
