#pragma once

#include "XOV_Graphics/platform/pixels/ImageResampling.h"

#include <vector>

namespace xov {

/// Keeps what images became on the pixels of a device, so that drawing one again, at its place and in its size, costs
/// no more than copying what shows of it. Any change of the image, the place, the size or what is visible of it makes
/// it anew. Memory is bounded: the last two are kept, unless they are too large.
class ScaledImages {
public:
  /// Images of more bytes than these are not kept. The usual number is that of a screen of 7680 × 4320 pixels.
  explicit ScaledImages(qsizetype mostBytes = qsizetype(4) * 7680 * 4320) : mostBytes_(mostBytes) {}

  /// As resampleImage().
  ResampledImage scaled(const QImage& image, const QRectF& source, const QRectF& device, const QRect& visible,
                        CellEdges edges);
  void clear() { entries_.clear(); }

private:
  struct Place {
    qint64 image; // its key, which changes with its pixels
    QRectF source;
    QRectF device;
    QRect visible;
    CellEdges edges;

    bool operator==(const Place& other) const;
  };
  struct Entry {
    Place place;
    ResampledImage scaled;
  };

  qsizetype mostBytes_;
  std::vector<Entry> entries_; // the one that was asked for last stands last
};

} // namespace xov
