#include "XOV_Graphics/platform/surface/PixelMemory.h"

#include "XOV_Graphics/base/LargePages.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

namespace xov {

namespace {

constexpr std::align_val_t kAlignment{64};
constexpr qsizetype kBytesPerPixel = 4;

// What lies in front of the pixels.
struct alignas(64) Block {
  qsizetype bytes = 0; // of the pixels behind it
};

uchar* pixelsOf(Block* block) { return reinterpret_cast<uchar*>(block + 1); }

void release(Block* block) { ::operator delete(block, kAlignment); }

// Of several sizes, for views that are drawn in turn. No lock: a child of a fork could find it taken.
std::array<std::atomic<Block*>, 4> kept = {};
std::atomic<qsizetype> keptBytes = 0;

void drop(Block* block) {
  keptBytes -= block->bytes;
  release(block);
}

Block* made(qsizetype bytes) {
  void* const memory = ::operator new(sizeof(Block) + std::size_t(bytes), kAlignment, std::nothrow);
  if (memory == nullptr) return nullptr;
  auto* const block = new (memory) Block{bytes};
  askForLargePages(pixelsOf(block), std::size_t(bytes));
  return block;
}

// As large as that or a little more.
Block* taken(qsizetype bytes) {
  for (std::atomic<Block*>& slot : kept) {
    Block* const block = slot.exchange(nullptr);
    if (block == nullptr) continue;
    if (bytes <= block->bytes && block->bytes <= bytes + bytes / 4) {
      keptBytes -= block->bytes;
      return block;
    }
    Block* none = nullptr;
    if (!slot.compare_exchange_strong(none, block)) drop(block);
  }
  return made(bytes);
}

void dropAll() {
  for (std::atomic<Block*>& slot : kept) {
    if (Block* const block = slot.exchange(nullptr); block != nullptr) drop(block);
  }
}

void giveBack(void* memory) {
  auto* const block = static_cast<Block*>(memory);
  if (block->bytes > kMostKept) return release(block);
  offerToSystem(pixelsOf(block), std::size_t(block->bytes));
  if (keptBytes + block->bytes > kMostKept) dropAll();
  keptBytes += block->bytes;
  for (std::atomic<Block*>& slot : kept) {
    Block* none = nullptr;
    if (slot.compare_exchange_strong(none, block)) return;
  }
  if (Block* const other = kept[0].exchange(block); other != nullptr) drop(other);
}

} // namespace

QImage reusedImage(QSize size, QImage::Format format) {
  if (size.isEmpty()) return {};
  const qsizetype line = size.width() * kBytesPerPixel;
  const qsizetype bytes = line * size.height();
  if (bytes < kLeastKept) return {size, format};
  Block* const block = taken(bytes);
  if (block == nullptr) return {};
  return {pixelsOf(block), size.width(), size.height(), line, format, giveBack, block};
}

} // namespace xov
