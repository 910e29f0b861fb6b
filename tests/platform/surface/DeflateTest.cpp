#include "XOV_Graphics/platform/surface/Deflate.h"

#include "XOV_Graphics/platform/surface/DeflateEnd.h"
#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

#include <libdeflate.h>
#include <random>
#include <string>
#include <vector>

namespace xov {
namespace {

constexpr std::size_t kPiece = 30000;

// What is packed in blocks of all three kinds, and of several in a row.
struct Kind {
  const char* name;
  char (*byte)(std::size_t i, std::mt19937& random);
};

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all = {
      {"zeros", [](std::size_t, std::mt19937&) { return '\0'; }},
      {"noise, which is stored as it stands", [](std::size_t, std::mt19937& random) { return char(random()); }},
      {"digits", [](std::size_t, std::mt19937& random) { return char('0' + random() % 10); }},
      {"text of changing kinds", [](std::size_t i, std::mt19937& random) {
         return i / 12000 % 3 == 0 ? char(random() % 4) : i / 12000 % 3 == 1 ? char(random()) : "seismogram"[i % 10];
       }}};
  return all;
}

QByteArray bytesOf(const Kind& kind, std::size_t count) {
  std::mt19937 random(7);
  QByteArray bytes(qsizetype(count), Qt::Uninitialized);
  for (std::size_t i = 0; i < count; ++i)
    bytes[qsizetype(i)] = kind.byte(i, random);
  return bytes;
}

QByteArray unpacked(const QByteArray& stream, qsizetype size) {
  libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
  QByteArray bytes(size + 1, '\0');
  std::size_t length = 0;
  const libdeflate_result result = libdeflate_zlib_decompress(
      decompressor, stream.constData(), std::size_t(stream.size()), bytes.data(), std::size_t(bytes.size()), &length);
  libdeflate_free_decompressor(decompressor);
  EXPECT_EQ(result, LIBDEFLATE_SUCCESS);
  bytes.truncate(qsizetype(length));
  return bytes;
}

std::vector<std::uint8_t> deflated(const QByteArray& bytes, int level) {
  libdeflate_compressor* const compressor = libdeflate_alloc_compressor(level);
  std::vector<std::uint8_t> stream(libdeflate_deflate_compress_bound(compressor, std::size_t(bytes.size())));
  stream.resize(libdeflate_deflate_compress(compressor, bytes.constData(), std::size_t(bytes.size()), stream.data(),
                                            stream.size()));
  libdeflate_free_compressor(compressor);
  return stream;
}

TEST(Deflate, isUnpackedToTheSameBytes) {
  for (const Kind& kind : kinds()) {
    const QByteArray all = bytesOf(kind, 3 * kPiece + 1234);
    for (const qsizetype count : {qsizetype(0), qsizetype(1), qsizetype(kPiece), qsizetype(kPiece) + 1, all.size()}) {
      for (const int level : {1, 6}) {
        const QByteArray bytes = all.first(count);
        EXPECT_TRUE(unpacked(packedZlib(bytes, level, kPiece), count) == bytes) << kind.name << ", " << count;
      }
    }
  }
}

TEST(Deflate, isTheSameWithAnyNumberOfThreads) {
  const QByteArray bytes = bytesOf(kinds().back(), 5 * kPiece + 1);
  setThreadCount(1);
  const QByteArray alone = packedZlib(bytes, 1, kPiece);
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    EXPECT_TRUE(packedZlib(bytes, 1, kPiece) == alone) << threads;
  }
}

TEST(Deflate, isHardlyLongerInPieces) {
  const QByteArray bytes = bytesOf(kinds()[2], 4 * kPiece);
  EXPECT_LT(double(packedZlib(bytes, 1, kPiece).size()), 1.02 * double(deflated(bytes, 1).size()));
}

TEST(DeflateEnd, isFoundInBlocksOfEveryKind) {
  for (const Kind& kind : kinds()) {
    for (const std::size_t count : {std::size_t(1), std::size_t(40), std::size_t(100000)}) {
      const std::vector<std::uint8_t> stream = deflated(bytesOf(kind, count), 6);
      const auto found = findDeflateEnd(stream);
      ASSERT_TRUE(found) << kind.name << ", " << count;
      EXPECT_EQ((found->end + 7) / 8, stream.size());
      EXPECT_EQ(stream[found->lastBlock / 8] >> found->lastBlock % 8 & 1, 1);
    }
  }
}

// Written by hand: bits from the lowest of a byte on.
TEST(DeflateEnd, isWhereTheFormatSays) {
  // Last, stored, 5 bits to the byte's end, 2 bytes and their complement, the bytes.
  const std::vector<std::uint8_t> stored = {0x01, 0x02, 0x00, 0xFD, 0xFF, 'a', 'b'};
  EXPECT_EQ(findDeflateEnd(stored)->end, 56U);
  // Last, codes as fixed, and the seven zeros of the end: 3 + 7 bits.
  const std::vector<std::uint8_t> empty = {0x03, 0x00};
  EXPECT_EQ(findDeflateEnd(empty)->end, 10U);
  EXPECT_EQ(findDeflateEnd(empty)->lastBlock, 0U);
  // The same behind an empty stored block, whose header takes the first byte.
  const std::vector<std::uint8_t> two = {0x00, 0x00, 0x00, 0xFF, 0xFF, 0x03, 0x00};
  EXPECT_EQ(findDeflateEnd(two)->lastBlock, 40U);
  EXPECT_EQ(findDeflateEnd(two)->end, 50U);
}

TEST(DeflateEnd, isNotFoundInDamagedStreams) {
  const std::vector<std::uint8_t> whole = deflated(bytesOf(kinds().back(), 50000), 6);
  for (const std::size_t length : {std::size_t(0), std::size_t(1), whole.size() / 2, whole.size() - 1})
    EXPECT_FALSE(findDeflateEnd(std::span(whole).first(length))) << length;
  EXPECT_FALSE(findDeflateEnd(std::vector<std::uint8_t>{0x07, 0x00})) << "a kind of block that there is not";
  EXPECT_FALSE(findDeflateEnd(std::vector<std::uint8_t>{0x01, 0x02, 0x00, 0xFD, 0xFE, 'a', 'b'})) << "its check";
  std::mt19937 random(11);
  for (int repeat = 0; repeat < 300; ++repeat) { // whatever it finds, it comes to an end
    std::vector<std::uint8_t> damaged(whole.begin(), whole.begin() + 1500);
    for (int k = 0; k < 5; ++k)
      damaged[random() % damaged.size()] = std::uint8_t(random());
    const auto found = findDeflateEnd(damaged);
    if (found) {
      EXPECT_LE(found->end, 8 * damaged.size());
    }
  }
}

} // namespace
} // namespace xov
