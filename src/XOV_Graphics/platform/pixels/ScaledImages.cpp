#include "XOV_Graphics/platform/pixels/ScaledImages.h"

#include <algorithm>

namespace xov {

namespace {

constexpr std::size_t kMostEntries = 2; // a window, and a picture of other pixels that is taken of it

// QRectF's own comparison takes places for equal that differ by parts of a millionth.
bool isSame(const QRectF& a, const QRectF& b) {
  return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

} // namespace

bool ScaledImages::Place::operator==(const Place& other) const {
  return image == other.image && isSame(source, other.source) && isSame(device, other.device) &&
         visible == other.visible && edges == other.edges;
}

ResampledImage ScaledImages::scaled(const QImage& image, const QRectF& source, const QRectF& device,
                                    const QRect& visible, CellEdges edges) {
  const Place place{image.cacheKey(), source, device, visible, edges};
  const auto known =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.place == place; });
  if (known != entries_.end()) {
    std::rotate(known, known + 1, entries_.end());
    return entries_.back().scaled;
  }
  if (entries_.size() == kMostEntries) entries_.erase(entries_.begin());
  const ResampledImage scaled = resampleImage(image, source, device, visible, edges);
  if (!scaled.image.isNull() && scaled.image.sizeInBytes() <= mostBytes_) entries_.push_back({place, scaled});
  return scaled;
}

} // namespace xov
