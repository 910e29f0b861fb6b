#include "XOV_Graphics/views/timeline/MinuteScale.h"

#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kTickLength = 12;
constexpr double kLabelledTickLength = 24;
constexpr double kLabelDrop = 4;
constexpr int kMinutesPerHour = 60;
constexpr int kSecondsPerMinute = 60;

constexpr double kLabelGap = 4; // that labels keep at least where they are thinned out
// How many minutes may lie between labels that are thinned out.
constexpr int kThinnedMinutes[] = {5, 10, 15, 30, 60, 120, 180, 240, 360, 720, 1440};

// More than there are pixels across any window; a year of hours has 8760.
constexpr double kMostMarks = 10000;
constexpr double kMostLabels = 2500; // which lie upon each other in any window

using Reach = MinuteRule::Reach;

constexpr MinuteRule kPageRules[] = {
    {Reach::AtLeast, 180, {5, 15}},
    {Reach::AtLeast, 360, {10, 30}},
    {Reach::AtLeast, 720, {30, 60}},
    {Reach::AtLeast, 1440, {60, 120}},
};

constexpr MinuteRule kRealTimeRules[] = {
    {Reach::MoreThan, 180, {5, 15}},
};

bool reaches(float spanMinutes, const MinuteRule& rule) {
  return rule.reach == Reach::AtLeast ? spanMinutes >= rule.spanMinutes : spanMinutes > rule.spanMinutes;
}

QString labelText(int minutes, const MinuteSteps& steps, MinuteSpan::Unit unit) {
  if (unit == MinuteSpan::Unit::Minutes) return QString::number(minutes);
  if (steps.label < kMinutesPerHour) return QString::asprintf("%.2f", double(minutes) / kMinutesPerHour);
  return QString::number(minutes / kMinutesPerHour);
}

void addMarks(MinuteScale& scale, const MinuteSpan& span, const MinuteSteps& steps, double foot) {
  const double left = span.rect.x();
  const double right = span.rect.x() + span.rect.width();
  const double spacing = double(steps.tick * kSecondsPerMinute) * span.rect.width() / double(span.seconds);
  if (span.rect.width() > kMostMarks * std::abs(spacing)) return;
  const bool fromRight = span.origin == Edge::Right;
  const double step = fromRight ? -spacing : spacing;
  const MinuteSteps thinned = thinnedSteps(steps, spacing / steps.tick, span.labelWidth);
  const bool hasLabels = !(span.rect.width() * steps.tick > kMostLabels * std::abs(spacing) * thinned.label);
  double x = fromRight ? right : left;
  for (int minute = 0; left <= x && x <= right; minute += steps.tick) {
    const bool labelled = minute % steps.label == 0;
    if (hasLabels && minute % thinned.label == 0)
      scale.labels.push_back({{x, foot - kLabelDrop}, labelText(minute, steps, span.unit)});
    scale.marks.emplace_back(x, foot, x, foot + (labelled ? kLabelledTickLength : kTickLength));
    if (step == 0) break;
    x += step;
  }
}

} // namespace

const MinuteScaleStyle& pageMinutes() {
  static constexpr MinuteScaleStyle kStyle{kPageRules, 36, 12};
  return kStyle;
}

const MinuteScaleStyle& realTimeMinutes() {
  static constexpr MinuteScaleStyle kStyle{kRealTimeRules, 0, 36};
  return kStyle;
}

MinuteSteps minuteSteps(const MinuteScaleStyle& style, float spanMinutes) {
  MinuteSteps steps;
  for (const MinuteRule& rule : style.rules) {
    if (reaches(spanMinutes, rule)) steps = rule.steps;
  }
  return steps;
}

MinuteSteps thinnedSteps(const MinuteSteps& steps, double pointsPerMinute, double labelWidth) {
  if (labelWidth == 0) return steps;
  MinuteSteps thinned = steps;
  for (const int minutes : kThinnedMinutes) {
    if (thinned.label * std::abs(pointsPerMinute) >= labelWidth + kLabelGap) break;
    if (minutes > steps.label && minutes % steps.label == 0) thinned.label = minutes;
  }
  return thinned;
}

QString longestMinuteLabel(const MinuteScaleStyle& style, const MinuteSpan& span) {
  const float minutes = span.seconds / kSecondsPerMinute;
  return labelText(towardZero(minutes), minuteSteps(style, minutes), span.unit);
}

MinuteScale layOutMinuteScale(const MinuteScaleStyle& style, const MinuteSpan& span) {
  const QRectF& rect = span.rect;
  const double foot = rect.y() + style.baselineRise;
  MinuteScale scale;
  addMarks(scale, span, minuteSteps(style, span.seconds / kSecondsPerMinute), foot);
  scale.baseline = {rect.x(), foot, rect.x() + rect.width(), foot};
  scale.titlePlace = {rect.x() + rect.width() / 2, span.viewBottom + style.titleRise};
  scale.title =
      span.unit == MinuteSpan::Unit::Hours ? QStringLiteral("Time (Hours)") : QStringLiteral("Time (Minutes)");
  return scale;
}

void drawMinuteScale(XOVView& view, const MinuteScale& scale) {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::lightGray);
  view.labelAttributes()->setColor(colors::gray);
  for (const MinuteScale::Label& label : scale.labels)
    view.drawStringXYHJustVJust(label.text, float(label.place.x()), float(label.place.y()), 2, 3);
  Path lines;
  for (const QLineF& mark : scale.marks) {
    lines.moveTo(mark.p1());
    lines.lineTo(mark.p2());
  }
  lines.moveTo(scale.baseline.p1());
  lines.lineTo(scale.baseline.p2());
  context.strokePath(lines);
  view.drawStringXYHJustVJust(scale.title, float(scale.titlePlace.x()), float(scale.titlePlace.y()), 2, 1);
  view.labelAttributes()->setColor(colors::black);
}

} // namespace xov
