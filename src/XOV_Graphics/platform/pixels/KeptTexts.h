#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QPainterPath>
#include <QPoint>
#include <QRgba64>
#include <QSize>
#include <QString>
#include <QTransform>

#include <functional>

namespace xov {

/// A line of text, and where and how it lies on the pixels of a device.
struct TextPlace {
  QString line;
  QString family;
  QTransform matrix; ///< from design units, y downwards, to pixels
  QRgba64 color;

  bool operator==(const TextPlace& other) const = default;
};

/// Keeps the pixels of lines of text that a view draws again where they were: laying one on costs a fraction of
/// filling its outlines, and gives the same pixels. A line is kept from the second picture on that it is in, so that
/// pictures drawn once cost nothing, and forgotten when some pictures did without it. Memory is bounded.
class KeptTexts {
public:
  /// The ink of a line on nothing.
  struct Ink {
    QPoint topLeft;
    QImage image;
  };

  /// No more bytes than these are kept. The usual number is that of some hundred labels of a sharp screen.
  explicit KeptTexts(qsizetype mostBytes = qsizetype(4) << 20) : mostBytes_(mostBytes) {}

  /// The ink of a line in a picture of that size, which lies inside it, or null where it is not kept; `outline` tells
  /// what is filled, by the winding rule that it bears.
  const Ink* inkOf(const TextPlace& place, QSize picture, const std::function<QPainterPath()>& outline);
  /// Called after each picture.
  void endPicture();

private:
  struct Entry {
    Ink ink = {}; ///< none while it was in one picture only, and where it cannot be kept
    int first = 0;
    int last = 0;
    qsizetype bytes = 0;     ///< that its ink takes, once they are known
    QSize reachedOutOf = {}; ///< a picture that it does not lie in
  };

  bool hasRoom(const Entry& entry, QSize picture) const;
  bool keepInk(Entry& entry, const TextPlace& place, QSize picture, const QPainterPath& outline);

  const qsizetype mostBytes_;
  qsizetype bytes_ = 0;
  int picture_ = 0; // how many there were
  QHash<TextPlace, Entry> entries_;
  QImage scratch_; // as large as a picture: outlines lie at the same coordinates there, and become the same pixels
};

} // namespace xov
