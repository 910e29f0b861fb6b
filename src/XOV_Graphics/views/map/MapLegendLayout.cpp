#include "XOV_Graphics/views/map/MapLegendLayout.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kTextGap = 4;     // between a symbol and its text
constexpr double kItemGap = 10;    // between items
constexpr double kTitleGap = 8;    // between a title and what follows
constexpr double kSectionGap = 26; // between sections
constexpr double kLineLength = 20;
constexpr double kBarLength = 150;
constexpr double kBarHeight = 8;
constexpr double kBarRise = 2;   // of the bar's middle above that of the row
constexpr double kMarkDrop = 11; // of the texts below the bar's middle
constexpr double kRowHeight = 24;
constexpr double kRowGap = 4;
constexpr double kLargestRadius = 60;

double radiusOf(const MapLegendItem& item) {
  return std::isfinite(item.radius) ? std::clamp(item.radius, 0.0, kLargestRadius) : 0;
}

double keyWidth(const MapLegendItem& item) { return radiusOf(item) > 0 ? 2 * radiusOf(item) : kLineLength; }

double titleWidth(const MapLegendSection& section, const TextWidth& textWidth) {
  return section.title.isEmpty() ? 0 : textWidth(section.title) + kTitleGap;
}

double sectionWidth(const MapLegendSection& section, const TextWidth& textWidth) {
  double width = titleWidth(section, textWidth) + (section.colors.empty() ? 0 : kBarLength);
  for (const MapLegendItem& item : section.items)
    width += keyWidth(item) + kTextGap + textWidth(item.text) + kItemGap;
  return section.items.empty() ? width : width - kItemGap;
}

double sectionHeight(const MapLegendSection& section) {
  double height = kRowHeight;
  for (const MapLegendItem& item : section.items)
    height = std::max(height, 2 * radiusOf(item) + 2);
  return height;
}

struct Row {
  std::vector<const MapLegendSection*> sections;
  double width = 0;
  double height = 0;
};

std::vector<Row> rowsOf(const MapLegend& legend, double width, const TextWidth& textWidth) {
  std::vector<Row> rows;
  for (const MapLegendSection& section : legend) {
    const double own = sectionWidth(section, textWidth);
    if (rows.empty() || rows.back().width + kSectionGap + own > width) {
      rows.push_back({{}, own, 0});
    } else {
      rows.back().width += kSectionGap + own;
    }
    rows.back().sections.push_back(&section);
    rows.back().height = std::max(rows.back().height, sectionHeight(section));
  }
  return rows;
}

// Places the parts of a row from the left.
class RowWriter {
public:
  RowWriter(LaidOutLegend& legend, QPointF start, const TextWidth& textWidth)
      : legend_(legend),
        at_(start),
        textWidth_(textWidth) {}

  void add(const MapLegendSection& section) {
    if (!section.title.isEmpty()) legend_.texts.push_back({section.title, at_});
    at_.rx() += titleWidth(section, textWidth_);
    if (!section.colors.empty()) addBar(section);
    for (std::size_t i = 0; i < section.items.size(); ++i) {
      if (i > 0) at_.rx() += kItemGap;
      addItem(section.items[i]);
    }
    at_.rx() += kSectionGap;
  }

private:
  void addBar(const MapLegendSection& section) {
    const QRectF bar(at_.x(), at_.y() + kBarRise - kBarHeight / 2, kBarLength, kBarHeight);
    const double cell = kBarLength / double(section.colors.size());
    for (std::size_t i = 0; i < section.colors.size(); ++i)
      legend_.cells.push_back({{bar.x() + double(i) * cell, bar.y(), cell, kBarHeight}, section.colors[i]});
    legend_.bars.push_back(bar);
    for (const MapLegendMark& mark : section.marks)
      legend_.texts.push_back({mark.text, {bar.x() + mark.share * kBarLength, at_.y() + kBarRise - kMarkDrop}, true});
    at_.rx() += kBarLength;
  }

  void addItem(const MapLegendItem& item) {
    const double width = keyWidth(item);
    if (radiusOf(item) > 0) {
      legend_.symbols.push_back({at_ + QPointF(width / 2, 0), radiusOf(item), item.color});
    } else {
      legend_.lines.push_back({at_, at_ + QPointF(width, 0), item.color, item.lineWidth});
    }
    at_.rx() += width + kTextGap;
    legend_.texts.push_back({item.text, at_});
    at_.rx() += textWidth_(item.text);
  }

  LaidOutLegend& legend_;
  QPointF at_;
  const TextWidth& textWidth_;
};

} // namespace

LaidOutLegend layoutLegend(const MapLegend& legend, double width, double middle, double bottom,
                           const TextWidth& textWidth) {
  LaidOutLegend laidOut;
  const std::vector<Row> rows = rowsOf(legend, width, textWidth);
  for (const Row& row : rows)
    laidOut.height += row.height + (laidOut.height > 0 ? kRowGap : 0);
  double top = bottom + laidOut.height;
  for (const Row& row : rows) {
    RowWriter writer(laidOut, {middle - row.width / 2, top - row.height / 2}, textWidth);
    for (const MapLegendSection* const section : row.sections)
      writer.add(*section);
    top -= row.height + kRowGap;
  }
  return laidOut;
}

} // namespace xov
