#include "XOV_Graphics/views/base/TitledAxes.h"

#include "XOV_Graphics/views/base/XOVView.h"

namespace xov {

namespace {

constexpr double kRight = 24;
constexpr double kBottom = 60;
constexpr double kTop = 52;
constexpr float kBottomTitleDrop = 28;

} // namespace

QRectF titledFrame(const QRectF& bounds, double left) {
  return {left, kBottom, bounds.width() - left - kRight, bounds.height() - kBottom - kTop};
}

void drawAxisTitles(XOVView& view, const QRectF& frame, const QString& bottom, const QString& left) {
  if (!bottom.isEmpty())
    view.drawStringXYHJustVJust(bottom, float(frame.center().x()), float(frame.y()) - kBottomTitleDrop, HJust::Center,
                                VJust::Top);
  view.drawRotatedStringXYHJustVJustAngle(left, kLeftTitlePlace, float(frame.center().y()), HJust::Center,
                                          VJust::Center, 90);
}

} // namespace xov
