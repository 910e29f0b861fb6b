#include "XOV_Graphics/platform/pixels/KeptTexts.h"

#include <QHashFunctions>
#include <QPainter>
#include <QRect>
#include <QRectF>

#include <cstring>

namespace xov {

namespace {

// A view may be drawn for other surfaces between two pictures of its window.
constexpr int kPicturesWithout = 3;
constexpr qsizetype kMostEntries = 2048;
constexpr qsizetype kShareOfOne = 16; // of all bytes, at most, for one line

void clear(QImage& image, const QRect& rect) {
  for (int row = rect.top(); row <= rect.bottom(); ++row)
    std::memset(image.scanLine(row) + qsizetype(rect.left()) * 4, 0, std::size_t(rect.width()) * 4);
}

} // namespace

std::size_t qHash(const TextPlace& place, std::size_t seed) noexcept {
  return qHashMulti(seed, place.line, place.matrix.m11(), place.matrix.m12(), place.matrix.dx(), place.matrix.dy());
}

const KeptTexts::Ink* KeptTexts::inkOf(const TextPlace& place, QSize picture,
                                       const std::function<QPainterPath()>& outline) {
  const auto known = entries_.find(place);
  if (known == entries_.end()) {
    if (entries_.size() < kMostEntries) entries_.insert(place, {.first = picture_, .last = picture_});
    return nullptr;
  }
  Entry& entry = *known;
  entry.last = picture_;
  if (entry.first == picture_) return nullptr;
  if (entry.ink.image.isNull() && !(hasRoom(entry, picture) && keepInk(entry, place, picture, outline())))
    return nullptr;
  const QRect ink(entry.ink.topLeft, entry.ink.image.size());
  return QRect(QPoint(), picture).contains(ink) ? &entry.ink : nullptr;
}

// As far as is known before its outline is.
bool KeptTexts::hasRoom(const Entry& entry, QSize picture) const {
  return entry.reachedOutOf != picture && entry.bytes <= mostBytes_ / kShareOfOne &&
         bytes_ + entry.bytes <= mostBytes_;
}

bool KeptTexts::keepInk(Entry& entry, const TextPlace& place, QSize picture, const QPainterPath& outline) {
  const QRectF box = place.matrix.mapRect(outline.controlPointRect());
  const QRect ink = box.toAlignedRect().adjusted(-1, -1, 1, 1).intersected(QRect(QPoint(), picture));
  if (ink.isEmpty() || !QRectF(QPointF(), QSizeF(picture)).contains(box)) entry.reachedOutOf = picture;
  entry.bytes = qsizetype(ink.width()) * ink.height() * 4;
  if (!hasRoom(entry, picture)) return false;
  if (scratch_.size() != picture) scratch_ = QImage(picture, QImage::Format_ARGB32_Premultiplied);
  if (scratch_.isNull()) return false;
  clear(scratch_, ink);
  {
    QPainter painter(&scratch_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(place.matrix);
    painter.fillPath(outline, QColor::fromRgba64(place.color));
  }
  entry.ink = {ink.topLeft(), scratch_.copy(ink)};
  bytes_ += entry.ink.image.sizeInBytes();
  return !entry.ink.image.isNull();
}

void KeptTexts::endPicture() {
  scratch_ = {};
  entries_.removeIf([this](const QHash<TextPlace, Entry>::iterator& entry) {
    if (entry->last + kPicturesWithout >= picture_) return false;
    bytes_ -= entry->ink.image.sizeInBytes();
    return true;
  });
  ++picture_;
}

} // namespace xov
