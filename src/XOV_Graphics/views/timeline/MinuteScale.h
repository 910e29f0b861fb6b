#pragma once

#include "XOV_Graphics/base/Edge.h"

#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <span>
#include <vector>

namespace xov {

class XOVView;

/// How far apart the marks of a minute scale stand, in minutes, and how far apart those that carry a label.
struct MinuteSteps {
  int tick = 1;
  int label = 5;

  bool operator==(const MinuteSteps&) const = default;
};

/// From which span on a scale takes wider steps.
struct MinuteRule {
  enum class Reach { AtLeast, MoreThan };
  Reach reach = Reach::AtLeast;
  float spanMinutes = 0;
  MinuteSteps steps;
};

/// What sets the minute scales of the displays apart.
struct MinuteScaleStyle {
  std::span<const MinuteRule> rules; ///< the last one that the span reaches counts; without one, MinuteSteps()
  double baselineRise = 0;           ///< of the marks' feet above the lower edge of the plotting rectangle
  double titleRise = 0;              ///< of the axis title above the lower edge of the view
};

/// Under the rows of a helicorder page, and along the lower edge of a real-time display.
const MinuteScaleStyle& pageMinutes();
const MinuteScaleStyle& realTimeMinutes();

MinuteSteps minuteSteps(const MinuteScaleStyle& style, float spanMinutes);

/// The same steps with labels so far apart that those of a width have a gap between them, at `pointsPerMinute`: every
/// 5, 10, 15 or 30 minutes, or whole hours.
MinuteSteps thinnedSteps(const MinuteSteps& steps, double pointsPerMinute, double labelWidth);

/// What a minute scale runs along.
struct MinuteSpan {
  enum class Unit { Minutes, Hours };

  QRectF rect;               ///< the plotting rectangle, whose width stands for `seconds`
  float seconds = 0;         ///< xmax − xmin
  double viewBottom = 0;     ///< the lower edge of the view
  Edge origin = Edge::Left;  ///< the edge that minute 0 lies on
  Unit unit = Unit::Minutes; ///< what labels and title count
  double labelWidth = 0;     ///< of the widest label, in points; 0 keeps labels that touch
};

/// A minute scale, ready to be drawn.
struct MinuteScale {
  struct Label {
    QPointF place; ///< the middle of its upper edge
    QString text;
  };
  std::vector<Label> labels;
  std::vector<QLineF> marks; ///< from the foot up, in the order of their minutes
  QLineF baseline;
  QPointF titlePlace; ///< the middle of its lower edge
  QString title;
};

/// Marks from minute 0 on, long ones where a label may stand, as long as they lie in the rectangle, their x added up
/// in double precision. A span without extent has the first mark alone; one of so many minutes that its marks would
/// be a solid bar has none.
MinuteScale layOutMinuteScale(const MinuteScaleStyle& style, const MinuteSpan& span);

/// The label of the last minute of a span, than which none has more characters.
QString longestMinuteLabel(const MinuteScaleStyle& style, const MinuteSpan& span);

/// Draws into the current context: grey texts, then light grey lines, then the title. Label colour is black after it.
void drawMinuteScale(XOVView& view, const MinuteScale& scale);

} // namespace xov
