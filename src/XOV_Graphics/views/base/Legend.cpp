#include "XOV_Graphics/views/base/Legend.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace xov {

namespace {

constexpr double kInset = 6; // of the box from the frame, and of the rows from the box
constexpr double kRowHeight = 14;
constexpr double kSampleLength = 20;
constexpr double kSampleGap = 6; // to the text
constexpr double kOutlineWidth = 0.5;
constexpr double kOpacity = 0.85;
constexpr qsizetype kMostCharacters = 256; // beyond, a text is no name
constexpr double kThinnest = 1.5;          // a thinner line hardly shows its colour

constexpr std::array kCorners = {LegendPlace::TopRight, LegendPlace::TopLeft, LegendPlace::BottomRight,
                                 LegendPlace::BottomLeft};

QRectF boxIn(const QRectF& frame, const QSizeF& size, LegendPlace corner) {
  const bool isLeft = corner == LegendPlace::TopLeft || corner == LegendPlace::BottomLeft;
  const bool isLow = corner == LegendPlace::BottomLeft || corner == LegendPlace::BottomRight;
  const double x = isLeft ? frame.x() + kInset : frame.x() + frame.width() - kInset - size.width();
  const double y = isLow ? frame.y() + kInset : frame.y() + frame.height() - kInset - size.height();
  return {QPointF(x, y), size};
}

QRectF leastCovered(const QRectF& frame, const QSizeF& size, const CoveredPart& covered) {
  QRectF best = boxIn(frame, size, kCorners.front());
  double least = covered ? covered(best) : 0;
  for (const LegendPlace corner : kCorners) {
    if (!(least > 0)) break;
    const QRectF box = boxIn(frame, size, corner);
    if (const double part = covered(box); part < least) {
      best = box;
      least = part;
    }
  }
  return best;
}

QString cutTo(double width, QString text, const TextAttributes& font) {
  text.truncate(kMostCharacters);
  if (font.size(text).width() <= width) return text;
  const QString dots = QStringLiteral("...");
  while (!text.isEmpty() && font.size(text + dots).width() > width)
    text.chop(1);
  return text + dots;
}

// How many rows fit; none in a frame without a finite size.
std::size_t rowsIn(const QRectF& frame, std::size_t wanted) {
  const double rows = std::floor((frame.height() - 4 * kInset) / kRowHeight);
  if (!(rows >= 1)) return 0;
  return std::size_t(std::min(rows, double(wanted)));
}

} // namespace

LegendLayout layOutLegend(const QRectF& frame, std::span<const LegendEntry> entries, LegendPlace place,
                          const TextAttributes& font, const CoveredPart& covered) {
  LegendLayout legend;
  const double room = frame.width() - 4 * kInset - kSampleLength - kSampleGap;
  const std::size_t rows = rowsIn(frame, entries.size());
  if (rows == 0 || !(room > 0)) return legend;
  double widest = 0;
  for (std::size_t i = 0; i < rows; ++i) {
    LegendLayout::Row row{cutTo(room, entries[i].text, font), {}, {}, entries[i].color};
    if (i + 1 == rows && rows < entries.size())
      row = {cutTo(room, QStringLiteral("and %1 more").arg(entries.size() - i), font), {}, {}, {}};
    widest = std::max(widest, font.size(row.text).width());
    legend.rows.push_back(std::move(row));
  }
  const QSizeF size(2 * kInset + kSampleLength + kSampleGap + widest, 2 * kInset + double(rows) * kRowHeight);
  legend.box = place == LegendPlace::Best ? leastCovered(frame, size, covered) : boxIn(frame, size, place);
  double middle = legend.box.y() + size.height() - kInset - kRowHeight / 2;
  const double left = legend.box.x() + kInset;
  for (LegendLayout::Row& row : legend.rows) {
    row.sample = {left, middle, left + kSampleLength, middle};
    row.place = {left + kSampleLength + kSampleGap, middle - font.lineHeight() / 2};
    middle -= kRowHeight;
  }
  return legend;
}

void drawLegend(const LegendLayout& legend, const TextAttributes& font, double lineWidth) {
  if (legend.rows.empty()) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  QColor paper = colors::white;
  paper.setAlphaF(float(kOpacity));
  context.setColor(paper);
  context.fillRect(legend.box);
  Path outline = Path::rect(legend.box);
  outline.setLineWidth(kOutlineWidth);
  context.setColor(colors::lightGray);
  context.strokePath(outline);
  for (const LegendLayout::Row& row : legend.rows) {
    if (row.color) {
      Path sample;
      sample.moveTo(row.sample.p1());
      sample.lineTo(row.sample.p2());
      sample.setLineWidth(std::max(lineWidth, kThinnest));
      context.setColor(*row.color);
      context.strokePath(sample);
    }
    context.drawText(row.text, row.place, font);
  }
}

} // namespace xov
