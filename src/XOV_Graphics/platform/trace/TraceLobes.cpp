#include "XOV_Graphics/platform/trace/TraceLobes.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace xov {

namespace {

/// Gathers the points of one lobe after the other.
class LobeMaker {
public:
  LobeMaker(double level, LobeSide side, std::vector<QPolygonF>& lobes) : level_(level), side_(side), lobes_(lobes) {}

  void add(QPointF point) {
    const double height = heightOf(point);
    if (before_ && (height > 0) != (heightOf(*before_) > 0)) addToLobe(crossing(*before_, point));
    if (height > 0) {
      if (lobe_.isEmpty()) addToLobe({point.x(), level_});
      addToLobe(point);
    } else {
      endLobe();
    }
    before_ = point;
  }

  void finish() {
    if (!lobe_.isEmpty()) addToLobe({lobe_.back().x(), level_});
    endLobe();
  }

private:
  double heightOf(QPointF point) const { return side_ == LobeSide::Above ? point.y() - level_ : level_ - point.y(); }

  QPointF crossing(QPointF from, QPointF to) const {
    return {from.x() + (level_ - from.y()) / (to.y() - from.y()) * (to.x() - from.x()), level_};
  }

  void addToLobe(QPointF point) {
    if (lobe_.isEmpty() || lobe_.back() != point) lobe_ << point;
  }

  void endLobe() {
    constexpr qsizetype kFewestPoints = 3;
    if (lobe_.size() < kFewestPoints) return lobe_.clear();
    if (side_ == LobeSide::Below) std::reverse(lobe_.begin(), lobe_.end());
    lobes_.push_back(std::exchange(lobe_, {}));
  }

  double level_;
  LobeSide side_;
  std::vector<QPolygonF>& lobes_;
  QPolygonF lobe_;
  std::optional<QPointF> before_;
};

} // namespace

void appendLobes(const QPolygonF& line, double level, LobeSide side, std::vector<QPolygonF>& lobes) {
  LobeMaker maker(level, side, lobes);
  for (const QPointF& point : line)
    maker.add(point);
  maker.finish();
}

} // namespace xov
