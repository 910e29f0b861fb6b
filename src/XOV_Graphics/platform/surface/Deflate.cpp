#include "XOV_Graphics/platform/surface/Deflate.h"

#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/platform/surface/DeflateEnd.h"

#include <QtEndian>

#include <algorithm>
#include <libdeflate.h>
#include <memory>
#include <new>
#include <numeric>
#include <vector>

namespace xov {

namespace {

using Compressor = std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)>;
using Piece = std::vector<std::uint8_t>;

Compressor compressorOf(int level) {
  Compressor compressor(libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
  if (!compressor) throw std::bad_alloc();
  return compressor;
}

/// What a thread packs with: room for what a piece may become, which nobody fills beforehand.
struct Packer {
  Packer(int level, std::size_t piece)
      : compressor(compressorOf(level)),
        size(libdeflate_deflate_compress_bound(compressor.get(), piece)),
        room(std::make_unique_for_overwrite<std::uint8_t[]>(size)) {}

  Piece packed(QByteArrayView bytes) {
    const std::size_t length =
        libdeflate_deflate_compress(compressor.get(), bytes.data(), std::size_t(bytes.size()), room.get(), size);
    return {room.get(), room.get() + length};
  }

  Compressor compressor;
  std::size_t size;
  std::unique_ptr<std::uint8_t[]> room;
};

QByteArray packedAsOne(QByteArrayView bytes, int level) {
  const Compressor compressor = compressorOf(level);
  const auto size = std::size_t(bytes.size());
  QByteArray result(qsizetype(libdeflate_zlib_compress_bound(compressor.get(), size)), Qt::Uninitialized);
  const std::size_t length =
      libdeflate_zlib_compress(compressor.get(), bytes.data(), size, result.data(), std::size_t(result.size()));
  result.truncate(qsizetype(length));
  return result;
}

/// Makes a stream that others follow of one that ends: its last block is none any more, and an empty block that
/// is stored as it stands fills the last byte. False when the stream is built in a way that is not known.
bool open(Piece& stream) {
  const auto found = findDeflateEnd(stream);
  if (!found || (found->end + 7) / 8 != stream.size()) return false;
  stream[found->lastBlock / 8] &= std::uint8_t(~(1U << found->lastBlock % 8));
  constexpr std::size_t kHeader = 3; // bits, all 0
  stream.resize((found->end + kHeader + 7) / 8, 0);
  for (const std::uint8_t byte : {0x00, 0x00, 0xFF, 0xFF})
    stream.push_back(byte);
  return true;
}

} // namespace

QByteArray packedZlib(QByteArrayView bytes, int level, qsizetype piece) {
  const auto count = int((bytes.size() + piece - 1) / piece);
  if (count < 2) return packedAsOne(bytes, level);
  Spares<Packer> packers([=] { return Packer(level, std::size_t(piece)); });
  std::vector<Piece> pieces(static_cast<std::size_t>(count));
  std::vector<char> isOpen(pieces.size(), 1);
  runTasks(count, TaskStart::Together, [&](int k) {
    Piece& to = pieces[std::size_t(k)];
    to = packers.take()->packed(bytes.sliced(k * piece, std::min(piece, bytes.size() - k * piece)));
    if (k + 1 < count) isOpen[std::size_t(k)] = open(to) ? 1 : 0;
  });
  if (!std::all_of(isOpen.begin(), isOpen.end(), [](char each) { return each != 0; }))
    return packedAsOne(bytes, level);

  const std::size_t size = std::accumulate(pieces.begin(), pieces.end(), std::size_t(0),
                                           [](std::size_t sum, const Piece& each) { return sum + each.size(); });
  // A window of 32 KiB, no dictionary, and the hint that this was quick.
  QByteArray result = QByteArrayLiteral("\x78\x01");
  result.reserve(qsizetype(size) + 6);
  for (const Piece& each : pieces)
    result.append(reinterpret_cast<const char*>(each.data()), qsizetype(each.size()));
  const quint32 check = qToBigEndian(libdeflate_adler32(1, bytes.data(), std::size_t(bytes.size())));
  return result.append(reinterpret_cast<const char*>(&check), sizeof check);
}

} // namespace xov
