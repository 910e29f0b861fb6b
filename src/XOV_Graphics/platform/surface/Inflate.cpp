#include "XOV_Graphics/platform/surface/Inflate.h"

#include <libdeflate.h>
#include <memory>
#include <new>

namespace xov {

namespace {

constexpr qsizetype kUsualRatio = 8;      // of bytes to their packed form
constexpr qsizetype kLargestRatio = 2048; // zlib reaches half of it

} // namespace

std::optional<QByteArray> unpackedZlib(QByteArrayView stream) {
  const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> decompressor(
      libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
  if (!decompressor) throw std::bad_alloc();
  for (qsizetype ratio = kUsualRatio; ratio <= kLargestRatio; ratio *= 4) {
    QByteArray result(ratio * stream.size(), Qt::Uninitialized);
    std::size_t taken = 0, length = 0;
    const libdeflate_result outcome =
        libdeflate_zlib_decompress_ex(decompressor.get(), stream.data(), static_cast<std::size_t>(stream.size()),
                                      result.data(), static_cast<std::size_t>(result.size()), &taken, &length);
    if (outcome == LIBDEFLATE_INSUFFICIENT_SPACE) continue;
    if (outcome != LIBDEFLATE_SUCCESS || qsizetype(taken) != stream.size()) return {};
    result.truncate(qsizetype(length));
    return result;
  }
  return {};
}

} // namespace xov
