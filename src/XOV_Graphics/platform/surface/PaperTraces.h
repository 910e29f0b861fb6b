#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QByteArray>
#include <QColor>
#include <QPainterPath>
#include <QPolygonF>
#include <QRectF>
#include <QTransform>

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace xov {

/// Cuts a line into the short strokes that viewers are quick to draw. Where one ends and the next begins they share a
/// segment, so that the joins at its two ends are drawn.
void forEachStroke(const QPolygonF& line, const std::function<void(std::span<const QPointF>)>& draw);

/// The traces of a PDF page, as operators of its content. Millions of lines go several times faster straight into the
/// file than through a painter: the painter fills a small marker in their place, out of sight and in their colour and
/// clip, and insertInto() then puts them where the markers are.
class PaperTraces {
public:
  /// False for coordinates that a page cannot hold in whole hundredths of a point: traces inside `visible`, in the
  /// coordinates of a path, must go through the painter.
  static bool canHold(const QRectF& visible, const QTransform& toPage);

  /// Takes traces to be stroked with round joins and butt ends, as much of them as `visible` shows. Returns what the
  /// painter is to fill with `color` in the page's own coordinates; empty when nothing shows.
  QPainterPath stroke(const std::vector<Trace>& traces, const QRectF& visible, const QTransform& toPage,
                      double lineWidth, const QColor& color);

  /// The same for traces to be filled with `color`, each piece between gaps closed from its last sample to its first:
  /// places about which they wind, or with `evenOdd` those inside of an odd number of them.
  QPainterPath fill(const std::vector<Trace>& traces, const QRectF& visible, const QTransform& toPage, bool evenOdd,
                    const QColor& color);

  bool isEmpty() const { return ends_.empty(); }

  /// The page's content with the traces in place of their markers, and takes them; nothing when the markers are not
  /// there one by one as they were handed out.
  std::optional<QByteArray> insertInto(const QByteArray& content);

private:
  bool append(std::vector<QByteArray> pieces);
  QPainterPath finish(qsizetype begin, bool shows, const char* operators);

  QByteArray operators_;
  std::vector<qsizetype> ends_; ///< of the operators that each marker stands for
};

} // namespace xov
